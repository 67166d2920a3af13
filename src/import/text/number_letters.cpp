#include "import/text/number_letters.h"

#include <algorithm>

namespace tarvex {
namespace {

constexpr unsigned kBase = 26;
constexpr std::size_t kMostLetters = 5;

}  // namespace

std::string LettersOf(unsigned number) {
    std::string letters;
    for (; number > 0; number /= kBase) {
        letters += static_cast<char>('A' + number % kBase);
    }
    std::ranges::reverse(letters);
    return letters;
}

std::optional<unsigned> NumberOfLetters(std::string_view letters) {
    if (letters.starts_with('A') || letters.size() > kMostLetters) {
        return std::nullopt;
    }
    unsigned number = 0;
    for (const char letter : letters) {
        if (letter < 'A' || letter > 'Z') {
            return std::nullopt;
        }
        number = number * kBase + static_cast<unsigned>(letter - 'A');
    }
    return number;
}

}  // namespace tarvex
