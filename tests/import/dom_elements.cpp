#include "import/dom_elements.h"

#include <algorithm>

#include "import/xml/transcode.h"

namespace tarvex::test {
namespace {

using xercesc::DOMNode;

bool IsOfType(const DOMNode& node, DOMNode::NodeType type) {
    return node.getNodeType() == type;
}

/// The first text among the children. White space beside child elements is none.
const DOMNode* FirstText(const DOMNode& node) {
    bool hasElements = false;
    for (const DOMNode* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        hasElements |= IsOfType(*child, DOMNode::ELEMENT_NODE);
    }
    const DOMNode* text = node.getFirstChild();
    while (text != nullptr &&
           (!IsOfType(*text, DOMNode::TEXT_NODE) || (hasElements && IsWhiteSpace(text->getNodeValue())))) {
        text = text->getNextSibling();
    }
    return text;
}

}  // namespace

void DomElements::Convert(const DOMNode& node, Element& element) {
    if (const DOMNode* text = FirstText(node)) {
        element.text = Keep(text->getNodeValue());
    }
    const Element** next = &element.firstChild;
    for (const DOMNode* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        if (!IsOfType(*child, DOMNode::ELEMENT_NODE)) {
            continue;
        }
        Element& converted = elements_.emplace_back();
        converted.name = Keep(child->getNodeName());
        converted.parent = &element;
        std::vector<Attribute>& attributes = attributes_.emplace_back();
        for (XMLSize_t i = 0; i < child->getAttributes()->getLength(); ++i) {
            const DOMNode& attribute = *child->getAttributes()->item(i);
            attributes.push_back({Keep(attribute.getNodeName()), Keep(attribute.getNodeValue())});
        }
        converted.attributes = attributes;
        Convert(*child, converted);
        *next = &converted;
        next = &converted.nextSibling;
    }
}

std::string_view DomElements::Keep(const XMLCh* text) {
    return texts_.emplace_back(Transcode(text));
}

}  // namespace tarvex::test
