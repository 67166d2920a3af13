#include "disasm/fkt_id_bit_stream_item.h"

#include <algorithm>

#include "disasm/item_list.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

/// A run of so many FunctionIDs or more is written as its first and last one.
constexpr std::size_t kLongRun = 3;

/// Of a FunctionID.
constexpr unsigned kDigits = 3;

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

void ZMostParameterFktIDBitStream::AppendText(std::string& out) const {
    const std::size_t begin = out.size();
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
        out += out.size() == begin ? "" : ", ";
        AppendHexNumber(out, static_cast<std::uint32_t>(first), kDigits);
        if (run > 1) {
            out += run >= kLongRun ? ".." : ", ";
            AppendHexNumber(out, static_cast<std::uint32_t>(last), kDigits);
        }
        first = last;
    }
}

}  // namespace tarvex
