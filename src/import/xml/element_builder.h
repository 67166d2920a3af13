/// Makes elements of what the scanner of the XML parser finds.

#pragma once

#include <deque>
#include <memory_resource>
#include <string>
#include <unordered_map>
#include <vector>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include "import/xml/element.h"
#include "import/xml/transcode.h"
#include "import/xml/vocabulary.h"

namespace tarvex {

/// A place in a file, counted from 1.
struct FilePlace {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// Builds a document of the words of a vocabulary only. An element that is none is kept only when one that is
/// lies below it: readers look for some elements at any depth. The first text of an element is kept where the
/// vocabulary says that somebody reads it, attributes likewise. The document lives as long as the builder.
class ElementBuilder {
  public:
    /// `memory` is where the document comes from; it outlives the builder.
    explicit ElementBuilder(Vocabulary vocabulary,
                            std::pmr::memory_resource* memory = std::pmr::get_default_resource())
        : vocabulary_(std::move(vocabulary)), memory_(memory) {}

    const Element& Document() const { return document_; }

    /// No name or value of a catalog is longer, in UTF-16 units. Names stand in messages, paths and
    /// attributes again and again, so that a few megabytes would become gigabytes.
    static constexpr std::size_t kMaxText = 4096;

    /// `start` is where the start tag begins. False when an attribute that is kept was cut to kMaxText.
    [[nodiscard]] bool StartElement(const xercesc::XMLElementDecl& declaration,
                                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                    XMLSize_t attributeCount, FilePlace start);
    void EndElement();
    /// How many elements are open.
    std::size_t Depth() const { return open_.size(); }
    /// A piece of text; it may arrive in many. False when a text becomes longer than kMaxText; the rest of it
    /// is left out, without a further word. White space alone may be longer, since it says nothing.
    [[nodiscard]] bool Text(const XMLCh* text, XMLSize_t length);
    /// A comment or the like, which parts the text before it from the text after it.
    void PartText();

  private:
    /// A name as the parser has it and as readers have it.
    struct Name {
        DomText dom;
        std::string_view utf8;
    };
    /// What the vocabulary says of a declared element.
    struct Use {
        std::string_view name;
        bool isWord = false;  // else only a word below it makes it an element
        bool hasText = false;
        bool hasAllAttributes = false;
        std::vector<Name> attributes;
    };
    /// An element whose end has not come yet.
    struct Open {
        const Use* use = nullptr;
        FilePlace start;
        Element* element = nullptr;      // null while it is none
        const Element** next = nullptr;  // where its next child is entered
        bool hasChildElements = false;
        bool isBlank = false;    // its first text is white space, which counts without child elements only
        std::string_view words;  // then the first text that is none
    };

    const Use& UseOf(const xercesc::XMLElementDecl& declaration);
    void OpenElement(const Use& use, FilePlace start);
    void MakeElement(std::size_t depth);
    void AddText(Open& open);
    std::span<const Attribute> KeepAttributes(const Use& use,
                                              const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                              XMLSize_t attributeCount);
    std::string_view KeepAttribute(const XMLCh* value);
    /// The text in UTF-8, in the document's memory.
    std::string_view Keep(std::basic_string_view<XMLCh> text);
    template <class T>
    T* Allocate(std::size_t count);

    Vocabulary vocabulary_;
    std::unordered_map<const xercesc::XMLElementDecl*, Use> uses_;
    std::pmr::monotonic_buffer_resource memory_;  // of all elements and texts; they own nothing else
    Element document_;
    std::vector<Open> open_;    // from the root down
    std::size_t elements_ = 0;  // so many of them are elements
    DomText text_;              // since the last piece of markup
    bool isCut_ = false;        // it was longer
    bool isFullOfBlanks_ = false;
    bool isAttributeCut_ = false;  // of the element that is being read
    std::string utf8_;             // the last text, kept for its memory
};

}  // namespace tarvex
