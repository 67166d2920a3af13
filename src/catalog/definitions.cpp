#include "catalog/definitions.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/text/shown_text.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

struct BasicType {
    const char* typeID;
    DefCode code;
};

constexpr BasicType kBasicTypes[] = {
    {"type_unsigned_byte", kUnsignedByte}, {"type_signed_byte", kSignedByte},
    {"type_unsigned_word", kUnsignedWord}, {"type_signed_word", kSignedWord},
    {"type_unsigned_long", kUnsignedLong}, {"type_signed_long", kSignedLong},
};

/// The unit name that stands for having none.
constexpr std::string_view kUnitNameNotDefined = "not_defined";

std::string_view WithoutWhiteSpace(std::string_view text) {
    constexpr std::string_view kWhiteSpace = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

/// Imports every element of that tag below `root` into a list; `failed` raises the list's message.
template <class T, class List, class Failed>
void ImportAll(List& list, const Element& root, std::string_view tag, ImportContext& context,
               const Failed& failed) {
    for (const Element* element = NextDescendant(root, root); element != nullptr;
         element = NextDescendant(root, *element)) {
        if (!HasTagName(*element, tag)) {
            continue;
        }
        auto definition = std::make_unique<T>();
        definition->SetParent(&list);
        if (definition->Import(*element, context)) {
            list.Append(std::move(definition));
        } else {
            failed(*element);
        }
    }
}

}  // namespace

bool ZMTDef::Import(const Element& /*element*/, ImportContext& /*context*/) {
    return false;
}

bool ZMTDefType::Import(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetChildElementText(element, "TDefName", text)) {
        Raise<kTypeDefWithoutName>(context.AtChild(element, "TDefName"), "TDefName");
    }
    SetName(SanitizeName(text));
    if (!GetAttribute(element, "TypeID", text)) {
        return Raise<kTypeDefWithoutId>(context.At(element), "TypeID");
    }
    SetDefName(text);
    hasSize_ = GetChildElementText(element, "TDefSize", text);
    if (!hasSize_) {
        Raise<kTypeDefWithoutSize>(context.AtChild(element, "TDefSize"), "TDefSize");
    }
    defSize_ = IntegerOrZero(text);
    for (const BasicType& type : kBasicTypes) {
        if (NamesEqual(GetDefName(), type.typeID)) {
            defCode_ = type.code;
            break;
        }
    }
    return true;
}

bool ZMTDefType::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "DEFTYPE: " + GetName());
    DumpLine(treeLog, ".IDName: " + GetDefName());
    DumpLine(treeLog, FormatText(".DefCode: %d", defCode_));
    DumpLine(treeLog, FormatText(".DefSize: %d Bytes", defSize_));
    DumpBaseLines(treeLog);
    return true;
}

bool ZMTDefUnit::Import(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetChildElementText(element, "UnitDefName", text)) {
        Raise<kUnitDefWithoutName>(context.AtChild(element, "UnitDefName"), "UnitDefName");
    }
    const std::string name = SanitizeName(text);
    const bool isDefined = !NamesEqual(name, kUnitNameNotDefined);
    SetName(isDefined ? name : std::string());
    text_ = isDefined ? Shown(WithoutWhiteSpace(text)) : std::string();
    if (!GetAttribute(element, "UnitID", text)) {
        return Raise<kUnitDefWithoutId>(context.At(element), "UnitID");
    }
    SetDefName(text);
    if (!GetChildElementText(element, "UnitDefCode", text)) {
        Raise<kUnitDefWithoutCode>(context.AtChild(element, "UnitDefCode"), "UnitDefCode");
    }
    defCode_ = IntegerOrZero(text);
    return true;
}

bool ZMTDefUnit::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "DEFUNIT: " + GetName());
    DumpLine(treeLog, FormatText(".DefCode: %d", defCode_));
    DumpBaseLines(treeLog);
    return true;
}

bool ZMTDefListType::Import(const Element& element, ImportContext& context) {
    ImportAll<ZMTDefType>(*this, element, "TypeDef", context, [&](const Element& failed) {
        Raise<kTypeDefFailed>(context.At(failed), "TypeDef");
    });
    return true;
}

bool ZMTDefListType::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "DEFLISTTYPE: " + GetName());
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

bool ZMTDefListUnit::Import(const Element& element, ImportContext& context) {
    ImportAll<ZMTDefUnit>(*this, element, "UnitDef", context, [&](const Element& failed) {
        Raise<kUnitDefFailed>(context.At(failed), "UnitDef");
    });
    return true;
}

bool ZMTDefListUnit::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "DEFLISTUNIT: " + GetName());
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

ZMTDefinition::ZMTDefinition() {
    types_.SetParent(this);
    units_.SetParent(this);
}

bool ZMTDefinition::Import(const Element& element, ImportContext& context) {
    return types_.Import(element, context) && units_.Import(element, context);
}

bool ZMTDefinition::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "DEFINITION: " + GetName());
    types_.Dump(treeLog);
    units_.Dump(treeLog);
    return true;
}

}  // namespace tarvex
