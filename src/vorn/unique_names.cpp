#include "vorn/unique_names.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace vorn {
namespace {

using kestrel::NameIn;

/// More letters than any database needs.
constexpr std::size_t kMostLetters = 5;
constexpr std::size_t kDigits = 2;

bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

/// What stands behind the letters in the name of this signal.
std::string SuffixOf(const kestrel::Signal& signal) {
    std::string suffix;
    if ((signal.flags & kSignalMultiplexed) != 0) {
        char digits[8] = {};
        const auto end =
            std::to_chars(std::begin(digits), std::end(digits), signal.multiplexer_value, 16).ptr;
        suffix = "_M";
        suffix.append(std::begin(digits), end);
    } else if ((signal.flags & kSignalMultiplexor) != 0) {
        suffix = "X";
    }
    return NameIn(signal.name).ends_with(suffix) ? suffix : "";
}

/// The letters that come before these: "B" before "C", "Z" before "BA", nothing before "B".
std::string LettersBefore(std::string letters) {
    for (std::size_t place = letters.size(); place-- > 0;) {
        if (letters[place] != 'A') {
            --letters[place];
            break;
        }
        letters[place] = 'Z';
    }
    return letters.substr(std::min(letters.find_first_not_of('A'), letters.size()));
}

/// The number of two hexadecimal digits at the end of a name.
std::optional<unsigned> NumberAtEnd(std::string_view name) {
    const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); };
    if (name.size() <= kDigits) {
        return std::nullopt;
    }
    const std::string_view digits = name.substr(name.size() - kDigits);
    if (!std::ranges::all_of(digits, isDigit)) {
        return std::nullopt;
    }
    unsigned number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return number;
}

std::string WithNumber(std::string_view stem, unsigned number) {
    constexpr std::string_view kHexadecimal = "0123456789ABCDEF";
    std::string name(stem);
    name += kHexadecimal[number / 16];
    name += kHexadecimal[number % 16];
    return name;
}

/// What digits would leave of a name.
std::string_view RoomFor(std::string_view name) {
    return name.substr(0, kNameSize - kDigits);
}

}  // namespace

void UniqueNames::ReadSignalNames() {
    signalNames_.emplace();
    for (const kestrel::Message& message : database_.Messages()) {
        for (const kestrel::Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            signalNames_->insert(NameIn(signal->name));
        }
    }
}

void UniqueNames::ReadMessageNames() {
    messageNames_.emplace();
    for (const kestrel::Message& message : database_.Messages()) {
        messageNames_->insert(NameIn(message.name));
        if (NumberAtEnd(NameIn(message.name)) != 0U) {
            messageStems_.insert(RoomFor(NameIn(message.name)));
        }
    }
}

std::string UniqueNames::StemOf(const kestrel::Signal& signal) {
    if (!signalNames_) {
        ReadSignalNames();
    }
    const std::string suffix = SuffixOf(signal);
    std::string_view name = NameIn(signal.name);
    name.remove_suffix(suffix.size());
    std::size_t begin = name.size();
    while (begin > 1 && name.size() - begin < kMostLetters && IsCapital(name[begin - 1])) {
        --begin;
    }
    // As many letters as can be: "TempBB" follows "TempBA" if there is one, else it is the second "TempB".
    for (; begin < name.size(); ++begin) {
        if (name[begin] == 'A') {
            continue;
        }
        std::string before(name.substr(0, begin));
        before += LettersBefore(std::string(name.substr(begin)));
        if (signalNames_->contains(before + suffix)) {
            break;
        }
    }
    return std::string(name.substr(0, begin)) + "\n" + suffix;
}

std::optional<std::string> UniqueNames::StemOf(const kestrel::Message& message) {
    if (!messageNames_) {
        ReadMessageNames();
    }
    const std::string_view name = NameIn(message.name);
    const std::optional<unsigned> number = NumberAtEnd(name);
    if (!number) {
        return std::nullopt;
    }
    const std::string_view stem = name.substr(0, name.size() - kDigits);
    const bool isNext =
        *number == 0 ? messageStems_.contains(stem) : messageNames_->contains(WithNumber(stem, *number - 1));
    return isNext ? std::optional(std::string(stem)) : std::nullopt;
}

bool AreNamedAlike(const kestrel::Signal& before, UniqueNames& namesBefore, const kestrel::Signal& after,
                   UniqueNames& namesAfter) {
    return NameIn(before.name) == NameIn(after.name) ||
           namesBefore.StemOf(before) == namesAfter.StemOf(after);
}

bool AreNamedAlike(const kestrel::Message& before, UniqueNames& namesBefore, const kestrel::Message& after,
                   UniqueNames& namesAfter) {
    if (NameIn(before.name) == NameIn(after.name)) {
        return true;
    }
    const auto stemBefore = namesBefore.StemOf(before);
    const auto stemAfter = namesAfter.StemOf(after);
    if (!stemBefore && !stemAfter) {
        return false;
    }
    return stemBefore.value_or(std::string(RoomFor(NameIn(before.name)))) ==
           stemAfter.value_or(std::string(RoomFor(NameIn(after.name))));
}

}  // namespace vorn
