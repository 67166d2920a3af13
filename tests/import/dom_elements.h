#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "import/xml/element.h"

namespace tarvex::test {

/// A document of the XML library's own as elements, with everything that it has. Made without the builder of
/// the program, to compare it with.
class DomElements {
  public:
    explicit DomElements(const xercesc::DOMNode& document) { Convert(document, document_); }
    DomElements(const DomElements&) = delete;
    DomElements& operator=(const DomElements&) = delete;
    ~DomElements() = default;

    const Element& Document() const { return document_; }

  private:
    void Convert(const xercesc::DOMNode& node, Element& element);
    std::string_view Keep(const XMLCh* text);

    Element document_;
    std::deque<Element> elements_;
    std::deque<std::vector<Attribute>> attributes_;
    std::deque<std::string> texts_;
};

}  // namespace tarvex::test
