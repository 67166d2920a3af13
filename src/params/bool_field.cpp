#include "params/bool_field.h"

#include "catalog/import_context.h"
#include "import/names.h"
#include "import/parse_value.h"

namespace tarvex {

bool ZMTParamBoolField::Import(const DOMElement& element, ImportContext& context) {
    if (!ImportParamName(element, context)) {
        return false;
    }
    std::string text;
    if (!GetAttribute(element, "BitPos", text)) {
        return Raise<kBitWithoutPos>(context.log, "BitPos");
    }
    std::int32_t pos = 0;
    if (!ParseInteger(text, pos)) {
        return Raise<kBitPosUnreadable>(context.log, text);
    }
    if (pos < 0 || pos >= kBitPosEnd) {
        return Raise<kBitPosOutOfRange>(context.log, GetName());
    }
    SetParamPos(static_cast<std::uint32_t>(pos));
    if (GetChildElementText(element, text, "BitTrueDesc")) {
        trueDesc_ = SanitizeText(text);
    } else {
        Raise<kBitWithoutTrueDesc>(context.log, "BitTrueDesc");
    }
    if (GetChildElementText(element, text, "BitFalseDesc")) {
        falseDesc_ = SanitizeText(text);
    } else {
        Raise<kBitWithoutFalseDesc>(context.log, "BitFalseDesc");
    }
    return true;
}

bool ZMTParamBoolField::ImportParamName(const DOMElement& element, ImportContext& /*context*/) {
    ReadParamName(element);
    return true;
}

bool ZMTParamBoolField::Dump(ZMostFCatLog& treeLog) const {
    DumpLine(treeLog, FormatText("PARAMBOOLFIELD: %s", GetName()));
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".TrueDesc:  %s", trueDesc_));
    DumpLine(treeLog, FormatText(".FalseDesc: %s", falseDesc_));
    return true;
}

bool ZMTParamBoolField::CopyFrom(const ZMTNode* other) {
    if (!ZMTParam::CopyFrom(other)) {
        return false;
    }
    const auto& bit = static_cast<const ZMTParamBoolField&>(*other);
    trueDesc_ = bit.trueDesc_;
    falseDesc_ = bit.falseDesc_;
    return true;
}

}  // namespace tarvex
