#include "command_line/misspelling.h"

#include <algorithm>

#include "import/text/nearest_name.h"

namespace tarvex {

std::string ListOf(std::string_view what, const std::vector<std::string>& words) {
    std::string text = "the ";
    text.append(what).append("s are ");
    for (const std::string& word : words) {
        text.append(&word == &words.front() ? "" : ", ").append(word);
    }
    return text;
}

std::string Misspelling(std::string_view what, std::string_view given,
                        const std::vector<std::string>& words) {
    if (std::ranges::find(words, given) != words.end()) {
        return "";
    }
    std::string text = "there is no ";
    text.append(what).append(" '").append(given).append("'; ");
    const std::vector<std::string_view> names(words.begin(), words.end());
    const std::string_view nearest = NearestName(given, names);
    if (!nearest.empty()) {
        return text.append("did you mean '").append(nearest).append("'?");
    }
    return text + ListOf(what, words);
}

}  // namespace tarvex
