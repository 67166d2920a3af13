#include "review/own_texts.h"

#include <algorithm>

#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "params/type_element.h"

namespace tarvex::review {
namespace {

std::string_view ChildText(const Element* element, std::string_view name) {
    const Element* child = FindChildElement(element, name);
    return child == nullptr ? std::string_view() : child->text;
}

std::string_view AttributeOf(const Element& element, std::string_view name) {
    const auto found = std::ranges::find(element.attributes, name, &Attribute::name);
    return found == element.attributes.end() ? std::string_view() : found->value;
}

/// The name in the catalog, if it is what that in the tree was made of.
template <class Node>
std::string NameOf(const Node& node) {
    const std::string_view raw = RawName(node);
    return !raw.empty() && SanitizeName(raw) == node.GetName() ? InOneLine(raw) : node.GetName();
}

bool IsElementOf(const Element& element, const ZMTEnumValue& value) {
    std::int32_t min = 0;
    std::int32_t max = 0;
    return ParseRange(AttributeOf(element, "Code"), min, max) &&
           static_cast<std::uint32_t>(min) == value.CodeMin() &&
           static_cast<std::uint32_t>(max) == value.CodeMax();
}

/// The attribute of newer catalogs goes first: a text beside it is a sentence.
ValueTexts TextsOf(const Element& element, const ZMTEnumValue& value) {
    const std::string_view symbolic = AttributeOf(element, "SymbolicName");
    const auto isName = [&](std::string_view raw) {
        const std::string_view trimmed = Trim(raw);  // mostly it is the name, letter for letter
        return !trimmed.empty() && (trimmed == value.GetName() || SanitizeText(trimmed) == value.GetName());
    };
    if (isName(symbolic)) {
        return {InOneLine(symbolic), InOneLine(element.text)};
    }
    return {isName(element.text) ? InOneLine(element.text) : value.GetName(), ""};
}

const Element* FirstValue(const ZMTParamEnum& enumeration) {
    return FindChildElement(ElementOfValues(enumeration), "TEnumValue");
}

std::string MeaningOf(const ZMTParamBoolField& bit, std::string_view child, const std::string& inTree) {
    const std::string_view raw = ChildText(bit.GetElement(), child);
    return !raw.empty() && SanitizeText(raw) == inTree ? InOneLine(raw) : inTree;
}

bool AreEqual(const Attribute& a, const Attribute& b) {
    return a.name == b.name && a.value == b.value;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// The place of the first letter from there on.
std::size_t SkipBlanks(std::string_view text, std::size_t place) {
    while (place < text.size() && IsBlank(text[place])) {
        ++place;
    }
    return place;
}

/// The end of the words from there on that stand in one line already, with one blank between each other.
std::size_t EndOfLine(std::string_view text, std::size_t place) {
    while (place < text.size() && (!IsBlank(text[place]) || (text[place] == ' ' && place + 1 < text.size() &&
                                                             !IsBlank(text[place + 1])))) {
        ++place;
    }
    return place;
}

}  // namespace

std::string InOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t begin = SkipBlanks(text, 0); begin < text.size();) {
        const std::size_t end = EndOfLine(text, begin);
        if (!line.empty()) {
            line += ' ';
        }
        line.append(text, begin, end - begin);
        begin = SkipBlanks(text, end);
    }
    return line;
}

const Element* ElementOf(const ZMTFBlock& block) {
    const Element* element = nullptr;
    for (const ZMTFunction& function : block.Items()) {
        element = function.GetElement();
        break;
    }
    while (element != nullptr && !HasTagName(*element, "FBlock")) {
        element = element->parent;
    }
    return element;
}

std::string_view RawName(const ZMTFBlock& block) {
    return ChildText(ElementOf(block), "FBlockName");
}

std::string_view RawName(const ZMTFunction& function) {
    return ChildText(ElementOf(function), "FunctionName");
}

std::string_view RawName(const ZMTParam& param) {
    const Element* element = param.GetElement();
    if (element == nullptr) {
        return {};
    }
    if (param.IsType(kParamStreamSignal)) {
        return ChildText(element, "SignalName");
    }
    if (HasTagName(*element, "TArray")) {
        return ChildText(element, "TArrayName");
    }
    return ChildText(element, HasTagName(*element, "TRecordField") ? "TRecordFieldName" : "ParamName");
}

std::string OwnName(const ZMTFBlock& block) {
    return NameOf(block);
}

std::string OwnName(const ZMTFunction& function) {
    return NameOf(function);
}

std::string OwnName(const ZMTParam& param) {
    return NameOf(param);
}

bool LacksLetters(const std::string& ownName) {
    return SanitizeName(ownName).size() < ownName.size();
}

std::string ShortestName(const ZMTParam& param) {
    if (!param.GetName().empty()) {
        return param.GetName();
    }
    const std::string own = OwnName(param);
    return own.empty() ? own : '"' + own + '"';
}

const Element* ElementOfValues(const ZMTParamEnum& enumeration) {
    const Element* element = enumeration.GetElement();
    return element == nullptr ? nullptr : FindTypeElement(*element, "TEnum");
}

/// Values that could not be imported are passed over.
std::vector<ValueTexts> OwnValues(const ZMTParamEnum& enumeration) {
    std::vector<ValueTexts> texts;
    texts.reserve(enumeration.Size());
    const Element* element = FirstValue(enumeration);
    for (const ZMTEnumValue& value : enumeration.Items()) {
        while (element != nullptr && !IsElementOf(*element, value)) {
            element = FindNextSiblingElement(*element, "TEnumValue");
        }
        texts.push_back(element == nullptr ? ValueTexts{value.GetName(), ""} : TextsOf(*element, value));
        element = element == nullptr ? nullptr : FindNextSiblingElement(*element, "TEnumValue");
    }
    return texts;
}

bool AreValuesWrittenAlike(const ZMTParamEnum& a, const ZMTParamEnum& b) {
    const Element* left = FirstValue(a);
    const Element* right = FirstValue(b);
    while (left != nullptr && right != nullptr) {
        if (left->text != right->text || !std::ranges::equal(left->attributes, right->attributes, AreEqual)) {
            return false;
        }
        left = FindNextSiblingElement(*left, "TEnumValue");
        right = FindNextSiblingElement(*right, "TEnumValue");
    }
    return left == right;
}

BitTexts OwnTexts(const ZMTParamBoolField& bit) {
    return {OwnName(bit), MeaningOf(bit, "BitTrueDesc", bit.TrueDesc()),
            MeaningOf(bit, "BitFalseDesc", bit.FalseDesc())};
}

}  // namespace tarvex::review
