#include "params/enum_value.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

bool ZMTEnumValue::Import(const Element& element, ImportContext& context) {
    std::string text;
    // Newer catalogs may leave the text out and carry the name in an attribute.
    if (!GetElementText(element, text) || Trim(text).empty()) {
        GetAttribute(element, "SymbolicName", text);
    }
    SetName(SanitizeText(Trim(text)));
    if (!GetAttribute(element, "Code", text)) {
        return Raise<kEnumValueWithoutCode>(context.log, "Code");
    }
    std::int32_t min = 0;
    std::int32_t max = 0;
    if (!ParseRange(text, min, max)) {
        return Raise<kEnumCodeUnreadable>(context.log, text);
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
