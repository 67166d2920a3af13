#include "import/vocabulary.h"

#include <algorithm>

namespace tarvex {

void Vocabulary::Add(std::string_view element, ElementText text,
                     std::initializer_list<std::string_view> attributes) {
    Word& word = words_[DomText(element.begin(), element.end())];
    word.hasText |= text == ElementText::Read;
    for (const std::string_view attribute : attributes) {
        DomText name(attribute.begin(), attribute.end());
        if (std::ranges::find(word.attributes, name) == word.attributes.end()) {
            word.attributes.push_back(std::move(name));
        }
    }
}

const Vocabulary::Word* Vocabulary::Find(const XMLCh* element) const {
    const auto found = words_.find(element);
    return found == words_.end() ? nullptr : &found->second;
}

}  // namespace tarvex
