/// What a parser with a vocabulary keeps of a document.

#include "import/xml/element_builder.h"

#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/xml/document_reader.h"
#include "import/xml/dom_error_handler.h"
#include "import/xml/element.h"
#include "support/temp_dir.h"

namespace tarvex::test::element_builder_test {
namespace {

using testing::HasSubstr;

/// The words of a text such as "r e' a[id,unit]": the text of "e" is read, and two attributes of "a".
Vocabulary WordsOf(std::string_view text) {
    Vocabulary words;
    while (!text.empty()) {
        std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const std::string_view name = word.substr(0, word.find_first_of("['"));
        words.Add(name, word.ends_with('\'') ? ElementText::Read : ElementText::Unread);
        word.remove_prefix(name.size());
        while (word.starts_with('[') || word.starts_with(',')) {
            const std::string_view attribute = word.substr(1, word.find_first_of(",]", 1) - 1);
            words.Add(name, ElementText::Unread, {attribute});
            word.remove_prefix(attribute.size() + 1);
        }
    }
    return words;
}

/// What stands in an element, such as "'text' a[id=1]('one') b": its text first.
std::string ContentOf(const Element& element) {
    std::string outline = element.text.empty() ? "" : "'" + std::string(element.text) + "'";
    for (const Element* child = element.firstChild; child != nullptr; child = child->nextSibling) {
        EXPECT_EQ(child->parent, &element);
        outline += outline.empty() ? "" : " ";
        outline += child->name;
        std::string attributes;
        for (const auto& [name, value] : child->attributes) {
            attributes += attributes.empty() ? "" : " ";
            attributes.append(name).append("=").append(value);
        }
        outline += attributes.empty() ? "" : "[" + attributes + "]";
        const std::string below = ContentOf(*child);
        outline += below.empty() ? "" : "(" + below + ")";
    }
    return outline;
}

/// A document that is parsed for the words of a vocabulary.
class Document {
  public:
    Document(std::string_view xml, std::string_view words, bool validate = false)
        : reader_(MakeXercesReader(WordsOf(words))) {
        reader_->StartPlatform();
        document_ = reader_->Read(dir_.Write("Doc.xml", xml), validate, handler_);
    }

    std::string Outline() const { return ContentOf(*document_); }
    const Element* Root() const { return FirstChildElement(document_); }
    std::size_t CountOfComplaints(std::string_view text) const {
        std::size_t count = 0;
        const std::string complaints = handler_.Messages();
        for (std::size_t at = 0; (at = complaints.find(text, at)) != std::string::npos; ++at) {
            ++count;
        }
        return count;
    }
    std::string Complaints() const {
        std::string complaints = handler_.Messages();
        for (std::size_t at = 0; (at = complaints.find(dir_.Path())) != std::string::npos;) {
            complaints.replace(at, dir_.Path().size(), "@DIR@");
        }
        return complaints;
    }

  private:
    TempDir dir_;
    ZDOMErrorHandler handler_;
    std::unique_ptr<DocumentReader> reader_;
    const Element* document_ = nullptr;
};

struct Case {
    const char* xml;
    const char* words;
    const char* outline;
};

template <std::size_t kCount>
void CheckOutlines(const Case (&cases)[kCount], std::string_view documentType = "", bool validate = false) {
    for (const auto& [xml, words, outline] : cases) {
        SCOPED_TRACE(std::string(xml) + " for " + words);
        const Document document(std::string(documentType) + xml, words, validate);
        EXPECT_EQ(document.Complaints(), "");
        EXPECT_EQ(document.Outline(), outline);
    }
}

TEST(ElementBuilder, KeepsWordsAndWhatLiesAboveThem) {
    constexpr Case kCases[] = {
        {"<r><a/><b/></r>", "r a b", "r(a b)"},
        {"<r><x/></r>", "a", ""},
        {"<r><x><y/></x><a/></r>", "r a", "r(a)"},
        {"<r><x/><a/><y/><b/><z/></r>", "r a b", "r(a b)"},
        {"<a><a><a/></a><a/></a>", "a", "a(a(a) a)"},
        {"<r><A/><aa/><n:a/></r>", "r a", "r"},
        // a word below others that are none
        {"<r><x><a/></x></r>", "r a", "r(x(a))"},
        {"<r><a/></r>", "a", "r(a)"},
        {"<r><x><y><z><a/></z><w/></y></x></r>", "r a", "r(x(y(z(a))))"},
        {"<r><x><a/></x><x/><x><y/><b/></x></r>", "r a b", "r(x(a) x(b))"},
        {"<r><x><a/><y/><b/></x><a/></r>", "r a b", "r(x(a b) a)"},
        {"<r><a><x><b/></x><x/></a><b/></r>", "r a b", "r(a(x(b)) b)"},
        {"<r><x><y><a/></y><y/><y><a/><a/></y></x></r>", "a", "r(x(y(a) y(a a)))"},
        {"<r><x id='1'>text<a/>more</x>end</r>", "a", "r(x(a))"},
    };
    CheckOutlines(kCases);
}

TEST(ElementBuilder, KeepsTheAttributesThatAreNamedInTheOrderOfTheDocument) {
    constexpr Case kCases[] = {
        {"<a id='1'/>", "a", "a"},
        {"<a id='1'/>", "a[id]", "a[id=1]"},
        {"<r><x><a id='1'/></x></r>", "r[id] a[id]", "r(x(a[id=1]))"},
        {"<a id=''/>", "a[id]", "a[id=]"},
        {"<a/>", "a[id]", "a"},
        {"<a Id='1' id2='2' i='3'/>", "a[id]", "a"},
        {"<a unit='dB' x='1' id='7'/>", "a[id,unit]", "a[unit=dB id=7]"},
        {"<a x='1' y='2' z='3' id='4'/>", "a[id]", "a[id=4]"},
        {"<r id='1'><a id='2' x='3'/><b id='4' x='5'/></r>", "r a[id] b[x]", "r(a[id=2] b[x=5])"},
        {"<a id=' 1\t2&#10;&lt;&#xE4;&apos; '/>", "a[id]", "a[id= 1 2\n<\xC3\xA4' ]"},
    };
    CheckOutlines(kCases);
}

TEST(ElementBuilder, ElementOfWhichNoAttributeIsKeptHasNone) {
    const Document document("<a x='1'/>", "a[id]");
    ASSERT_NE(document.Root(), nullptr);
    EXPECT_TRUE(document.Root()->attributes.empty());
}

TEST(ElementBuilder, KeepsTheTextsThatAreRead) {
    constexpr Case kCases[] = {
        {"<r><e>Amp</e><a>Amp</a><x>Amp</x></r>", "r e' a", "r(e('Amp') a)"},
        {"<r>Am<a>p</a>lifier</r>", "r a'", "r(a('p'))"},
        {"<r>Am<a>p</a>lifier</r>", "r' a", "r('Am' a)"},
        {"<e> Amp\r\n</e>", "e'", "e(' Amp\n')"},
        {"<e>&#xE4;\xE2\x82\xAC&#x1F3B5;</e>", "e'", "e('\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5')"},
        {"<e></e>", "e'", "e"},
        // the text below an element that is no word belongs to nobody
        {"<e>Am<x>pli</x>fier</e>", "e'", "e('Am')"},
        {"<e>Am<x>pli<e>fi</e>e</x>r</e>", "e'", "e('Am' x(e('fi')))"},
    };
    CheckOutlines(kCases);
}

TEST(ElementBuilder, MarkupPartsTexts) {
    constexpr Case kCases[] = {
        {"<e>Am<!-- -->p</e>", "e'", "e('Am')"},
        {"<e>Am<?pi?>p</e>", "e'", "e('Am')"},
        {"<e>Am<a/>p</e>", "e' a", "e('Am' a)"},
        {"<e>Am<x/>p</e>", "e' a", "e('Am')"},
        {"<e>Am<x></x>p</e>", "e' a", "e('Am')"},
        {"<e>Am<!-- --><?pi?>p</e>", "e'", "e('Am')"},
        {"<e><!-- -->Amp<?pi?></e>", "e'", "e('Amp')"},
        // a CDATA section is no text
        {"<e>Am<![CDATA[p]]>lifier</e>", "e'", "e('Am')"},
        {"<e><![CDATA[Amp]]></e>", "e'", "e"},
        {"<e><![CDATA[A]]>mp</e>", "e'", "e('mp')"},
        {"<e>Am<![CDATA[]]>p</e>", "e'", "e('Am')"},
    };
    CheckOutlines(kCases);
}

TEST(ElementBuilder, WhiteSpaceBesideChildElementsVanishes) {
    constexpr Case kCases[] = {
        {"<e> </e>", "e'", "e(' ')"},
        {"<e>\n\t </e>", "e'", "e('\n\t ')"},
        {"<e> </e>", "e", "e"},
        {"<e> <!-- --> </e>", "e'", "e(' ')"},
        {"<e> <!-- -->Amp</e>", "e'", "e(' ')"},
        {"<e> <!-- -->Amp<!-- -->lifier</e>", "e'", "e(' ')"},
        {"<e> <!-- -->Amp<!-- -->lifier<a/></e>", "e' a", "e('Amp' a)"},
        {"<e> <![CDATA[x]]> </e>", "e'", "e(' ')"},
        {"<e> <a/></e>", "e' a", "e(a)"},
        {"<e><a/> </e>", "e' a", "e(a)"},
        {"<e> <a/> <a/> </e>", "e' a", "e(a a)"},
        {"<e> <a> </a> </e>", "e' a'", "e(a(' '))"},
        {"<e>&#32;<a/>&#9;</e>", "e' a", "e(a)"},
        {"<e>\xC2\xA0<a/></e>", "e' a", "e('\xC2\xA0' a)"},
        {"<e> Am <a/> p </e>", "e' a", "e(' Am ' a)"},
        // beside one that becomes no node, too
        {"<e> <x/></e>", "e' a", "e"},
        {"<e><x/> </e>", "e' a", "e"},
        {"<e> <x> </x> </e>", "e' a", "e"},
        {"<e> <x> <a/> </x> </e>", "e' a", "e(x(a))"},
        // comments between them change nothing
        {"<e> <!-- --> <a/></e>", "e' a", "e(a)"},
        {"<e><a/> <!-- --> </e>", "e' a", "e(a)"},
        {"<e> <!-- --> <x/> <!-- --> </e>", "e' a", "e"},
        {"<e> <!-- -->Amp<!-- --> <x/></e>", "e' a", "e('Amp')"},
        {"<e> <!-- -->Am<!-- --> <!-- -->p<!-- --> <a/>lifier</e>", "e' a", "e('Am' a)"},
        {"<e>Am<!-- --> <x/>p</e>", "e' a", "e('Am')"},
    };
    CheckOutlines(kCases);
}

TEST(ElementBuilder, EntitiesAndReferencesAreOneTextWithTheTextAroundThem) {
    constexpr const char* kEntities = R"(<!DOCTYPE e [
        <!ENTITY p "plif"><!ENTITY none ""><!ENTITY blank " "><!ENTITY twice "&p;&p;">
        <!ENTITY element "<a id='1'>in</a>"><!ENTITY mixed "x<a/>y"><!ENTITY parted "pl<!-- -->if">]>)";
    constexpr Case kCases[] = {
        {"<e>Am&p;ier</e>", "e'", "e('Amplifier')"},
        {"<e>&p;</e>", "e'", "e('plif')"},
        {"<e>Am&twice;ier</e>", "e'", "e('Amplifplifier')"},
        {"<e>Am&none;p</e>", "e'", "e('Amp')"},
        {"<e>&none;</e>", "e'", "e"},
        {"<e>A&#109;p &lt;&amp;&gt;</e>", "e'", "e('Amp <&>')"},
        {"<e> &blank; </e>", "e'", "e('   ')"},
        {"<e>Am&parted;ier</e>", "e'", "e('Ampl')"},
        {"<e>&element;</e>", "e' a[id]'", "e(a[id=1]('in'))"},
        {"<e> &element; </e>", "e' a", "e(a)"},
        {"<e> &element; </e>", "e'", "e"},
        {"<e>&blank;&element;&blank;</e>", "e' a", "e(a)"},
        {"<e>Am&mixed;p</e>", "e' a", "e('Amx' a)"},
        {"<e>Am&mixed;p</e>", "e'", "e('Amx')"},
        {"<e><x>Am&mixed;p</x></e>", "e' a", "e(x(a))"},
        {"<e id='Am&p;ier'/>", "e[id]", "e[id=Amplifier]"},
    };
    CheckOutlines(kCases, kEntities);
}

TEST(ElementBuilder, DeclaredDefaultsAreAttributesLikeOthers) {
    constexpr const char* kDefaults =
        R"(<!DOCTYPE r [<!ATTLIST a id CDATA "7" x CDATA "8" y CDATA #IMPLIED n NMTOKEN #IMPLIED>]>)";
    constexpr Case kCases[] = {
        {"<r><a/></r>", "r a[id]", "r(a[id=7])"},        {"<r><a/></r>", "r a", "r(a)"},
        {"<r><a id='1'/></r>", "r a[id]", "r(a[id=1])"}, {"<r><a y='9'/></r>", "r a[x,y]", "r(a[y=9 x=8])"},
        {"<r><a n=' 5 '/></r>", "r a[n]", "r(a[n=5])"},  {"<r><a/><b/></r>", "", "r(a[id=7 x=8] b)"},
    };
    CheckOutlines(kCases, kDefaults);
}

TEST(ElementBuilder, WhiteSpaceThatTheDeclarationsCallIgnorableIsTreatedAlike) {
    constexpr const char* kDeclarations =
        R"(<!DOCTYPE r [<!ELEMENT r (a|x)*><!ELEMENT a (#PCDATA)><!ELEMENT x (a*)>]>)";
    constexpr Case kCases[] = {
        {"<r> <a> </a> </r>", "r' a'", "r(a(' '))"},
        {"<r> <x/> </r>", "r'", "r"},
        {"<r> </r>", "r'", "r(' ')"},
        {"<r> <x> <a>Amp</a> </x> </r>", "r' a'", "r(x(a('Amp')))"},
        {"<r>\n <!-- --> <a/></r>", "", "r(a)"},
    };
    CheckOutlines(kCases, kDeclarations, true);
    CheckOutlines(kCases, kDeclarations, false);
}

TEST(ElementBuilder, WithoutWordsEverythingIsKept) {
    constexpr Case kCases[] = {
        {"<r id='1'> <x b='2' a=''>text</x> tail</r>", "", "r[id=1](' tail' x[b=2 a=]('text'))"},
        {"<r><x><y><z/></y></x></r>", "", "r(x(y(z)))"},
        {"<r> <x/> </r>", "", "r(x)"},
        {"<r>A<!-- -->m<![CDATA[p]]></r>", "", "r('A')"},
    };
    CheckOutlines(kCases);
}

std::string Repeated(std::string_view text, std::size_t count) {
    std::string result;
    while (count-- > 0) {
        result += text;
    }
    return result;
}

TEST(ElementBuilder, TextsOfAllowedLengthStayWhole) {
    const std::string text = Repeated("p\xC3\xA4", 2048);  // 4,096 characters
    EXPECT_EQ(Document("<r><e>" + text + "</e><x>" + text + "</x></r>", "r e'").Outline(),
              "r(e('" + text + "'))");
    EXPECT_EQ(Document("<e>" + Repeated("p&amp;", 2048) + "</e>", "e'").Outline(),
              "e('" + Repeated("p&", 2048) + "')");
}

TEST(ElementBuilder, LongerTextsAreCutWithOneWarningEach) {
    // the longest is more than the scanner hands over at once
    for (const std::size_t size : {4097UL, 100'000UL, 3'000'000UL}) {
        SCOPED_TRACE(size);
        const Document document("<r><e>" + std::string(size, 'a') + "</e><x>" + std::string(size, 'b') +
                                    "</x><e>c<!---->" + std::string(size, 'd') + "</e></r>",
                                "r e'");
        EXPECT_EQ(document.Outline(), "r(e('" + std::string(4096, 'a') + "') e('c'))");
        EXPECT_EQ(document.CountOfComplaints("the text of the element is cut to 4096 characters"), 2U);
    }
}

TEST(ElementBuilder, AttributesThatAreKeptAreCutLikewise) {
    for (const std::size_t size : {4096UL, 4097UL, 300'000UL}) {
        SCOPED_TRACE(size);
        const std::string value(size, 'a');
        const Document document("<r><e id='" + value + "' x='" + value + "'/><e id='" + value + "'/></r>",
                                "r e[id]");
        const std::string kept = "e[id=" + std::string(4096, 'a') + "]";
        EXPECT_EQ(document.Outline(), "r(" + kept + " " + kept + ")");
        EXPECT_EQ(document.CountOfComplaints("an attribute of the element is cut to 4096 characters"),
                  size == 4096 ? 0U : 2U);
    }
}

TEST(ElementBuilder, LongWhiteSpaceIsNoLongText) {
    const std::string blanks(5000, ' ');
    const std::string kept(4096, ' ');
    const std::pair<std::string, std::string> cases[] = {
        {"<r>" + blanks + "<a/>" + blanks + "</r>", "r(a)"},
        {"<r>" + blanks + "</r>", "r('" + kept + "')"},
        {"<r>Amp" + blanks + "<a/></r>", "r('Amp" + std::string(4093, ' ') + "' a)"},
        {"<r>" + blanks + "Amp</r>", "r('" + kept + "')"},
    };
    std::size_t place = 0;
    for (const auto& [xml, outline] : cases) {
        const Document document(xml, "r' a");
        EXPECT_EQ(document.Outline(), outline);
        EXPECT_EQ(document.CountOfComplaints("is cut to"), place++ < 2 ? 0U : 1U);
    }
}

TEST(ElementBuilder, CutLeavesNoHalfOfACharacter) {
    const std::string clef = "\xF0\x9D\x84\x9E";  // two units of UTF-16
    const Document document("<r>b" + Repeated(clef, 2048) + "</r>", "r'");
    const Document attribute("<r id='a" + Repeated(clef, 2048) + "'/>", "r[id]");
    EXPECT_EQ(document.Outline(), "r('b" + Repeated(clef, 2047) + "')");
    EXPECT_EQ(attribute.Outline(), "r[id=a" + Repeated(clef, 2047) + "]");
}

std::size_t CountBelow(const Element& root) {
    std::size_t count = 0;
    for (const Element* e = NextDescendant(root, root); e != nullptr; e = NextDescendant(root, *e)) {
        ++count;
    }
    return count;
}

TEST(ElementBuilder, DeepDocumentsAreKept) {
    constexpr std::size_t kDepth = 1022;  // with the root and the one at the bottom as deep as may be
    struct DepthCase {
        const char* what;
        const char* words;
        std::size_t count;
    };
    constexpr DepthCase kCases[] = {
        {"words", "r a", kDepth},
        {"no words", "r", 0},
        {"a word at the bottom", "r b", kDepth + 1},
        {"everything", "", kDepth + 1},
    };
    const std::string xml = "<r>" + Repeated("<a>", kDepth) + "<b/>" + Repeated("</a>", kDepth) + "</r>";
    for (const auto& [what, words, count] : kCases) {
        SCOPED_TRACE(what);
        const Document document(xml, words);
        ASSERT_NE(document.Root(), nullptr);
        EXPECT_EQ(CountBelow(*document.Root()), count);
        EXPECT_EQ(document.Complaints(), "");
    }
}

TEST(ElementBuilder, DeeperDocumentsAreGivenUp) {
    for (const std::size_t depth : {1023UL, 100'000UL}) {
        for (const char* words : {"r", "r a"}) {
            const Document document(
                "<r>" + Repeated("<a>", depth) + "<b/>" + Repeated("</a>", depth) + "</r>", words);
            EXPECT_EQ(document.CountOfComplaints(
                          "Message: the elements of the document are more than 1024 levels deep\n"),
                      1U);
        }
    }
}

TEST(ElementBuilder, VeryManySiblingsAreKeptInOrder) {
    constexpr std::size_t kPairs = 100'000;
    const Document document("<r>" + Repeated("<a/><x/>", kPairs) + "<b/></r>", "r a b");
    ASSERT_NE(document.Root(), nullptr);
    std::size_t count = 0;
    const Element* child = FirstChildElement(document.Root());
    for (; child != nullptr && HasTagName(*child, "a"); child = NextSiblingElement(*child)) {
        ++count;
    }
    EXPECT_EQ(count, kPairs);
    ASSERT_NE(child, nullptr);
    EXPECT_TRUE(HasTagName(*child, "b"));
    EXPECT_EQ(child->nextSibling, nullptr);
}

TEST(ElementBuilder, NextDocumentOfAReaderHasNothingOfTheOneBefore) {
    const TempDir dir;
    const std::unique_ptr<DocumentReader> reader = MakeXercesReader(WordsOf("r a'"));
    reader->StartPlatform();
    for (const auto& [xml, outline] : {std::pair("<r><a>one</a>", ""), std::pair("<a>two</a>", "a('two')")}) {
        SCOPED_TRACE(xml);
        ZDOMErrorHandler handler;
        const Element* document = reader->Read(dir.Write("Doc.xml", xml), false, handler);
        if (!handler.HasError()) {
            EXPECT_EQ(ContentOf(*document), outline);
        }
    }
    reader->Release();
}

/// `about` is what the complaint must speak of; with null there must be none.
struct FaultCase {
    const char* what;
    const char* xml;
    const char* about;
};

TEST(ElementBuilder, WhatIsNotKeptIsValidatedNevertheless) {
    constexpr const char* kDeclarations = R"(<!DOCTYPE r [
        <!ELEMENT r (a|x)*><!ELEMENT a EMPTY><!ELEMENT x ANY><!ELEMENT y (x, x)>
        <!ATTLIST a id ID #IMPLIED ref IDREF #IMPLIED>
        <!ATTLIST x id ID #IMPLIED ref IDREF #IMPLIED>]>)";
    constexpr FaultCase kCases[] = {
        {"nothing", "<r><x><y><x/><x>text</x></y></x></r>", nullptr},
        {"unknown element", "<r><x><odd/></x></r>", "'odd'"},
        {"unknown element far down", "<r><x><x><x><odd/></x></x></x></r>", "'odd'"},
        {"undeclared attribute", "<r><x odd='1'/></r>", "'odd'"},
        {"element that lacks another", "<r><x><y><x/></y></x></r>", "'(x,x)'"},
        {"text where only elements belong", "<r><x><y>text<x/><x/></y></x></r>", "character data"},
        {"element in an empty one", "<r><x><a><x/></a></x></r>", "'EMPTY'"},
        {"ID twice", "<r><x id='one'/><x id='one'/></r>", "'one'"},
        {"ID twice, once in a word", "<r><a id='one'/><x><x id='one'/></x></r>", "'one'"},
        {"reference without ID", "<r><x ref='one'/></r>", "'one'"},
        {"reference to an ID that is not kept", "<r><a ref='one'/><x id='one'/></r>", nullptr},
        {"reference that is not kept to a word", "<r><a id='one'/><x ref='one'/></r>", nullptr},
    };
    for (const auto& [what, xml, about] : kCases) {
        SCOPED_TRACE(what);
        const std::string text = std::string(kDeclarations) + xml;
        const std::string complaints = Document(text, "r a", true).Complaints();
        if (about == nullptr) {
            EXPECT_EQ(complaints, "");
        } else {
            EXPECT_THAT(complaints, testing::StartsWith("Error at file "));
            EXPECT_THAT(complaints, HasSubstr(about));
        }
        EXPECT_EQ(complaints, Document(text, "", true).Complaints()) << "the same with all elements kept";
        EXPECT_EQ(Document(text, "r a", false).Complaints(), "") << "not asked for";
    }
}

TEST(ElementBuilder, WhatIsNotKeptMustBeWellFormed) {
    for (const char* xml : {"<r><x><y></x></r>", "<r><x id='1' id='2'/></r>", "<r><x>&odd;</x></r>",
                            "<r><x>]]></x></r>", "<r><x><!-- -- --></x></r>", "<r/><x/>"}) {
        EXPECT_THAT(Document(xml, "r").Complaints(), testing::StartsWith("Fatal error at file ")) << xml;
    }
}

}  // namespace
}  // namespace tarvex::test::element_builder_test
