#include "params/stream_signal.h"

#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"

namespace tarvex {

bool ZMTParamStreamSignal::Import(const Element& element, ImportContext& context) {
    SetElement(element);
    std::string text;
    if (!GetChildElementText(element, "SignalName", text)) {
        return Raise<kStreamSignalWithoutName>(context.AtChild(element, "SignalName"), "SignalName");
    }
    SetName(SanitizeName(text));
    return ImportIdx(element, context) && ImportLength(element, context);
}

bool ZMTParamStreamSignal::ImportIdx(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetChildAttribute(element, "SignalName", "SignalIdx", text)) {
        return Raise<kStreamSignalWithoutIdx>(context.AtChild(element, "SignalName"), "SignalIdx");
    }
    const std::int32_t idx = IntegerOrZero(text);
    SetParamPos(static_cast<std::uint32_t>(idx));
    return (ParamPos() > 0 && ParamPos() <= kMaxParamPos) ||
           Raise<kStreamSignalIdxOutOfRange>(context.AtChild(element, "SignalName"), idx);
}

bool ZMTParamStreamSignal::ImportLength(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetChildElementText(element, "SignalBitLength", text)) {
        return Raise<kStreamSignalWithoutLength>(context.AtChild(element, "SignalBitLength"),
                                                 "SignalBitLength");
    }
    std::int32_t bits = 0;
    if (!ParseInteger(text, bits)) {
        return Raise<kStreamSignalLengthUnreadable>(context.AtChild(element, "SignalBitLength"), text);
    }
    bitLength_ = static_cast<std::uint32_t>(bits);
    return (bits > 0 && bits <= kMaxBits) ||
           Raise<kStreamSignalLengthOutOfRange>(context.AtChild(element, "SignalBitLength"), bits, 1,
                                                kMaxBits + 1);
}

bool ZMTParamStreamSignal::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSTREAMSIGNAL: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".BitLength: %d", bitLength_));
    return true;
}

}  // namespace tarvex
