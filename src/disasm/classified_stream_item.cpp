#include "disasm/classified_stream_item.h"

#include <algorithm>

#include "disasm/item_list.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

/// Of the length in front.
constexpr std::size_t kLengthBytes = 2;

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamClassifiedStream& stream, Bytes message) {
    const auto size = PeekLength(stream, kLengthBytes, stream.MaxLength(), message);
    return size && TakeItem<ZMostParameterClassifiedStream>(*this, stream, *size, message);
}

std::string ZMostParameterClassifiedStream::MediaType() const {
    std::string text;
    for (const std::uint8_t character : Bytes().subspan(kLengthBytes)) {
        if (character == 0) {
            break;
        }
        text += Printable(character);
    }
    return text;
}

std::span<const std::uint8_t> ZMostParameterClassifiedStream::Content() const {
    const auto rest = Bytes().subspan(kLengthBytes);
    const auto zero = std::ranges::find(rest, 0);
    return zero == rest.end() ? rest.last(0)
                              : rest.subspan(static_cast<std::size_t>(zero - rest.begin()) + 1);
}

void ZMostParameterClassifiedStream::AppendText(std::string& out) const {
    if (Bytes().size() == kLengthBytes) {
        return;
    }
    const bool isTerminated = std::ranges::find(Bytes().subspan(kLengthBytes), 0) != Bytes().end();
    out.append(MediaType()).append(isTerminated ? "" : " {NotTerm}").append(Content().empty() ? "" : ": ");
    AppendHex(out, Content(), " ");
}

}  // namespace tarvex
