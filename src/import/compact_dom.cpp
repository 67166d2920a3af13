#include "import/compact_dom.h"

#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace tarvex {
namespace {

[[noreturn]] void Refuse() {
    throw xercesc::DOMException(xercesc::DOMException::NOT_SUPPORTED_ERR);
}

/// The node itself or the first of those after it that is an element.
xercesc::DOMElement* ElementFrom(xercesc::DOMNode* node) {
    while (node != nullptr && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        node = node->getNextSibling();
    }
    return static_cast<xercesc::DOMElement*>(node);
}

}  // namespace

using xercesc::DOMAttr;
using xercesc::DOMElement;
using xercesc::DOMNode;
using xercesc::DOMNodeList;

DOMNode* CompactAttributes::item(XMLSize_t index) const {
    return index < attributes_.size() ? &attributes_[index] : nullptr;
}

DOMNode* CompactAttributes::getNamedItem(const XMLCh* name) const {
    for (CompactAttribute& attribute : attributes_) {
        if (xercesc::XMLString::equals(attribute.getName(), name)) {
            return &attribute;
        }
    }
    return nullptr;
}

DOMNode* CompactAttributes::setNamedItem(DOMNode* /*node*/) {
    Refuse();
}
DOMNode* CompactAttributes::removeNamedItem(const XMLCh* /*name*/) {
    Refuse();
}
DOMNode* CompactAttributes::getNamedItemNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) const {
    Refuse();
}
DOMNode* CompactAttributes::setNamedItemNS(DOMNode* /*node*/) {
    Refuse();
}
DOMNode* CompactAttributes::removeNamedItemNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) {
    Refuse();
}

DOMAttr* CompactElement::getAttributeNode(const XMLCh* name) const {
    return attributes_ == nullptr ? nullptr : static_cast<DOMAttr*>(attributes_->getNamedItem(name));
}

const XMLCh* CompactElement::getAttribute(const XMLCh* name) const {
    const DOMAttr* attribute = getAttributeNode(name);
    return attribute == nullptr ? xercesc::XMLUni::fgZeroLenString : attribute->getValue();
}

DOMElement* CompactElement::getFirstElementChild() const {
    return ElementFrom(getFirstChild());
}
DOMElement* CompactElement::getNextElementSibling() const {
    return ElementFrom(getNextSibling());
}

DOMNodeList* CompactElement::getElementsByTagName(const XMLCh* /*name*/) const {
    Refuse();
}
void CompactElement::setAttribute(const XMLCh* /*name*/, const XMLCh* /*value*/) {
    Refuse();
}
DOMAttr* CompactElement::setAttributeNode(DOMAttr* /*attribute*/) {
    Refuse();
}
DOMAttr* CompactElement::removeAttributeNode(DOMAttr* /*attribute*/) {
    Refuse();
}
void CompactElement::removeAttribute(const XMLCh* /*name*/) {
    Refuse();
}
const XMLCh* CompactElement::getAttributeNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) const {
    Refuse();
}
void CompactElement::setAttributeNS(const XMLCh* /*uri*/, const XMLCh* /*name*/, const XMLCh* /*value*/) {
    Refuse();
}
void CompactElement::removeAttributeNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) {
    Refuse();
}
DOMAttr* CompactElement::getAttributeNodeNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) const {
    Refuse();
}
DOMAttr* CompactElement::setAttributeNodeNS(DOMAttr* /*attribute*/) {
    Refuse();
}
DOMNodeList* CompactElement::getElementsByTagNameNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) const {
    Refuse();
}
bool CompactElement::hasAttributeNS(const XMLCh* /*uri*/, const XMLCh* /*name*/) const {
    Refuse();
}
void CompactElement::setIdAttribute(const XMLCh* /*name*/, bool /*isId*/) {
    Refuse();
}
void CompactElement::setIdAttributeNS(const XMLCh* /*uri*/, const XMLCh* /*name*/, bool /*isId*/) {
    Refuse();
}
void CompactElement::setIdAttributeNode(const DOMAttr* /*attribute*/, bool /*isId*/) {
    Refuse();
}
const xercesc::DOMTypeInfo* CompactElement::getSchemaTypeInfo() const {
    Refuse();
}
DOMElement* CompactElement::getLastElementChild() const {
    Refuse();
}
DOMElement* CompactElement::getPreviousElementSibling() const {
    Refuse();
}
XMLSize_t CompactElement::getChildElementCount() const {
    Refuse();
}

}  // namespace tarvex
