#include "export/message_names.h"

#include <algorithm>

#include "import/text/format_text.h"
#include "kestrel/kestrel.h"

namespace tarvex {
namespace {

/// Characters that vowel removal leaves alone at the start of a name.
constexpr std::size_t kKeptCharacters = 3;

constexpr unsigned kMaxSuffixes = 100;
constexpr std::size_t kSuffixLength = 2;

bool IsSmallVowel(char c) {
    return c == 'a' || c == 'e' || c == 'i' || c == 'o' || c == 'u';
}

}  // namespace

std::string CleanName(std::string_view name) {
    std::string clean(name);
    std::erase_if(clean, [](char c) { return !IsLetterOrDigit(c); });
    return clean;
}

std::size_t ShortenName(std::string& name) {
    if (name.size() <= kKeptCharacters) {
        return 0;
    }
    const auto dropped = std::remove_if(name.begin() + kKeptCharacters, name.end(), IsSmallVowel);
    const auto count = static_cast<std::size_t>(name.end() - dropped);
    name.erase(dropped, name.end());
    return count;
}

NamePart::NamePart(std::string_view name) : length(name.size()), clean(CleanName(name)) {
    std::string rest(name);
    vowels = ShortenName(rest);
    shortened = CleanName(rest);
    // One character more than fits shows that there are more.
    clean.resize(std::min(clean.size(), kNameSize + 1));
    shortened.resize(std::min(shortened.size(), kNameSize + 1));
}

std::string MessageNames::Make(const NamePart& block, const NamePart& function, const NamePart& operation) {
    // Lengths count before cleaning, so a name may be cut although it would have fitted.
    std::size_t total = block.length + function.length + operation.length + 2;
    const auto take = [&](const NamePart& part) -> const std::string& {
        if (total <= kNameSize) {
            return part.clean;
        }
        total -= part.vowels;
        return part.shortened;
    };
    const std::string& end = take(operation);
    const std::string& middle = take(function);
    std::string name = take(block) + "_" + middle + "_" + end;
    if (total > kNameSize && name.size() > kNameSize) {
        name.resize(kNameSize);
    }
    if (!used_.insert(name).second) {
        name = NumberedName(name.substr(0, kNameSize - kSuffixLength));
    }
    return name;
}

/// The first numbered name that is free, else the last one tried.
std::string MessageNames::NumberedName(const std::string& stem) {
    unsigned& number = firstTries_[stem];
    for (; number < kMaxSuffixes; ++number) {
        std::string name = stem + FormatText("%02X", number);
        if (used_.insert(name).second) {
            return name;
        }
    }
    return stem + FormatText("%02X", kMaxSuffixes - 1);
}

}  // namespace tarvex
