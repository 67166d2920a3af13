#include "disasm/wording.h"

#include "import/text/shown_text.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

constexpr std::size_t kMaxShown = 200;

}  // namespace

std::string ByteCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string HexText(std::span<const std::uint8_t> bytes, std::string_view separator) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * (2 + separator.size()));
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text += separator;
        }
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0xF];
    }
    return text;
}

std::string ShownText(std::string_view text) {
    return Shown(CutAtCharacter(text, kMaxShown)) + (text.size() > kMaxShown ? "..." : "");
}

std::string ShownName(const std::string& name) {
    return name.size() > kMaxShown ? std::string(CutAtCharacter(name, kMaxShown)) + "..." : name;
}

}  // namespace tarvex
