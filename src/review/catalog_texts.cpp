#include "review/catalog_texts.h"

#include <algorithm>

#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/text/shown_text.h"
#include "import/text/utf8.h"
#include "review/own_texts.h"

namespace tarvex::review {
namespace {

/// The text of a child in one line, whatever the indentation of the catalog.
std::string ChildText(const Element* element, std::string_view child) {
    std::string text;
    return element != nullptr && GetChildElementText(*element, child, text) ? InOneLine(text) : text;
}

Version VersionOf(const Element* element, std::string_view child) {
    const Element* version = FindChildElement(element, child);
    return {ChildText(version, "Release"), ChildText(version, "Date")};
}

bool IsFunctionClass(const Element& element) {
    const auto isIt = [&](const FunctionClassRow& row) { return HasTagName(element, row.element); };
    return std::ranges::any_of(kFunctionClasses, isIt) || std::ranges::any_of(kNewerFunctionClasses, isIt);
}

std::string ClassOf(const Element& function) {
    const Element* root = FindChildElement(&function, "FunctionClass");
    for (const Element* element = root; element != nullptr; element = NextDescendant(*root, *element)) {
        if (IsFunctionClass(*element)) {
            return std::string(element->name);
        }
    }
    return {};
}

/// The function that a parameter was written in. Those of errors may have been written in any.
const Element* WrittenIn(const ZMTParam& param) {
    const Element* element = param.GetElement();
    if (element == nullptr || HasTagName(*element, "ERParam")) {
        return nullptr;
    }
    while (element != nullptr && !HasTagName(*element, "Function")) {
        element = element->parent;
    }
    return element;
}

/// The element with the class and the description.
const Element* OriginalOf(const ZMTFunction& function) {
    const Element* element = function.GetElement();
    if (element == nullptr || FindChildElement(element, "FunctionClass") != nullptr) {
        return element;
    }
    for (const ZMTOperation& operation : function.Items()) {
        for (const ZMTParam& param : operation.Items()) {
            if (const Element* original = WrittenIn(param)) {
                return original;
            }
        }
    }
    return element;
}

}  // namespace

std::string ShownName(std::string_view name) {
    constexpr std::size_t kMaxBytes = 200;
    return Shown(CutAtCharacter(name, kMaxBytes));
}

std::string_view ClassName(ClassKind kind) {
    return kind == ClassKind::Method ? "method" : kind == ClassKind::Property ? "property" : "function";
}

std::string VersionText(const Version& version) {
    return version.release + (version.release.empty() || version.date.empty() ? "" : " of ") + version.date;
}

CatalogTexts::CatalogTexts(const CatalogReading& reading)
    : version_(VersionOf(reading.Root(), "CatalogVersion")) {
    for (const Element* element = FindChildElement(reading.Root(), "FBlock"); element != nullptr;
         element = FindNextSiblingElement(*element, "FBlock")) {
        std::string name;
        std::string digits;
        std::int32_t id = 0;
        const ZMTFBlock* block = nullptr;
        if (reading.Catalog() != nullptr && GetChildElementText(*element, "FBlockID", digits) &&
            ParseInteger(digits, id) && id >= 0) {
            block = reading.Catalog()->GetAt(static_cast<unsigned>(id));
        }
        // Another one may have the identifier, too.
        if (block != nullptr && GetChildElementText(*element, "FBlockName", name) &&
            SanitizeName(name) == block->GetName()) {
            blocks_.try_emplace(block->FBlockID(), element);
        }
    }
}

BlockTexts CatalogTexts::Of(const ZMTFBlock& block) const {
    const auto found = blocks_.find(block.FBlockID());
    const Element* element = found == blocks_.end() ? nullptr : found->second;
    return {ChildText(element, "FBlockName"), ChildText(element, "FBlockKind"),
            ChildText(element, "FBlockDescription"), VersionOf(element, "FBlockVersion")};
}

FunctionTexts CatalogTexts::Of(const ZMTFunction& function) {
    FunctionTexts texts;
    if (const Element* element = OriginalOf(function)) {
        texts.name = ChildText(element, "FunctionName");
        texts.functionClass = ClassOf(*element);
        texts.description = ChildText(element, "FunctionDescription");
        GetChildAttribute(*element, "FunctionID", "FunctionSection", texts.section);
    }
    return texts;
}

}  // namespace tarvex::review
