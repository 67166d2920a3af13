#include "vorn/pattern.h"

#include <fnmatch.h>

namespace vorn {

Utf8Locale::Utf8Locale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
    if (locale_ != nullptr) {
        before_ = uselocale(locale_);
    }
}

Utf8Locale::~Utf8Locale() {
    if (locale_ == nullptr) {
        return;
    }
    uselocale(before_);
    freelocale(locale_);
}

bool Matches(const std::string& pattern, const std::string& text) {
    return pattern == text || fnmatch(pattern.c_str(), text.c_str(), FNM_CASEFOLD) == 0;
}

}  // namespace vorn
