#pragma once

#include <span>

#include <xercesc/dom/DOM.hpp>

namespace tarvex {

/// What all nodes of a compact document share: they are read from the front to the back and never change.
/// What a reader of catalogs does not need of the DOM's interface throws DOMException.
template <class Interface>
class CompactNode : public Interface {
  public:
    using DOMNode = xercesc::DOMNode;

    CompactNode(const CompactNode&) = delete;
    CompactNode& operator=(const CompactNode&) = delete;
    ~CompactNode() override = default;

    DOMNode* getParentNode() const override { return parent_; }
    DOMNode* getNextSibling() const override { return next_; }
    DOMNode* getFirstChild() const override { return nullptr; }
    bool hasChildNodes() const override { return this->getFirstChild() != nullptr; }
    xercesc::DOMNamedNodeMap* getAttributes() const override { return nullptr; }
    bool hasAttributes() const override { return this->getAttributes() != nullptr; }
    bool isSameNode(const DOMNode* other) const override { return this == other; }
    const XMLCh* getNodeValue() const override { return nullptr; }
    const XMLCh* getNamespaceURI() const override { return nullptr; }
    const XMLCh* getPrefix() const override { return nullptr; }
    const XMLCh* getLocalName() const override { return nullptr; }
    bool isSupported(const XMLCh* /*feature*/, const XMLCh* /*version*/) const override { return false; }
    void* getUserData(const XMLCh* /*key*/) const override { return nullptr; }
    void normalize() override {}
    void release() override {}

    xercesc::DOMNodeList* getChildNodes() const override { Refuse(); }
    DOMNode* getLastChild() const override { Refuse(); }
    DOMNode* getPreviousSibling() const override { Refuse(); }
    xercesc::DOMDocument* getOwnerDocument() const override { Refuse(); }
    DOMNode* cloneNode(bool /*deep*/) const override { Refuse(); }
    DOMNode* insertBefore(DOMNode* /*newChild*/, DOMNode* /*refChild*/) override { Refuse(); }
    DOMNode* replaceChild(DOMNode* /*newChild*/, DOMNode* /*oldChild*/) override { Refuse(); }
    DOMNode* removeChild(DOMNode* /*oldChild*/) override { Refuse(); }
    DOMNode* appendChild(DOMNode* /*newChild*/) override { Refuse(); }
    void setNodeValue(const XMLCh* /*value*/) override { Refuse(); }
    void setPrefix(const XMLCh* /*prefix*/) override { Refuse(); }
    bool isEqualNode(const DOMNode* /*other*/) const override { Refuse(); }
    void* setUserData(const XMLCh* /*key*/, void* /*data*/,
                      xercesc::DOMUserDataHandler* /*handler*/) override {
        Refuse();
    }
    const XMLCh* getBaseURI() const override { Refuse(); }
    short compareDocumentPosition(const DOMNode* /*other*/) const override { Refuse(); }
    const XMLCh* getTextContent() const override { Refuse(); }
    void setTextContent(const XMLCh* /*text*/) override { Refuse(); }
    const XMLCh* lookupPrefix(const XMLCh* /*uri*/) const override { Refuse(); }
    bool isDefaultNamespace(const XMLCh* /*uri*/) const override { Refuse(); }
    const XMLCh* lookupNamespaceURI(const XMLCh* /*prefix*/) const override { Refuse(); }
    void* getFeature(const XMLCh* /*feature*/, const XMLCh* /*version*/) const override { Refuse(); }

    /// Where the node that follows is to be entered.
    DOMNode** NextPlace() { return &next_; }

  protected:
    explicit CompactNode(DOMNode* parent) : parent_(parent) {}

    [[noreturn]] static void Refuse() {
        throw xercesc::DOMException(xercesc::DOMException::NOT_SUPPORTED_ERR);
    }

  private:
    DOMNode* parent_;
    DOMNode* next_ = nullptr;
};

/// A text between two pieces of markup.
class CompactText : public CompactNode<xercesc::DOMNode> {
  public:
    CompactText(DOMNode* parent, const XMLCh* text) : CompactNode(parent), text_(text) {}

    const XMLCh* getNodeName() const override { return u"#text"; }
    NodeType getNodeType() const override { return TEXT_NODE; }
    const XMLCh* getNodeValue() const override { return text_; }

  private:
    const XMLCh* text_;
};

class CompactAttribute : public CompactNode<xercesc::DOMAttr> {
  public:
    CompactAttribute(const XMLCh* name, const XMLCh* value)
        : CompactNode(nullptr), name_(name), value_(value) {}

    const XMLCh* getNodeName() const override { return name_; }
    NodeType getNodeType() const override { return ATTRIBUTE_NODE; }
    const XMLCh* getNodeValue() const override { return value_; }
    const XMLCh* getName() const override { return name_; }
    const XMLCh* getValue() const override { return value_; }

    xercesc::DOMElement* getOwnerElement() const override { Refuse(); }
    bool getSpecified() const override { Refuse(); }
    void setValue(const XMLCh* /*value*/) override { Refuse(); }
    bool isId() const override { Refuse(); }
    const xercesc::DOMTypeInfo* getSchemaTypeInfo() const override { Refuse(); }

  private:
    const XMLCh* name_;
    const XMLCh* value_;
};

/// The attributes of an element, in the order of the document.
class CompactAttributes : public xercesc::DOMNamedNodeMap {
  public:
    explicit CompactAttributes(std::span<CompactAttribute> attributes) : attributes_(attributes) {}
    CompactAttributes(const CompactAttributes&) = delete;
    CompactAttributes& operator=(const CompactAttributes&) = delete;
    ~CompactAttributes() override = default;

    XMLSize_t getLength() const override { return attributes_.size(); }
    xercesc::DOMNode* item(XMLSize_t index) const override;
    xercesc::DOMNode* getNamedItem(const XMLCh* name) const override;

    xercesc::DOMNode* setNamedItem(xercesc::DOMNode* node) override;
    xercesc::DOMNode* removeNamedItem(const XMLCh* name) override;
    xercesc::DOMNode* getNamedItemNS(const XMLCh* uri, const XMLCh* name) const override;
    xercesc::DOMNode* setNamedItemNS(xercesc::DOMNode* node) override;
    xercesc::DOMNode* removeNamedItemNS(const XMLCh* uri, const XMLCh* name) override;

  private:
    std::span<CompactAttribute> attributes_;
};

class CompactElement : public CompactNode<xercesc::DOMElement> {
  public:
    /// `attributes` may be null for an element that has none.
    CompactElement(DOMNode* parent, const XMLCh* name, CompactAttributes* attributes)
        : CompactNode(parent), name_(name), attributes_(attributes) {}

    const XMLCh* getNodeName() const override { return name_; }
    const XMLCh* getTagName() const override { return name_; }
    NodeType getNodeType() const override { return ELEMENT_NODE; }
    DOMNode* getFirstChild() const override { return firstChild_; }
    /// Null when there are no attributes.
    xercesc::DOMNamedNodeMap* getAttributes() const override { return attributes_; }
    xercesc::DOMAttr* getAttributeNode(const XMLCh* name) const override;
    const XMLCh* getAttribute(const XMLCh* name) const override;
    bool hasAttribute(const XMLCh* name) const override { return getAttributeNode(name) != nullptr; }
    DOMElement* getFirstElementChild() const override;
    DOMElement* getNextElementSibling() const override;

    /// Where the first child is to be entered.
    DOMNode** FirstPlace() { return &firstChild_; }

    xercesc::DOMNodeList* getElementsByTagName(const XMLCh* name) const override;
    void setAttribute(const XMLCh* name, const XMLCh* value) override;
    xercesc::DOMAttr* setAttributeNode(xercesc::DOMAttr* attribute) override;
    xercesc::DOMAttr* removeAttributeNode(xercesc::DOMAttr* attribute) override;
    void removeAttribute(const XMLCh* name) override;
    const XMLCh* getAttributeNS(const XMLCh* uri, const XMLCh* name) const override;
    void setAttributeNS(const XMLCh* uri, const XMLCh* name, const XMLCh* value) override;
    void removeAttributeNS(const XMLCh* uri, const XMLCh* name) override;
    xercesc::DOMAttr* getAttributeNodeNS(const XMLCh* uri, const XMLCh* name) const override;
    xercesc::DOMAttr* setAttributeNodeNS(xercesc::DOMAttr* attribute) override;
    xercesc::DOMNodeList* getElementsByTagNameNS(const XMLCh* uri, const XMLCh* name) const override;
    bool hasAttributeNS(const XMLCh* uri, const XMLCh* name) const override;
    void setIdAttribute(const XMLCh* name, bool isId) override;
    void setIdAttributeNS(const XMLCh* uri, const XMLCh* name, bool isId) override;
    void setIdAttributeNode(const xercesc::DOMAttr* attribute, bool isId) override;
    const xercesc::DOMTypeInfo* getSchemaTypeInfo() const override;
    DOMElement* getLastElementChild() const override;
    DOMElement* getPreviousElementSibling() const override;
    XMLSize_t getChildElementCount() const override;

  private:
    const XMLCh* name_;
    CompactAttributes* attributes_;
    DOMNode* firstChild_ = nullptr;
};

/// The node above the root element.
class CompactDocument : public CompactNode<xercesc::DOMNode> {
  public:
    CompactDocument() : CompactNode(nullptr) {}

    const XMLCh* getNodeName() const override { return u"#document"; }
    NodeType getNodeType() const override { return DOCUMENT_NODE; }
    DOMNode* getFirstChild() const override { return firstChild_; }

    DOMNode** FirstPlace() { return &firstChild_; }

  private:
    DOMNode* firstChild_ = nullptr;
};

}  // namespace tarvex
