#include "params/enum_value.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

/// Newer catalogs carry the name in an attribute, and a sentence or nothing as the text. `isSymbolicFirst`:
/// which of the two counts where both are there.
std::string NameText(const Element& element, bool isSymbolicFirst) {
    std::string text;
    const auto isThere = [&](bool isSymbolic) {
        isSymbolic ? GetAttribute(element, "SymbolicName", text) : GetElementText(element, text);
        return !Trim(text).empty();
    };
    if (!isThere(isSymbolicFirst)) {
        isThere(!isSymbolicFirst);
    }
    return text;
}

}  // namespace

bool ZMTEnumValue::Import(const Element& element, ImportContext& context) {
    SetName(SanitizeText(Trim(NameText(element, context.newer.AreRead()))));
    std::string text;
    if (!GetAttribute(element, "Code", text)) {
        return Raise<kEnumValueWithoutCode>(context.At(element), "Code");
    }
    std::int32_t min = 0;
    std::int32_t max = 0;
    if (!ParseRange(text, min, max)) {
        return Raise<kEnumCodeUnreadable>(context.At(element), text);
    }
    codeMin_ = static_cast<std::uint32_t>(min);
    codeMax_ = static_cast<std::uint32_t>(max);
    return true;
}

bool ZMTEnumValue::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog,
             FormatText("ENUMVALUE: %s  .CodeMin: 0x%02X .CodeMax: 0x%02X", GetName(), codeMin_, codeMax_));
    return true;
}

}  // namespace tarvex
