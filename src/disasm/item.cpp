#include "disasm/item.h"

namespace tarvex {

std::uint32_t ZMostParameter::RawValue(std::size_t begin, std::size_t length) const {
    constexpr std::size_t kMaxLength = 4;
    if (length == 0 || length > kMaxLength || begin > bytes_.size() || length > bytes_.size() - begin) {
        return 0;
    }
    std::uint32_t value = 0;
    for (const std::uint8_t byte : std::span(bytes_).subspan(begin, length)) {
        value = value << 8 | byte;
    }
    return value;
}

}  // namespace tarvex
