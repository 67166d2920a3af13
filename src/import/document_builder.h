#pragma once

#include <memory_resource>
#include <string>
#include <unordered_map>
#include <vector>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include "import/compact_dom.h"
#include "import/vocabulary.h"

namespace tarvex {

/// Builds a compact document from what the scanner finds, of the words of a vocabulary only. An element that
/// is none becomes a node only when one that is lies below it: readers look for some elements at any depth.
/// Texts are kept where the vocabulary says that somebody reads them, attributes likewise. White space beside
/// child elements is indentation and not kept; an element that has nothing else keeps it.
///
/// The document lives as long as the builder, and uses the names that the element declarations hold.
class DocumentBuilder {
  public:
    explicit DocumentBuilder(Vocabulary vocabulary);

    const xercesc::DOMNode& Document() const { return document_; }

    /// No name or value of a catalog is longer, in UTF-16 units. Names stand in messages, paths and
    /// attributes again and again, so that a few megabytes would become gigabytes.
    static constexpr std::size_t kMaxText = 4096;

    /// False when an attribute that is kept was cut to kMaxText.
    [[nodiscard]] bool StartElement(const xercesc::XMLElementDecl& declaration,
                                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                    XMLSize_t attributeCount);
    void EndElement();
    /// How many elements are open.
    std::size_t Depth() const { return open_.size(); }
    /// A piece of text; it may arrive in many. False when a text becomes longer than kMaxText; the rest of it
    /// is left out, without a further word. White space alone may be longer, since it says nothing.
    [[nodiscard]] bool Text(const XMLCh* text, XMLSize_t length);
    /// A comment or the like, which parts the text before it from the text after it.
    void PartText();

  private:
    using DomText = Vocabulary::DomText;

    /// What the vocabulary says of a declared element.
    struct Use {
        const XMLCh* name = nullptr;
        bool isWord = false;  // else only a word below it makes it a node
        bool hasText = false;
        const std::vector<DomText>* attributes = nullptr;  // null for all
    };
    /// An element whose end has not come yet.
    struct Open {
        const Use* use = nullptr;
        CompactElement* element = nullptr;  // null while it is no node
        xercesc::DOMNode** next = nullptr;  // where its next child is entered
        bool hasChildElements = false;
    };

    const Use& UseOf(const xercesc::XMLElementDecl& declaration);
    void OpenElement(const Use& use);
    void MakeNode(std::size_t depth, CompactAttributes* attributes);
    static void DropIndentation(Open& open);
    CompactAttributes* MakeAttributes(const Use& use,
                                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                      XMLSize_t attributeCount);
    const XMLCh* CopyAttribute(const XMLCh* value);
    const XMLCh* Copy(const XMLCh* text, std::size_t length);
    /// An object that is never destroyed; only its memory is released.
    template <class T, class... Args>
    T* Make(const Args&... args);

    Vocabulary vocabulary_;
    std::unordered_map<const xercesc::XMLElementDecl*, Use> uses_;
    std::pmr::monotonic_buffer_resource memory_;  // of all nodes and texts; they own nothing else
    CompactDocument document_;
    std::vector<Open> open_;  // from the root down
    std::size_t nodes_ = 0;   // so many of them are nodes
    DomText text_;            // since the last piece of markup
    bool isCut_ = false;      // it was longer
    bool isFullOfBlanks_ = false;
    bool isAttributeCut_ = false;  // of the element that is being read
};

}  // namespace tarvex
