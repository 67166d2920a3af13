#include "disasm/report.h"

#include <algorithm>

namespace tarvex {

bool Report::Message(const LinePlace& place, const CapturedMessage& message, const DecodedMessage& decoded,
                     std::string& out, std::size_t room) const {
    const std::size_t before = out.size();
    const std::size_t end = before + std::min(room, kMaxReport);
    AppendMessage(place, message, decoded, end, out);
    if (out.size() > end) {
        out.resize(before);
        return false;
    }
    return true;
}

std::string AddressText(const CapturedMessage& message) {
    std::string text;
    AppendAddress(message, text);
    return text;
}

void AppendAddress(const CapturedMessage& message, std::string& out) {
    AppendHexNumber(out, message.fBlockID, 2);
    AppendHexNumber(out += '.', message.instID, 2);
    AppendHexNumber(out += '.', message.fktID, 3);
    AppendHexNumber(out += '.', message.opType, 1);
}

}  // namespace tarvex
