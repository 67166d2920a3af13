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

}  // namespace tarvex
