/// What is read of a document, so that a parser need not keep the rest.

#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// Whether the text of an element is read.
enum class ElementText { Unread, Read };

/// The elements, texts and attributes that anybody reads. A vocabulary without words stands for all of them.
class Vocabulary {
  public:
    struct Word {
        bool hasText = false;
        std::vector<std::string> attributes;
    };

    /// A name that is there already keeps what it has and gets what it lacks.
    void Add(std::string_view element, ElementText text = ElementText::Unread,
             std::initializer_list<std::string_view> attributes = {});

    /// Elements that are no words are kept, too, without texts and attributes: somebody asks what stands in
    /// the place of a word.
    void KeepOthers() { keepsOthers_ = true; }
    bool KeepsOthers() const { return keepsOthers_; }

    bool HasWords() const { return !words_.empty(); }
    /// Null for an element that nobody reads.
    const Word* Find(std::string_view element) const;

  private:
    std::map<std::string, Word, std::less<>> words_;
    bool keepsOthers_ = false;
};

}  // namespace tarvex
