#include "export/signal_names.h"

#include <algorithm>

#include "export/message_names.h"
#include "import/text/number_letters.h"

namespace tarvex {
namespace {

/// A suffix leaves so many characters to the rest of the name ...
constexpr std::size_t kLeastBase = 4;
/// ... and unique names keep so many free for letters.
constexpr std::size_t kLetterRoom = 3;

void CutTo(std::string& text, std::size_t length) {
    text.resize(std::min(text.size(), length));
}

}  // namespace

SignalNames::SignalNames(KestrelWriteManager& writer, bool areUnique, std::size_t expected)
    : writer_(writer), areUnique_(areUnique) {
    if (areUnique) {
        usedNames_.reserve(expected);
        firstTries_.reserve(expected / 4);
    }
}

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
    if (Take(message, name) != Taking::Done) {
        name = NumberedName(message, base, suffix);
    }
    return name;
}

/// Takes a name if it is free. A name that was never given may still be one of the message's: a record holds
/// less than a very long name, and the new signal, which has none yet, answers to the empty one.
SignalNames::Taking SignalNames::Take(const msgblk& message, const std::string& name) {
    const auto isInMessage = [&] { return writer_.GetSignal(message, name.c_str()) != nullptr; };
    if (!areUnique_) {
        return isInMessage() ? Taking::NeverFree : Taking::Done;
    }
    if ((haveBeenCut_ || name.empty()) && !usedNames_.contains(name) && isInMessage()) {
        return Taking::NotFree;
    }
    if (!usedNames_.insert(name).second) {
        return Taking::NeverFree;
    }
    haveBeenCut_ |= name.size() > kNameSize;
    return Taking::Done;
}

/// The first name that is free, counted from 1. Numbers that are taken for good are not tried again.
std::string SignalNames::NumberedName(const msgblk& message, const std::string& base,
                                      const std::string& suffix) {
    unsigned& firstTry = firstTries_.try_emplace(base + '\n' + suffix, 1).first->second;
    unsigned number = firstTry;
    std::string name;
    for (;; ++number) {
        name = base;
        name.append(LettersOf(number)).append(suffix);
        const Taking taking = Take(message, name);
        if (taking == Taking::Done) {
            return name;
        }
        if (firstTry == number && taking == Taking::NeverFree) {
            ++firstTry;
        }
    }
}

}  // namespace tarvex
