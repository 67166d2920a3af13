#include "disasm/item.h"

#include "import/text/wording.h"

namespace tarvex {

void ZMostParameter::AppendLabel(std::string& out) const {
    AppendShownName(out, GetName());
}

std::string ZMostParameter::GetLabel() const {
    std::string label;
    AppendLabel(label);
    return label;
}

std::string ZMostParameter::GetText() const {
    std::string text;
    AppendText(text);
    return text;
}

std::uint32_t ZMostParameter::RawValue(std::size_t begin, std::size_t length) const {
    constexpr std::size_t kMaxLength = 4;
    if (length == 0 || length > kMaxLength || begin > bytes_.size() || length > bytes_.size() - begin) {
        return 0;
    }
    std::uint32_t value = 0;
    for (const std::uint8_t byte : bytes_.subspan(begin, length)) {
        value = value << 8 | byte;
    }
    return value;
}

}  // namespace tarvex
