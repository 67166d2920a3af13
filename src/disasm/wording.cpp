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

std::string ShownText(std::string_view text) {
    return Shown(CutAtCharacter(text, kMaxShown)) + (text.size() > kMaxShown ? "..." : "");
}

std::string ShownName(const std::string& name) {
    return name.size() > kMaxShown ? std::string(CutAtCharacter(name, kMaxShown)) + "..." : name;
}

}  // namespace tarvex
