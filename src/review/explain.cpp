#include "review/explain.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "review/explanations/explanations.h"

namespace tarvex::review {
namespace {

constexpr std::string_view kFatal = "fatal";

/// 0 for what is no number.
unsigned NumberOf(std::string_view word) {
    word.remove_prefix(word.starts_with('#') ? 1 : 0);
    unsigned number = 0;
    const char* const end = word.data() + word.size();
    const auto [last, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && last == end ? number : 0;
}

}  // namespace

Explanations AllExplanations() {
    Explanations all;
    for (const Group& group : Groups()) {
        for (const Explanation& explanation : group.explanations) {
            all.push_back(&explanation);
        }
    }
    return all;
}

Explanations FindExplanations(std::string_view word) {
    const unsigned number = NumberOf(word);
    if (number == 0 && word != kFatal) {
        return {};
    }
    Explanations found = AllExplanations();
    std::erase_if(found, [&](const Explanation* one) { return one->message->number != number; });
    return found;
}

std::string NotExplained(std::string_view word) {
    const unsigned number = NumberOf(word);
    if (number == 0) {
        return "'" + std::string(word) + "' is no number of a message, nor '" + std::string(kFatal) + "'";
    }
    std::set<unsigned> numbers;
    for (const Explanation* explanation : AllExplanations()) {
        numbers.insert(explanation->message->number);
    }
    numbers.erase(0);
    const auto next = numbers.lower_bound(number);
    std::string text = "there is no message " + std::to_string(number) + "; near it ";
    if (next == numbers.begin() || next == numbers.end()) {
        return text + "is " + std::to_string(next == numbers.end() ? *numbers.rbegin() : *next);
    }
    return text + "are " + std::to_string(*std::prev(next)) + " and " + std::to_string(*next);
}

}  // namespace tarvex::review
