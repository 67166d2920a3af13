/// Compact nodes behind the DOM's interface.

#include "import/compact_dom.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/dom_access.h"
#include "import/test_texts.h"

namespace tarvex::test {
namespace {

using xercesc::DOMAttr;
using xercesc::DOMException;
using xercesc::DOMNamedNodeMap;

/// The document <r>one<a id="1" unit="dB"/>two<b>three</b></r>.
class CompactDom : public testing::Test {
  protected:
    CompactDom() {
        *document_.FirstPlace() = &root_;
        *root_.FirstPlace() = &one_;
        *one_.NextPlace() = &a_;
        *a_.NextPlace() = &two_;
        *two_.NextPlace() = &b_;
        *b_.FirstPlace() = &three_;
    }

    XmlPlatform platform_;
    CompactAttribute attributes_[2] = {{u"id", u"1"}, {u"unit", u"dB"}};
    CompactAttributes map_{attributes_};
    CompactDocument document_;
    CompactElement root_{&document_, u"r", nullptr};
    CompactText one_{&root_, u"one"};
    CompactElement a_{&root_, u"a", &map_};
    CompactText two_{&root_, u"two"};
    CompactElement b_{&root_, u"b", nullptr};
    CompactText three_{&b_, u"three"};
};

TEST_F(CompactDom, NodesHaveTheNamesTypesAndValuesOfTheDom) {
    struct Case {
        const DOMNode& node;
        const char* name;
        DOMNode::NodeType type;
        const XMLCh* value;
    };
    const Case kCases[] = {
        {document_, "#document", DOMNode::DOCUMENT_NODE, nullptr},
        {root_, "r", DOMNode::ELEMENT_NODE, nullptr},
        {a_, "a", DOMNode::ELEMENT_NODE, nullptr},
        {one_, "#text", DOMNode::TEXT_NODE, u"one"},
        {three_, "#text", DOMNode::TEXT_NODE, u"three"},
        {attributes_[0], "id", DOMNode::ATTRIBUTE_NODE, u"1"},
        {attributes_[1], "unit", DOMNode::ATTRIBUTE_NODE, u"dB"},
    };
    for (const auto& [node, name, type, value] : kCases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Transcode(node.getNodeName()), name);
        EXPECT_EQ(node.getNodeType(), type);
        EXPECT_EQ(node.getNodeValue() == nullptr, value == nullptr);
        EXPECT_EQ(Transcode(node.getNodeValue()), Transcode(value));
        EXPECT_EQ(node.getNamespaceURI(), nullptr);
        EXPECT_EQ(node.getPrefix(), nullptr);
        EXPECT_EQ(node.getLocalName(), nullptr);
    }
    EXPECT_EQ(Transcode(a_.getTagName()), "a");
}

TEST_F(CompactDom, NodesLeadUpDownAndOn) {
    struct Case {
        const char* what;
        const DOMNode& node;
        const DOMNode* parent;
        const DOMNode* firstChild;
        const DOMNode* next;
    };
    const Case kCases[] = {
        {"document", document_, nullptr, &root_, nullptr},
        {"r", root_, &document_, &one_, nullptr},
        {"one", one_, &root_, nullptr, &a_},
        {"a", a_, &root_, nullptr, &two_},
        {"two", two_, &root_, nullptr, &b_},
        {"b", b_, &root_, &three_, nullptr},
        {"three", three_, &b_, nullptr, nullptr},
        {"attribute", attributes_[0], nullptr, nullptr, nullptr},
    };
    for (const auto& [what, node, parent, firstChild, next] : kCases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(node.getParentNode(), parent);
        EXPECT_EQ(node.getFirstChild(), firstChild);
        EXPECT_EQ(node.hasChildNodes(), firstChild != nullptr);
        EXPECT_EQ(node.getNextSibling(), next);
        EXPECT_TRUE(node.isSameNode(&node));
        EXPECT_FALSE(node.isSameNode(parent));
    }
}

TEST_F(CompactDom, ElementsAreReachedPastTexts) {
    EXPECT_EQ(root_.getFirstElementChild(), &a_);
    EXPECT_EQ(a_.getNextElementSibling(), &b_);
    EXPECT_EQ(b_.getNextElementSibling(), nullptr);
    EXPECT_EQ(b_.getFirstElementChild(), nullptr) << "a text alone";
    EXPECT_EQ(a_.getFirstElementChild(), nullptr) << "nothing at all";
}

TEST_F(CompactDom, AttributesAreFoundByNameAndByPlace) {
    EXPECT_TRUE(a_.hasAttributes());
    const DOMNamedNodeMap* map = a_.getAttributes();
    ASSERT_EQ(map, &map_);
    EXPECT_EQ(map->getLength(), 2U);
    EXPECT_EQ(map->item(0), &attributes_[0]);
    EXPECT_EQ(map->item(1), &attributes_[1]);
    EXPECT_EQ(map->item(2), nullptr);
    EXPECT_EQ(map->item(static_cast<XMLSize_t>(-1)), nullptr);
    struct Case {
        const XMLCh* name;
        const DOMAttr* attribute;
        const char* value;
    };
    const Case kCases[] = {
        {u"id", &attributes_[0], "1"},
        {u"unit", &attributes_[1], "dB"},
        {u"ID", nullptr, ""},
        {u"un", nullptr, ""},
        {u"", nullptr, ""},
    };
    for (const auto& [name, attribute, value] : kCases) {
        SCOPED_TRACE(Transcode(name));
        EXPECT_EQ(map->getNamedItem(name), attribute);
        EXPECT_EQ(a_.getAttributeNode(name), attribute);
        EXPECT_EQ(a_.hasAttribute(name), attribute != nullptr);
        ASSERT_NE(a_.getAttribute(name), nullptr);
        EXPECT_EQ(Transcode(a_.getAttribute(name)), value);
    }
    EXPECT_EQ(Transcode(attributes_[1].getName()), "unit");
    EXPECT_EQ(Transcode(attributes_[1].getValue()), "dB");
}

TEST_F(CompactDom, ElementWithoutAttributesHasNoneByAnyName) {
    EXPECT_FALSE(b_.hasAttributes());
    EXPECT_EQ(b_.getAttributes(), nullptr);
    EXPECT_EQ(b_.getAttributeNode(u"id"), nullptr);
    EXPECT_FALSE(b_.hasAttribute(u"id"));
    EXPECT_EQ(Transcode(b_.getAttribute(u"id")), "");
    EXPECT_EQ(document_.getAttributes(), nullptr);
    EXPECT_EQ(one_.getAttributes(), nullptr);
}

TEST_F(CompactDom, DomAccessReadsCompactNodes) {
    std::string text;
    EXPECT_EQ(FindChildElement(&document_, "r"), &root_);
    EXPECT_EQ(FindGrandchildElement(&document_, "b"), &b_);
    EXPECT_EQ(NextDescendant(root_, a_), &b_);
    EXPECT_EQ(NextDescendant(root_, b_), nullptr);
    EXPECT_TRUE(GetElementText(root_, text));
    EXPECT_EQ(text, "one");
    EXPECT_TRUE(GetChildElementText(root_, text, "b"));
    EXPECT_EQ(text, "three");
    EXPECT_TRUE(GetChildAttribute(root_, text, "a", "unit"));
    EXPECT_EQ(text, "dB");
    EXPECT_FALSE(GetChildAttribute(root_, text, "b", "unit"));
}

TEST_F(CompactDom, WhatReadersDoNotNeedIsRefused) {
    struct Case {
        const char* what;
        void (*call)(CompactElement& a, CompactElement& b, CompactAttribute& attribute);
    };
    using Element = CompactElement&;
    using Attribute = CompactAttribute&;
    const Case kCases[] = {
        {"appendChild", [](Element a, Element b, Attribute) { a.appendChild(&b); }},
        {"insertBefore", [](Element a, Element b, Attribute) { a.insertBefore(&b, nullptr); }},
        {"removeChild", [](Element a, Element b, Attribute) { a.removeChild(&b); }},
        {"cloneNode", [](Element a, Element, Attribute) { static_cast<void>(a.cloneNode(true)); }},
        {"setNodeValue", [](Element a, Element, Attribute) { a.setNodeValue(u""); }},
        {"setTextContent", [](Element a, Element, Attribute) { a.setTextContent(u"text"); }},
        {"getTextContent", [](Element a, Element, Attribute) { static_cast<void>(a.getTextContent()); }},
        {"getChildNodes", [](Element a, Element, Attribute) { static_cast<void>(a.getChildNodes()); }},
        {"getPreviousSibling",
         [](Element a, Element, Attribute) { static_cast<void>(a.getPreviousSibling()); }},
        {"getOwnerDocument", [](Element a, Element, Attribute) { static_cast<void>(a.getOwnerDocument()); }},
        {"getElementsByTagName",
         [](Element a, Element, Attribute) { static_cast<void>(a.getElementsByTagName(u"b")); }},
        {"getChildElementCount",
         [](Element a, Element, Attribute) { static_cast<void>(a.getChildElementCount()); }},
        {"setAttribute", [](Element a, Element, Attribute) { a.setAttribute(u"id", u"2"); }},
        {"removeAttribute", [](Element a, Element, Attribute) { a.removeAttribute(u"id"); }},
        {"setValue", [](Element, Element, Attribute attribute) { attribute.setValue(u"2"); }},
        {"getOwnerElement",
         [](Element, Element, Attribute attribute) { static_cast<void>(attribute.getOwnerElement()); }},
        {"removeNamedItem", [](Element a, Element, Attribute) { a.getAttributes()->removeNamedItem(u"id"); }},
        {"setNamedItem",
         [](Element a, Element, Attribute attribute) { a.getAttributes()->setNamedItem(&attribute); }},
    };
    for (const auto& [what, call] : kCases) {
        SCOPED_TRACE(what);
        try {
            call(a_, b_, attributes_[0]);
            ADD_FAILURE() << "not refused";
        } catch (const DOMException& exception) {
            EXPECT_EQ(exception.code, DOMException::NOT_SUPPORTED_ERR);
        }
    }
    EXPECT_EQ(Transcode(a_.getAttribute(u"id")), "1");
    EXPECT_EQ(a_.getFirstChild(), nullptr);
}

TEST_F(CompactDom, NormalizingAndReleasingLeaveTheDocumentAsItIs) {
    root_.normalize();
    root_.release();
    EXPECT_EQ(root_.getFirstChild(), &one_);
    EXPECT_EQ(one_.getNextSibling(), &a_);
    EXPECT_EQ(Transcode(one_.getNodeValue()), "one");
}

}  // namespace
}  // namespace tarvex::test
