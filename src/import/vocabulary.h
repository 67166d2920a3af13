#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

namespace tarvex {

/// Whether the text of an element is read.
enum class ElementText { Unread, Read };

/// The elements, texts and attributes that anybody reads, so that a parser need not keep the others. A
/// vocabulary without words stands for all of them.
class Vocabulary {
  public:
    using DomText = std::basic_string<XMLCh>;

    struct Word {
        bool hasText = false;
        std::vector<DomText> attributes;
    };

    /// Names are ASCII. A name that is there already keeps what it has and gets what it lacks.
    void Add(std::string_view element, ElementText text = ElementText::Unread,
             std::initializer_list<std::string_view> attributes = {});

    bool HasWords() const { return !words_.empty(); }
    /// Null for an element that nobody reads.
    const Word* Find(const XMLCh* element) const;

  private:
    std::unordered_map<DomText, Word> words_;
};

}  // namespace tarvex
