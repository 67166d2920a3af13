#include "export/signal_names.h"

#include <algorithm>

#include "export/message_names.h"

namespace tarvex {
namespace {

/// A suffix leaves so many characters to the rest of the name ...
constexpr std::size_t kLeastBase = 4;
/// ... and unique names keep so many free for letters.
constexpr std::size_t kLetterRoom = 3;

/// Nothing for 0, else the number in base 26 with the digits "A" to "Z".
std::string Letters(unsigned number) {
    constexpr unsigned kBase = 26;
    std::string letters;
    for (; number > 0; number /= kBase) {
        letters += static_cast<char>('A' + number % kBase);
    }
    std::ranges::reverse(letters);
    return letters;
}

void CutTo(std::string& text, std::size_t length) {
    text.resize(std::min(text.size(), length));
}

}  // namespace

void SignalNames::StartMessage() {
    if (!areUnique_) {
        firstTries_.clear();
    }
}

std::string SignalNames::Make(const msgblk& message, std::string base, std::string suffix,
                              std::size_t maxLength) {
    CutTo(suffix, maxLength - kLeastBase);
    const std::size_t room = maxLength - suffix.size() - (areUnique_ ? kLetterRoom : 0);
    if (base.size() > room) {
        ShortenName(base);
        CutTo(base, room);
    }
    std::string name = base + suffix;
    if (IsTaken(message, name)) {
        name = NumberedName(message, base, suffix);
    }
    if (areUnique_) {
        usedNames_.insert(name);
    }
    return name;
}

/// Nothing that happens later in the database, or in the message where names are not unique, can free the
/// name.
bool SignalNames::IsTakenForGood(const msgblk& message, const std::string& name) {
    return areUnique_ ? usedNames_.contains(name) : writer_.GetSignal(message, name.c_str()) != nullptr;
}

/// A record holds less than a very long name, so that a unique name may still be one of the message's.
bool SignalNames::IsTaken(const msgblk& message, const std::string& name) {
    return IsTakenForGood(message, name) ||
           (areUnique_ && writer_.GetSignal(message, name.c_str()) != nullptr);
}

/// The first name that is free, counted from 1. Numbers that are taken for good are not tried again.
std::string SignalNames::NumberedName(const msgblk& message, const std::string& base,
                                      const std::string& suffix) {
    unsigned& firstTry = firstTries_.try_emplace(base + '\n' + suffix, 1).first->second;
    unsigned number = firstTry;
    std::string name;
    for (;; ++number) {
        name = base;
        name.append(Letters(number)).append(suffix);
        if (!IsTaken(message, name)) {
            break;
        }
        if (firstTry == number && IsTakenForGood(message, name)) {
            ++firstTry;
        }
    }
    return name;
}

}  // namespace tarvex
