#include "vorn/unique_names.h"

#include <algorithm>
#include <charconv>

#include "import/text/number_letters.h"

namespace vorn {
namespace {

using kestrel::NameIn;

constexpr std::size_t kDigits = 2;
constexpr unsigned kNumbers = 256;

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

/// A key for a stem and what stands behind its letters.
std::string KeyOf(std::string_view stem, std::string_view suffix) {
    return std::string(stem).append("\n").append(suffix);
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

std::string WithLetters(std::string_view stem, unsigned number, std::string_view suffix) {
    return std::string(stem).append(tarvex::LettersOf(number)).append(suffix);
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

/// How many names the database has in a row: the stem, the stem with "B", with "C" and so on.
unsigned UniqueNames::LettersBehind(const std::string& stem, const std::string& suffix) {
    const auto [row, isNew] = signalRows_.try_emplace(KeyOf(stem, suffix), 0);
    unsigned& count = row->second;
    while (isNew && signalNames_->contains(WithLetters(stem, count, suffix))) {
        ++count;
    }
    return count;
}

std::vector<std::string> UniqueNames::StemsOf(const kestrel::Signal& signal) {
    if (!signalNames_) {
        ReadSignalNames();
    }
    const std::string suffix = SuffixOf(signal);
    std::string_view name = NameIn(signal.name);
    name.remove_suffix(suffix.size());
    std::vector<std::string> stems{KeyOf(name, suffix)};
    for (std::size_t end = name.size(); end-- > 1 && name[end] >= 'A' && name[end] <= 'Z';) {
        const std::optional<unsigned> number = tarvex::NumberOfLetters(name.substr(end));
        const std::string stem(name.substr(0, end));
        if (number && LettersBehind(stem, suffix) >= *number) {
            stems.push_back(KeyOf(stem, suffix));
        }
    }
    return stems;
}

/// How many names the database has in a row: the stem, or one that it is the beginning of, the stem with
/// "00", with "01" and so on.
unsigned UniqueNames::DigitsBehind(std::string_view stem) {
    const auto [row, isNew] = messageRows_.try_emplace(std::string(stem), 0);
    unsigned& count = row->second;
    if (isNew && messageStems_.contains(stem)) {
        ++count;
        while (count <= kNumbers && messageNames_->contains(WithNumber(stem, count - 1))) {
            ++count;
        }
    }
    return count;
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
    return DigitsBehind(stem) > *number ? std::optional(std::string(stem)) : std::nullopt;
}

bool AreNamedAlike(const kestrel::Signal& before, UniqueNames& namesBefore, const kestrel::Signal& after,
                   UniqueNames& namesAfter) {
    if (NameIn(before.name) == NameIn(after.name)) {
        return true;
    }
    const std::vector<std::string> stems = namesBefore.StemsOf(before);
    return std::ranges::any_of(namesAfter.StemsOf(after), [&](const std::string& stem) {
        return std::ranges::find(stems, stem) != stems.end();
    });
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
