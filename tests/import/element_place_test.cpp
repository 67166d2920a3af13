/// Where elements stand in their file.

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "import/xml/document_reader.h"
#include "import/xml/dom_error_handler.h"
#include "support/temp_dir.h"

namespace tarvex::test::element_place_test {
namespace {

/// All elements of a document with their places, such as "r 1:1, a 2:3".
std::string PlacesIn(std::string_view xml, bool validate = false, const Vocabulary& words = {}) {
    const TempDir dir;
    ZDOMErrorHandler handler;
    const std::unique_ptr<DocumentReader> reader = MakeXercesReader(words);
    dir.Write("part.xml", "\n\n  <part/>\n");
    reader->StartPlatform();
    const Element* document = reader->Read(dir.Write("Doc.xml", xml), validate, handler);
    EXPECT_EQ(handler.Messages(), "");
    EXPECT_EQ(document->line, 0U);
    std::string places;
    for (const Element* element = NextDescendant(*document, *document); element != nullptr;
         element = NextDescendant(*document, *element)) {
        places += places.empty() ? "" : ", ";
        places.append(element->name).append(" ").append(std::to_string(element->line));
        places.append(":").append(std::to_string(element->column));
    }
    return places;
}

struct Case {
    const char* xml;
    const char* places;
};

constexpr Case kCases[] = {
    {"<r/>", "r 1:1"},
    {"<r><a/><b/></r>", "r 1:1, a 1:4, b 1:8"},
    {"<r><a><b></b></a><c/></r>", "r 1:1, a 1:4, b 1:7, c 1:18"},
    {"<r>\n  <a/>\n\n\t<b/>\n</r>", "r 1:1, a 2:3, b 4:2"},
    {"<r>\r\n  <a/>\r\n <b/></r>", "r 1:1, a 2:3, b 3:2"},
    {"\n <r/>", "r 2:2"},
    // where the start tag begins, however long it is
    {"<r\n  id='1'\n  x='2'\n><a\n/><b/></r>", "r 1:1, a 4:2, b 5:3"},
    {"<r><a id='x>y'/><b/></r>", "r 1:1, a 1:4, b 1:17"},
    // behind texts, comments and the like
    {"<r>text<a/>more\ntext <b/></r>", "r 1:1, a 1:8, b 2:6"},
    {"<r><!-- <x/>\n --><a/></r>", "r 1:1, a 2:5"},
    {"<r><?pi <x/>?><a/></r>", "r 1:1, a 1:15"},
    {"<r><![CDATA[\n<x/>]]><a/></r>", "r 1:1, a 2:8"},
    {"<r>&lt;&#65;<a/></r>", "r 1:1, a 1:13"},
    // a character is one column, whatever it takes in the file; one beyond 16 bits is two
    {"<r>\xC3\xA4\xE2\x82\xAC<a/></r>", "r 1:1, a 1:6"},
    {"<r>\xF0\x9F\x8E\xB5<a/></r>", "r 1:1, a 1:6"},
    // the prolog
    {"<?xml version='1.0'?>\n<r/>", "r 2:1"},
    {"<?xml version='1.0'?><r/>", "r 1:22"},
    {"<!-- one -->\n<!-- two --><r/>", "r 2:13"},
    {"<!DOCTYPE r [<!ELEMENT r ANY>]>\n<r/>", "r 2:1"},
    // what an entity holds stands where it is used
    {"<!DOCTYPE r [<!ENTITY e \"\n<x/>\n<y/>\">]>\n<r>\n <a/>&e;<b/></r>",
     "r 4:1, a 5:2, x 5:6, y 5:6, b 5:9"},
    {"<!DOCTYPE r [<!ENTITY e SYSTEM \"part.xml\">]>\n<r>\n<a/>&e;\n<b/></r>",
     "r 2:1, a 3:1, part 3:5, b 4:1"},
    {"<!DOCTYPE r [<!ENTITY t \"text\">]>\n<r>&t;<a/>&t;&t;<b/></r>", "r 2:1, a 2:7, b 2:17"},
};

TEST(ElementPlace, IsWhereTheStartTagBegins) {
    for (const auto& [xml, places] : kCases) {
        EXPECT_EQ(PlacesIn(xml), places) << xml;
    }
}

TEST(ElementPlace, IsTheSameInAValidatedDocument) {
    EXPECT_EQ(PlacesIn("<!DOCTYPE r [<!ELEMENT r (a,b)><!ELEMENT a (#PCDATA)><!ELEMENT b EMPTY>]>\n"
                       "<r>\n  <a>text</a>\n  <b/>\n</r>",
                       true),
              "r 2:1, a 3:3, b 4:3");
}

TEST(ElementPlace, IsRightBehindVeryLongTexts) {
    // longer than anything that the scanner hands over at once, and read by nobody
    Vocabulary words;
    for (const char* element : {"r", "a", "b"}) {
        words.Add(element);
    }
    const std::string text(300'000, 't');
    EXPECT_EQ(PlacesIn("<r>" + text + "<a/>\n" + std::string(300'000, ' ') + "<b/></r>", false, words),
              "r 1:1, a 1:300004, b 2:300001");
}

}  // namespace
}  // namespace tarvex::test::element_place_test
