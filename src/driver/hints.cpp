#include "driver/hints.h"

#include <cstdio>
#include <utility>

#include "import/text/shown_text.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

constexpr std::size_t kMaxShown = 200;

constexpr std::string_view kBegin = "TARVEX: hint: ";

}  // namespace

void Hints::Add(std::string text) {
    if (count_ < kMost) {
        texts_.push_back(std::move(text));
    }
    ++count_;
}

std::string Hints::Text() const {
    const std::size_t shown = count_ > kMost ? kMost - 1 : count_;
    std::string lines;
    for (std::size_t i = 0; i < shown; ++i) {
        lines.append(kBegin).append(texts_[i]) += '\n';
    }
    if (shown < count_) {
        lines.append(kBegin) += "there are " + std::to_string(count_ - shown) + " more\n";
    }
    return lines;
}

void Hints::Tell() const {
    if (count_ == 0) {
        return;
    }
    std::string lines;
    try {
        lines = Text();
    } catch (const std::bad_alloc&) {
        return;
    }
    std::fflush(stdout);
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

std::string ShownPart(std::string_view text) {
    return Shown(CutAtCharacter(text, kMaxShown)) + (text.size() > kMaxShown ? "..." : "");
}

std::string Quoted(std::string_view text) {
    return "'" + ShownPart(text) + "'";
}

std::string Counted(std::size_t count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace tarvex
