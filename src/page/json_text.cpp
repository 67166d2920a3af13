#include "page/json_text.h"

#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include "import/text/utf8.h"
#include "kestrel/json_text.h"

namespace tarvex::page {
namespace {

/// ASCII in which nothing has to be escaped. Without a way out, so that many letters are looked at in one
/// step.
bool IsPlain(std::string_view text) {
    unsigned char odd = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        odd |= static_cast<unsigned char>(static_cast<int>(byte < 0x20) | static_cast<int>(byte >= 0x80) |
                                          static_cast<int>(byte == '"') | static_cast<int>(byte == '\\'));
    }
    return odd == 0;
}

/// Good UTF-8 in which nothing has to be escaped; so are nearly all texts.
bool StandsForItself(std::string_view text) {
    constexpr std::size_t kStep = 16;
    while (!text.empty()) {
        if (text.size() >= kStep && IsPlain(text.substr(0, kStep))) {
            text.remove_prefix(kStep);
        } else if (IsPlain(text.substr(0, 1))) {
            text.remove_prefix(1);
        } else if (static_cast<unsigned char>(text.front()) < 0x80 || !TakeCharacter(text)) {
            return false;
        }
    }
    return true;
}

/// In quotes.
void AppendText(std::string& json, std::string_view text) {
    if (StandsForItself(text)) {
        json += '"';
        json += text;
        json += '"';
    } else {
        kestrel::AppendQuoted(json, text);
    }
}

}  // namespace

void JsonText::Separate() {
    if (!std::exchange(isFirst_, false)) {
        text_ += ',';
    }
}

JsonText& JsonText::Open(char bracket) {
    Separate();
    text_ += bracket;
    isFirst_ = true;
    return *this;
}

JsonText& JsonText::Close(char bracket) {
    text_ += bracket;
    isFirst_ = false;
    return *this;
}

JsonText& JsonText::Key(std::string_view name) {
    Separate();
    text_ += '"';
    text_ += name;
    text_ += std::string_view("\":");
    isFirst_ = true;
    return *this;
}

JsonText& JsonText::Text(std::string_view text) {
    Separate();
    AppendText(text_, text);
    return *this;
}

template <class Integer>
JsonText& JsonText::Whole(Integer number) {
    Separate();
    std::array<char, std::numeric_limits<Integer>::digits10 + 2> digits{};  // and a sign
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text_.append(digits.data(), end);
    return *this;
}

JsonText& JsonText::Lines(std::span<const std::string_view> lines) {
    Separate();
    text_ += '"';
    std::string quoted;
    for (std::size_t number = 0; number < lines.size(); ++number) {
        text_.append(number == 0 ? "" : "\\n");
        quoted.clear();
        AppendText(quoted, lines[number]);
        text_.append(quoted, 1, quoted.size() - 2);
    }
    text_ += '"';
    return *this;
}

JsonText& JsonText::Number(std::uint64_t number) {
    return Whole(number);
}

JsonText& JsonText::Signed(std::int64_t number) {
    return Whole(number);
}

JsonText& JsonText::Real(double number) {
    Separate();
    kestrel::AppendShortNumber(text_, number);
    return *this;
}

JsonText& JsonText::Null() {
    return Json("null");
}

JsonText& JsonText::Json(std::string_view json) {
    Separate();
    text_ += json;
    return *this;
}

JsonText& JsonText::TextMember(std::string_view name, std::string_view text) {
    return text.empty() ? *this : Key(name).Text(text);
}

JsonText& JsonText::NumberMember(std::string_view name, std::uint64_t number) {
    return number == 0 ? *this : Key(name).Number(number);
}

JsonText& JsonText::RealMember(std::string_view name, const std::optional<double>& number) {
    return number ? Key(name).Real(*number) : *this;
}

std::string JsonText::Take() {
    isFirst_ = true;
    return std::exchange(text_, {});
}

}  // namespace tarvex::page
