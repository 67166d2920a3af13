#include "params/bool_field.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

bool ZMTParamBoolField::Import(const Element& element, ImportContext& context) {
    SetElement(element);
    if (!ImportParamName(element, context)) {
        return false;
    }
    std::string text;
    if (!GetAttribute(element, "BitPos", text)) {
        return Raise<kBitWithoutPos>(context.At(element), "BitPos");
    }
    std::int32_t pos = 0;
    if (!ParseInteger(text, pos)) {
        return Raise<kBitPosUnreadable>(context.At(element), text);
    }
    if (pos < 0 || pos >= kBitPosEnd) {
        return Raise<kBitPosOutOfRange>(context.At(element), GetName());
    }
    SetParamPos(static_cast<std::uint32_t>(pos));
    if (GetChildElementText(element, "BitTrueDesc", text)) {
        trueDesc_ = SanitizeText(text);
    } else {
        Raise<kBitWithoutTrueDesc>(context.AtChild(element, "BitTrueDesc"), "BitTrueDesc");
    }
    if (GetChildElementText(element, "BitFalseDesc", text)) {
        falseDesc_ = SanitizeText(text);
    } else {
        Raise<kBitWithoutFalseDesc>(context.AtChild(element, "BitFalseDesc"), "BitFalseDesc");
    }
    return true;
}

bool ZMTParamBoolField::ImportParamName(const Element& element, ImportContext& /*context*/) {
    ReadParamName(element);
    return true;
}

bool ZMTParamBoolField::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, FormatText("PARAMBOOLFIELD: %s", GetName()));
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".TrueDesc:  %s", trueDesc_));
    DumpLine(treeLog, FormatText(".FalseDesc: %s", falseDesc_));
    return true;
}

}  // namespace tarvex
