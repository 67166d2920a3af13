/// Elements, texts and attributes of a parsed document.

#include "import/xml/element.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/xml/document_reader.h"
#include "import/xml/dom_error_handler.h"
#include "support/temp_dir.h"

namespace tarvex::test::element_test {
namespace {

using testing::ElementsAre;

class Elements : public testing::Test {
  protected:
    /// The document element of a text; valid until the next call.
    const Element& Parse(std::string_view xml) {
        const std::string path = dir_.Write("Doc.xml", xml);
        reader_->StartPlatform();
        const Element* document = reader_->Read(path, false, handler_);
        EXPECT_EQ(handler_.Messages(), "");
        return *FirstChildElement(document);
    }

    TempDir dir_;
    ZDOMErrorHandler handler_;
    std::unique_ptr<DocumentReader> reader_ = MakeXercesReader();
};

std::string NameOf(const Element* element) {
    return element != nullptr ? std::string(element->name) : "(none)";
}

std::string IdOf(const Element* element) {
    std::string id = "(none)";
    if (element != nullptr && !GetAttribute(*element, "id", id)) {
        id = "(no id)";
    }
    return id;
}

TEST_F(Elements, TagNamesAreComparedExactly) {
    const Element& root = Parse("<Root/>");
    EXPECT_TRUE(HasTagName(root, "Root"));
    EXPECT_FALSE(HasTagName(root, "root"));
    EXPECT_FALSE(HasTagName(root, "Roo"));
    EXPECT_FALSE(HasTagName(root, "Root2"));
    EXPECT_FALSE(HasTagName(root, ""));
}

TEST_F(Elements, PrefixesBelongToTheTagName) {
    const Element& root = Parse("<r><n:a/><a/></r>");
    EXPECT_EQ(NameOf(FirstChildElement(&root)), "n:a");
    EXPECT_FALSE(HasTagName(*FirstChildElement(&root), "a"));
}

TEST_F(Elements, SiblingWalkSkipsTextsCommentsAndInstructions) {
    const Element& root =
        Parse("<r> text <!-- <x/> --> <?pi?> <a/> <![CDATA[<y/>]]> <!-- --> <b/>tail<c/> </r>");
    std::vector<std::string> names;
    for (const Element* child = FirstChildElement(&root); child != nullptr;
         child = NextSiblingElement(*child)) {
        names.push_back(NameOf(child));
    }
    EXPECT_THAT(names, ElementsAre("a", "b", "c"));
}

TEST_F(Elements, ElementWithoutChildElementsHasNoFirstOne) {
    const Element& root = Parse("<r> text <!-- --> </r>");
    EXPECT_EQ(FirstChildElement(&root), nullptr);
    EXPECT_EQ(FirstChildElement(nullptr), nullptr);
}

TEST_F(Elements, FindChildElementFindsTheFirstDirectChild) {
    const Element& root =
        Parse(R"(<r><w><b id="grandchild"/></w> <a id="1"/> text <b id="2"/> <a id="3"/></r>)");
    EXPECT_EQ(IdOf(FindChildElement(&root, "a")), "1");
    EXPECT_EQ(IdOf(FindChildElement(&root, "b")), "2");
    EXPECT_EQ(FindChildElement(&root, "r"), nullptr);
    EXPECT_EQ(FindChildElement(&root, "A"), nullptr);
    EXPECT_EQ(FindChildElement(nullptr, "a"), nullptr);
}

TEST_F(Elements, FindNextSiblingElementWalksAllOfOneTag) {
    const Element& root =
        Parse(R"(<r><a id="1"/><b><a id="deep"/></b>text<a id="2"/><!-- --><c/><a id="3"/></r>)");
    std::vector<std::string> ids;
    for (const Element* a = FindChildElement(&root, "a"); a != nullptr; a = FindNextSiblingElement(*a, "a")) {
        ids.push_back(IdOf(a));
    }
    EXPECT_THAT(ids, ElementsAre("1", "2", "3"));
}

TEST_F(Elements, FindGrandchildElementLooksExactlyTwoLevelsDeep) {
    const Element& root = Parse(R"(<r>
        <a id="child"/><x><w><a id="great-grandchild"/></w></x><x><b/> <a id="grandchild"/></x><x><a id="later"/></x>
        <only/><x><w><deep/></w></x></r>)");
    EXPECT_EQ(IdOf(FindGrandchildElement(&root, "a")), "grandchild");
    EXPECT_EQ(FindGrandchildElement(&root, "only"), nullptr);
    EXPECT_EQ(FindGrandchildElement(&root, "deep"), nullptr);
    EXPECT_EQ(FindGrandchildElement(nullptr, "a"), nullptr);
}

TEST_F(Elements, NextDescendantWalksInDocumentOrderAndStaysBelowTheRoot) {
    const Element& document = Parse("<d><r><a><b/><c><d/></c></a>text<e/></r><after/></d>");
    const Element& root = *FirstChildElement(&document);
    std::vector<std::string> names;
    for (const Element* e = NextDescendant(root, root); e != nullptr; e = NextDescendant(root, *e)) {
        names.push_back(NameOf(e));
    }
    EXPECT_THAT(names, ElementsAre("a", "b", "c", "d", "e"));
    const Element& leaf = *FindChildElement(&document, "after");
    EXPECT_EQ(NextDescendant(leaf, leaf), nullptr);
}

TEST_F(Elements, NextDescendantWalksVeryDeepDocuments) {
    constexpr std::size_t kDepth = 1024;
    std::string xml;
    for (std::size_t i = 0; i < kDepth; ++i) {
        xml += "<e>";
    }
    for (std::size_t i = 0; i < kDepth; ++i) {
        xml += "</e>";
    }
    const Element& root = Parse(xml);
    std::size_t count = 0;
    for (const Element* e = NextDescendant(root, root); e != nullptr; e = NextDescendant(root, *e)) {
        ++count;
    }
    EXPECT_EQ(count, kDepth - 1);
}

struct TextCase {
    const char* xml;
    bool found;
    const char* text;
};

TEST_F(Elements, ElementTextIsTheFirstTextOfTheElement) {
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
        const Element& root = Parse("<r>" + std::string(xml) + "</r>");
        std::string text;
        EXPECT_EQ(GetElementText(*FirstChildElement(&root), text), found);
        EXPECT_EQ(text, expected);
        text = "older";
        EXPECT_EQ(GetChildElementText(root, "e", text), found);
        EXPECT_EQ(text, expected);
    }
}

TEST_F(Elements, EntitiesAreExpandedIntoTheTextAroundThem) {
    const Element& root = Parse(
        R"(<!DOCTYPE r [<!ENTITY mid "plif"><!ENTITY all "Am&mid;ier">]><r><e>Am&mid;ier</e><f a="x&mid;y">&all;</f></r>)");
    std::string text;
    EXPECT_TRUE(GetChildElementText(root, "e", text));
    EXPECT_EQ(text, "Amplifier");
    EXPECT_TRUE(GetChildElementText(root, "f", text));
    EXPECT_EQ(text, "Amplifier");
    EXPECT_TRUE(GetChildAttribute(root, "f", "a", text));
    EXPECT_EQ(text, "xplify");
}

TEST_F(Elements, ChildElementTextComesFromTheFirstDirectChild) {
    const Element& root = Parse("<r><w><e>deep</e></w><e>one</e><e>two</e><empty/><empty>late</empty></r>");
    std::string text = "older";
    EXPECT_TRUE(GetChildElementText(root, "e", text));
    EXPECT_EQ(text, "one");
    EXPECT_FALSE(GetChildElementText(root, "missing", text));
    EXPECT_EQ(text, "");
    text = "older";
    EXPECT_FALSE(GetChildElementText(root, "empty", text));
    EXPECT_EQ(text, "");
}

TEST_F(Elements, AttributeIsFoundEvenWhenEmpty) {
    const Element& root = Parse(R"(<r full=" 0x1F " empty="" umlaut="&#xE4;&#x20AC;"/>)");
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

TEST_F(Elements, ChildAttributeNeedsChildAndAttribute) {
    const Element& root =
        Parse(R"(<r id="own"><w><a id="deep"/></w><a id="1"/><a id="2" x="2"/><b id=""/></r>)");
    std::string text = "older";
    EXPECT_TRUE(GetChildAttribute(root, "a", "id", text));
    EXPECT_EQ(text, "1");
    EXPECT_FALSE(GetChildAttribute(root, "a", "x", text)) << "only the first child counts";
    EXPECT_EQ(text, "");
    text = "older";
    EXPECT_FALSE(GetChildAttribute(root, "missing", "id", text));
    EXPECT_EQ(text, "");
    EXPECT_TRUE(GetChildAttribute(root, "b", "id", text));
    EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace tarvex::test::element_test
