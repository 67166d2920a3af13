#include "disasm/fkt_id_bit_stream_item.h"

#include <algorithm>

#include "disasm/item_list.h"
#include "import/text/format_text.h"

namespace tarvex {
namespace {

/// A run of so many FunctionIDs or more is written as its first and last one.
constexpr std::size_t kLongRun = 3;

/// The first bit of the stream is the highest one of its first byte.
bool IsSet(std::span<const std::uint8_t> bytes, std::size_t bit) {
    return bit / kBitsPerByte < bytes.size() &&
           (bytes[bit / kBitsPerByte] >> (kBitsPerByte - 1 - bit % kBitsPerByte) & 1U) != 0;
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamFktIDBitStream& stream, Bytes message) {
    const std::size_t left = message.size() - std::min(Offset(), message.size());
    return TakeItem<ZMostParameterFktIDBitStream>(*this, stream, static_cast<std::int64_t>(left), message);
}

std::string ZMostParameterFktIDBitStream::GetText() const {
    std::string text;
    const std::size_t end = Bytes().size() * kBitsPerByte;
    for (std::size_t first = 0; first < end; ++first) {
        if (!IsSet(Bytes(), first)) {
            continue;
        }
        std::size_t last = first;
        while (IsSet(Bytes(), last + 1)) {
            ++last;
        }
        const std::size_t run = last - first + 1;
        text += text.empty() ? "" : ", ";
        text += FormatText("%03X", static_cast<unsigned>(first));
        if (run > 1) {
            text += run >= kLongRun ? ".." : ", ";
            text += FormatText("%03X", static_cast<unsigned>(last));
        }
        first = last;
    }
    return text;
}

}  // namespace tarvex
