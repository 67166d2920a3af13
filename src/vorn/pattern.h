/// Patterns for names.

#pragma once

#include <clocale>
#include <string>

namespace vorn {

/// While it lives, patterns see letters where names have UTF-8.
class Utf8Locale {
  public:
    Utf8Locale();
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale(Utf8Locale&&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;
    Utf8Locale& operator=(Utf8Locale&&) = delete;
    ~Utf8Locale();

  private:
    locale_t locale_;
    locale_t before_ = nullptr;
};

/// Whether a whole text matches a pattern as the shell has them ("*", "?" and "[abc]"), in any case, or is
/// the same as it.
bool Matches(const std::string& pattern, const std::string& text);

}  // namespace vorn
