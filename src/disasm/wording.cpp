#include "disasm/wording.h"

#include <algorithm>

namespace tarvex {
namespace {

constexpr std::size_t kMaxShown = 200;

}  // namespace

std::string ByteCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string ShownText(std::string_view text) {
    std::string shown(text.substr(0, kMaxShown));
    std::ranges::replace_if(
        shown, [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, '.');
    return text.size() > kMaxShown ? shown + "..." : shown;
}

std::string ShownName(const std::string& name) {
    return name.size() > kMaxShown ? name.substr(0, kMaxShown) + "..." : name;
}

}  // namespace tarvex
