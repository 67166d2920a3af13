#include "import/xml/vocabulary.h"

#include <algorithm>

namespace tarvex {

void Vocabulary::Add(std::string_view element, ElementText text,
                     std::initializer_list<std::string_view> attributes) {
    Word& word = words_[std::string(element)];
    word.hasText |= text == ElementText::Read;
    for (const std::string_view attribute : attributes) {
        if (std::ranges::find(word.attributes, attribute) == word.attributes.end()) {
            word.attributes.emplace_back(attribute);
        }
    }
}

const Vocabulary::Word* Vocabulary::Find(std::string_view element) const {
    const auto found = words_.find(element);
    return found == words_.end() ? nullptr : &found->second;
}

}  // namespace tarvex
