/// JSON in the shortest form, written from front to end.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarvex::page {

/// Puts values one behind the other; the commas come by themselves.
class JsonText {
  public:
    JsonText& BeginObject() { return Open('{'); }
    JsonText& EndObject() { return Close('}'); }
    JsonText& BeginArray() { return Open('['); }
    JsonText& EndArray() { return Close(']'); }
    /// The name of the value that comes next; letters alone.
    JsonText& Key(std::string_view name);

    /// Bytes that are no UTF-8 become U+FFFD.
    JsonText& Text(std::string_view text);
    /// Lines as one text. Each is looked at for itself, so that one with odd letters does not slow down all.
    JsonText& Lines(std::span<const std::string_view> lines);
    JsonText& Number(std::uint64_t number);
    JsonText& Signed(std::int64_t number);
    /// Null for one that is not finite.
    JsonText& Real(double number);
    JsonText& Null();
    /// A value that is JSON already.
    JsonText& Json(std::string_view json);

    /// A member of an object; left out for an empty text, and for 0.
    JsonText& TextMember(std::string_view name, std::string_view text);
    JsonText& NumberMember(std::string_view name, std::uint64_t number);
    JsonText& RealMember(std::string_view name, const std::optional<double>& number);

    const std::string& All() const { return text_; }
    std::size_t Size() const { return text_.size(); }
    std::string Take();

  private:
    template <class Integer>
    JsonText& Whole(Integer number);
    JsonText& Open(char bracket);
    JsonText& Close(char bracket);
    void Separate();

    std::string text_;
    bool isFirst_ =
        true;  // nothing stands in front of the next value that a comma would have to part it from
};

}  // namespace tarvex::page
