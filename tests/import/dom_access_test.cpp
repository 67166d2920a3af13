/// Elements, texts and attributes of a parsed document.

#include "import/dom_access.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/document_reader.h"
#include "import/dom_error_handler.h"
#include "support/temp_dir.h"

namespace tarvex::test {
namespace {

using testing::ElementsAre;

class DomAccess : public testing::Test {
  protected:
    /// The document element of a text; valid until the next call.
    const DOMElement& Parse(std::string_view xml) {
        const std::string path = dir_.Write("Doc.xml", xml);
        reader_->StartPlatform();
        const xercesc::DOMNode* document = reader_->Read(path, false, handler_);
        EXPECT_EQ(handler_.Messages(), "");
        return *FirstChildElement(document);
    }

    TempDir dir_;
    ZDOMErrorHandler handler_;
    std::unique_ptr<DocumentReader> reader_ = MakeXercesReader();
};

std::string NameOf(const DOMElement* element) {
    return element != nullptr ? Transcode(element->getNodeName()) : "(none)";
}

std::string IdOf(const DOMElement* element) {
    std::string id = "(none)";
    if (element != nullptr && !GetAttribute(*element, "id", id)) {
        id = "(no id)";
    }
    return id;
}

TEST_F(DomAccess, TagNamesAreComparedExactly) {
    const DOMElement& root = Parse("<Root/>");
    EXPECT_TRUE(HasTagName(root, "Root"));
    EXPECT_FALSE(HasTagName(root, "root"));
    EXPECT_FALSE(HasTagName(root, "Roo"));
    EXPECT_FALSE(HasTagName(root, "Root2"));
    EXPECT_FALSE(HasTagName(root, ""));
}

TEST_F(DomAccess, PrefixesBelongToTheTagName) {
    const DOMElement& root = Parse("<r><n:a/><a/></r>");
    EXPECT_EQ(NameOf(FirstChildElement(&root)), "n:a");
    EXPECT_FALSE(HasTagName(*FirstChildElement(&root), "a"));
}

TEST_F(DomAccess, SiblingWalkSkipsTextsCommentsAndInstructions) {
    const DOMElement& root =
        Parse("<r> text <!-- <x/> --> <?pi?> <a/> <![CDATA[<y/>]]> <!-- --> <b/>tail<c/> </r>");
    std::vector<std::string> names;
    for (const DOMElement* child = FirstChildElement(&root); child != nullptr;
         child = NextSiblingElement(*child)) {
        names.push_back(NameOf(child));
    }
    EXPECT_THAT(names, ElementsAre("a", "b", "c"));
}

TEST_F(DomAccess, ElementWithoutChildElementsHasNoFirstOne) {
    const DOMElement& root = Parse("<r> text <!-- --> </r>");
    EXPECT_EQ(FirstChildElement(&root), nullptr);
    EXPECT_EQ(FirstChildElement(nullptr), nullptr);
}

TEST_F(DomAccess, FirstChildOfTypeLooksAmongDirectChildren) {
    const DOMElement& root = Parse("<r><a>deep</a><!--c-->text</r>");
    EXPECT_EQ(Transcode(FirstChildOfType(root, DOMNode::ELEMENT_NODE)->getNodeName()), "a");
    EXPECT_EQ(Transcode(FirstChildOfType(root, DOMNode::TEXT_NODE)->getNodeValue()), "text");
    EXPECT_EQ(FirstChildOfType(root, DOMNode::COMMENT_NODE), nullptr);  // not kept
    EXPECT_EQ(FirstChildOfType(root, DOMNode::CDATA_SECTION_NODE), nullptr);
}

TEST_F(DomAccess, FindChildElementFindsTheFirstDirectChild) {
    const DOMElement& root =
        Parse(R"(<r><w><b id="grandchild"/></w> <a id="1"/> text <b id="2"/> <a id="3"/></r>)");
    EXPECT_EQ(IdOf(FindChildElement(&root, "a")), "1");
    EXPECT_EQ(IdOf(FindChildElement(&root, "b")), "2");
    EXPECT_EQ(FindChildElement(&root, "r"), nullptr);
    EXPECT_EQ(FindChildElement(&root, "A"), nullptr);
    EXPECT_EQ(FindChildElement(nullptr, "a"), nullptr);
}

TEST_F(DomAccess, FindNextSiblingElementWalksAllOfOneTag) {
    const DOMElement& root =
        Parse(R"(<r><a id="1"/><b><a id="deep"/></b>text<a id="2"/><!-- --><c/><a id="3"/></r>)");
    std::vector<std::string> ids;
    for (const DOMElement* a = FindChildElement(&root, "a"); a != nullptr;
         a = FindNextSiblingElement(*a, "a")) {
        ids.push_back(IdOf(a));
    }
    EXPECT_THAT(ids, ElementsAre("1", "2", "3"));
}

TEST_F(DomAccess, FindGrandchildElementLooksExactlyTwoLevelsDeep) {
    const DOMElement& root = Parse(R"(<r>
        <a id="child"/><x><w><a id="great-grandchild"/></w></x><x><b/> <a id="grandchild"/></x><x><a id="later"/></x>
        <only/><x><w><deep/></w></x></r>)");
    EXPECT_EQ(IdOf(FindGrandchildElement(&root, "a")), "grandchild");
    EXPECT_EQ(FindGrandchildElement(&root, "only"), nullptr);
    EXPECT_EQ(FindGrandchildElement(&root, "deep"), nullptr);
    EXPECT_EQ(FindGrandchildElement(nullptr, "a"), nullptr);
}

TEST_F(DomAccess, NextDescendantWalksInDocumentOrderAndStaysBelowTheRoot) {
    const DOMElement& document = Parse("<d><r><a><b/><c><d/></c></a>text<e/></r><after/></d>");
    const DOMElement& root = *FirstChildElement(&document);
    std::vector<std::string> names;
    for (const DOMElement* e = NextDescendant(root, root); e != nullptr; e = NextDescendant(root, *e)) {
        names.push_back(NameOf(e));
    }
    EXPECT_THAT(names, ElementsAre("a", "b", "c", "d", "e"));
    const DOMElement& leaf = *FindChildElement(&document, "after");
    EXPECT_EQ(NextDescendant(leaf, leaf), nullptr);
}

TEST_F(DomAccess, NextDescendantWalksVeryDeepDocuments) {
    constexpr std::size_t kDepth = 1024;
    std::string xml;
    for (std::size_t i = 0; i < kDepth; ++i) {
        xml += "<e>";
    }
    for (std::size_t i = 0; i < kDepth; ++i) {
        xml += "</e>";
    }
    const DOMElement& root = Parse(xml);
    std::size_t count = 0;
    for (const DOMElement* e = NextDescendant(root, root); e != nullptr; e = NextDescendant(root, *e)) {
        ++count;
    }
    EXPECT_EQ(count, kDepth - 1);
}

struct TextCase {
    const char* xml;
    bool found;
    const char* text;
};

TEST_F(DomAccess, ElementTextIsTheFirstTextOfTheElement) {
    constexpr TextCase kCases[] = {
        {"<e>Amp</e>", true, "Amp"},
        {"<e> Amp\n</e>", true, " Amp\n"},
        {"<e> </e>", true, " "},
        {"<e>\r\nA\rB</e>", true, "\nA\nB"},
        {"<e>&lt;A&gt;&amp;&#65;&#xE4;</e>", true, "<A>&A\xC3\xA4"},
        {"<e></e>", false, ""},
        {"<e/>", false, ""},
        {"<e><a>deep</a></e>", false, ""},
        {"<e><a/>after</e>", true, "after"},
        {"<e>\n  <a/>\n</e>", false, ""},
        {"<e>\n  <a/>text\n</e>", true, "text\n"},
        // a comment, an instruction or a CDATA section ends a text
        {"<e>Am<!-- -->p</e>", true, "Am"},
        {"<e>Am<?pi?>p</e>", true, "Am"},
        {"<e>Am<![CDATA[p]]>lifier</e>", true, "Am"},
        {"<e><!-- -->Amp</e>", true, "Amp"},
        {"<e><![CDATA[Amp]]></e>", false, ""},
        {"<e><![CDATA[A]]>mp</e>", true, "mp"},
    };
    for (const auto& [xml, found, expected] : kCases) {
        SCOPED_TRACE(xml);
        const DOMElement& root = Parse("<r>" + std::string(xml) + "</r>");
        std::string text;
        EXPECT_EQ(GetElementText(*FirstChildElement(&root), text), found);
        EXPECT_EQ(text, expected);
        text = "older";
        EXPECT_EQ(GetChildElementText(root, text, "e"), found);
        EXPECT_EQ(text, expected);
    }
}

TEST_F(DomAccess, EntitiesAreExpandedIntoTheTextAroundThem) {
    const DOMElement& root = Parse(
        R"(<!DOCTYPE r [<!ENTITY mid "plif"><!ENTITY all "Am&mid;ier">]><r><e>Am&mid;ier</e><f a="x&mid;y">&all;</f></r>)");
    std::string text;
    EXPECT_TRUE(GetChildElementText(root, text, "e"));
    EXPECT_EQ(text, "Amplifier");
    EXPECT_TRUE(GetChildElementText(root, text, "f"));
    EXPECT_EQ(text, "Amplifier");
    EXPECT_TRUE(GetChildAttribute(root, text, "f", "a"));
    EXPECT_EQ(text, "xplify");
}

TEST_F(DomAccess, ChildElementTextComesFromTheFirstDirectChild) {
    const DOMElement& root =
        Parse("<r><w><e>deep</e></w><e>one</e><e>two</e><empty/><empty>late</empty></r>");
    std::string text = "older";
    EXPECT_TRUE(GetChildElementText(root, text, "e"));
    EXPECT_EQ(text, "one");
    EXPECT_FALSE(GetChildElementText(root, text, "missing"));
    EXPECT_EQ(text, "");
    text = "older";
    EXPECT_FALSE(GetChildElementText(root, text, "empty"));
    EXPECT_EQ(text, "");
}

TEST_F(DomAccess, AttributeIsFoundEvenWhenEmpty) {
    const DOMElement& root = Parse(R"(<r full=" 0x1F " empty="" umlaut="&#xE4;&#x20AC;"/>)");
    struct Case {
        const char* name;
        bool found;
        const char* value;
    };
    constexpr Case kCases[] = {
        {"full", true, " 0x1F "}, {"empty", true, ""}, {"umlaut", true, "\xC3\xA4\xE2\x82\xAC"},
        {"missing", false, ""},   {"Full", false, ""}, {"", false, ""},
    };
    for (const auto& [name, found, value] : kCases) {
        SCOPED_TRACE(name);
        std::string text = "older";
        EXPECT_EQ(GetAttribute(root, name, text), found);
        EXPECT_EQ(text, value);
    }
}

TEST_F(DomAccess, ChildAttributeNeedsChildAndAttribute) {
    const DOMElement& root =
        Parse(R"(<r id="own"><w><a id="deep"/></w><a id="1"/><a id="2" x="2"/><b id=""/></r>)");
    std::string text = "older";
    EXPECT_TRUE(GetChildAttribute(root, text, "a", "id"));
    EXPECT_EQ(text, "1");
    EXPECT_FALSE(GetChildAttribute(root, text, "a", "x")) << "only the first child counts";
    EXPECT_EQ(text, "");
    text = "older";
    EXPECT_FALSE(GetChildAttribute(root, text, "missing", "id"));
    EXPECT_EQ(text, "");
    EXPECT_TRUE(GetChildAttribute(root, text, "b", "id"));
    EXPECT_EQ(text, "");
}

struct CodingCase {
    const char* utf8;
    std::u16string dom;
};

TEST(Transcode, IsUtf8WhateverTheLocale) {
    const CodingCase kCases[] = {
        {"", u""},
        {"Amp", u"Amp"},
        {"\xC3\xA4", u"\u00E4"},
        {"\xE2\x82\xAC", u"\u20AC"},
        {"\xF0\x9F\x8E\xB5", u"\U0001F3B5"},
        {"\xEF\xBF\xBD", u"\uFFFD"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    };
    for (const auto& [utf8, dom] : kCases) {
        SCOPED_TRACE(utf8);
        const std::basic_string<XMLCh> text(dom.begin(), dom.end());
        EXPECT_EQ(Transcode(text.c_str()), utf8);
        EXPECT_EQ(ToDomText(utf8), text);
    }
    EXPECT_EQ(Transcode(nullptr), "");
}

TEST(Transcode, HalvesOfSurrogatePairsAreReplaced) {
    const std::basic_string<XMLCh> kTexts[] = {
        {0xD83C, 'a'}, {'a', 0xD83C}, {0xDFB5, 'a'}, {0xD83C, 0xD83C, 0xDFB5}};
    const char* kExpected[] = {
        "\xEF\xBF\xBD"
        "a",
        "a\xEF\xBF\xBD",
        "\xEF\xBF\xBD"
        "a",
        "\xEF\xBF\xBD\xF0\x9F\x8E\xB5"};
    for (std::size_t i = 0; i < std::size(kTexts); ++i) {
        EXPECT_EQ(Transcode(kTexts[i].c_str()), kExpected[i]);
    }
}

TEST(ToDomText, BytesThatAreNoUtf8AreReplaced) {
    const std::pair<const char*, std::u16string> kCases[] = {
        {"\xE4", u"\uFFFD"},  // Latin-1
        {"a\xE4"
         "b",
         u"a\uFFFDb"},
        {"\x80", u"\uFFFD"},                      // continuation alone
        {"\xC0\x80", u"\uFFFD\uFFFD"},            // overlong
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},  // half of a surrogate pair
        {"\xE2\x82", u"\uFFFD\uFFFD"},            // cut off
        {"\xFF", u"\uFFFD"},
    };
    for (const auto& [bytes, expected] : kCases) {
        SCOPED_TRACE(bytes);
        EXPECT_EQ(ToDomText(bytes), std::basic_string<XMLCh>(expected.begin(), expected.end()));
    }
}

TEST(DomTextEquals, ComparesWholeTexts) {
    const std::basic_string<XMLCh> text = ToDomText("TypeID");
    EXPECT_TRUE(DomTextEquals(text.c_str(), "TypeID"));
    EXPECT_FALSE(DomTextEquals(text.c_str(), "TypeI"));
    EXPECT_FALSE(DomTextEquals(text.c_str(), "TypeIDs"));
    EXPECT_FALSE(DomTextEquals(text.c_str(), "typeid"));
}

}  // namespace
}  // namespace tarvex::test
