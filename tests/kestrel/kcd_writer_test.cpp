/// The XML of a database written as KCD.

#include <cstdint>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "support.h"

namespace {

const std::string kOpening =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<NetworkDefinition xmlns="http://kayak.2codeornot2code.org/1.0">
  <Document name="cabin"/>
)";

class KcdWriter : public DatabaseTest {
  protected:
    std::string Xml() {
        const std::string path = directory_ / "out.kcd";
        EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelOk);
        return ReadFile(path);
    }

    /// What stands in the first `Bus`, without the indentation by four blanks.
    std::string BusContent() {
        const std::string xml = Xml();
        const std::string opening = "<Bus name=\"cabin\">\n";
        const std::size_t begin = xml.find(opening) + opening.size();
        std::string content = xml.substr(begin, xml.find("  </Bus>") - begin);
        for (std::size_t line = 0; line < content.size(); line = content.find('\n', line) + 1) {
            EXPECT_EQ(content.substr(line, 4), "    ");
            content.erase(line, 4);
        }
        return content;
    }
};

TEST_F(KcdWriter, EmptyDatabaseIsABusWithoutMessages) {
    EXPECT_EQ(Xml(), kOpening + "  <Bus name=\"cabin\"/>\n</NetworkDefinition>\n");
}

TEST_F(KcdWriter, DatabaseWithEverythingIsWrittenByteForByte) {
    DefineString(AttrObject::Database, "Author", "");
    DefineInteger(AttrObject::Node, "Slot", -1, 255, 0);
    DefineEnumeration(AttrObject::Node, "Power", "Off\nOn", "Off");
    DefineString(AttrObject::Message, "Topic", "General");
    manager_.SetAttrValue(key_, "Author", Text("Ada"));
    symblk& radio = AddNode("Radio");
    manager_.SetAttrValue(radio, "Power", Number(1));
    manager_.SetAttrValue(radio, "Slot", Number(-1));
    symblk& amp = AddNode("Amp");

    msgblk& status = AddMessage(0x8022400C, "Amp_Status");
    status.length = 5;
    status.node = &amp;
    manager_.SetAttrValue(status, "Topic", Text("Sound"));
    sigblk& late = AddSignal(status, "Late_M3");
    late.start_bit = 23;
    late.length = 8;
    late.flags = kSignalBigEndian | kSignalMultiplexed;
    late.multiplexer_value = 3;
    sigblk& plain = AddSignal(status, "Plain");
    plain.start_bit = 32;
    plain.length = 3;
    plain.flags = kSignalSigned;
    plain.value_descriptions = Describe(2, "Two", Describe(0, "Zero"));
    sigblk& position = AddSignal(status, "Position");
    position.length = 16;
    position.flags = kSignalMultiplexor;
    position.value_descriptions = Describe(1, "First");
    sigblk& early = AddSignal(status, "Early_M1");
    early.start_bit = 16;
    early.length = 2;
    early.flags = kSignalMultiplexed | kSignalSigned;
    early.multiplexer_value = 1;
    sigblk& other = AddSignal(status, "Other_M3");
    other.start_bit = 31;
    other.length = 4;
    other.flags = kSignalBigEndian | kSignalMultiplexed;
    other.multiplexer_value = 3;
    AddMessage(0x7FF, "Bare");

    EXPECT_EQ(Xml(), kOpening + R"(  <Node id="1" name="Radio">
    <Notes>Power = On
Slot = -1</Notes>
  </Node>
  <Node id="2" name="Amp"/>
  <Bus name="cabin">
    <Notes>Author = Ada</Notes>
    <Message id="0x22400C" name="Amp_Status" length="5" format="extended">
      <Notes>Topic = Sound</Notes>
      <Producer>
        <NodeRef id="2"/>
      </Producer>
      <Multiplex name="Position" offset="0" length="16">
        <LabelSet>
          <Label name="First" value="1"/>
        </LabelSet>
        <MuxGroup count="1">
          <Signal name="Early_M1" offset="16" length="2" endianess="little">
            <Value type="signed"/>
          </Signal>
        </MuxGroup>
        <MuxGroup count="3">
          <Signal name="Late_M3" offset="16" length="8" endianess="big"/>
          <Signal name="Other_M3" offset="24" length="4" endianess="big"/>
        </MuxGroup>
      </Multiplex>
      <Signal name="Plain" offset="32" length="3" endianess="little">
        <Value type="signed"/>
        <LabelSet>
          <Label name="Two" value="2"/>
          <Label name="Zero" value="0"/>
        </LabelSet>
      </Signal>
    </Message>
    <Message id="0x7FF" name="Bare" length="0" format="standard"/>
  </Bus>
</NetworkDefinition>
)");
}

struct IdentifierCase {
    std::uint32_t identifier;
    const char* attributes;
};

constexpr IdentifierCase kIdentifiers[] = {
    {0, R"(id="0x0" name="M" length="0" format="standard")"},
    {0x7FF, R"(id="0x7FF" name="M" length="0" format="standard")"},
    {0x800, R"(id="0x800" name="M" length="0" format="extended")"},
    {0x1FFFFFFF, R"(id="0x1FFFFFFF" name="M" length="0" format="extended")"},
    {0x80000000, R"(id="0x0" name="M" length="0" format="extended")"},
    {0x800007FF, R"(id="0x7FF" name="M" length="0" format="extended")"},
    {0x9FFFFFFF, R"(id="0x1FFFFFFF" name="M" length="0" format="extended")"},
};

TEST_F(KcdWriter, IdentifierThatIsNotStandardMakesAMessageExtended) {
    std::string expected;
    for (const auto& [identifier, attributes] : kIdentifiers) {
        AddMessage(identifier, "M");
        expected += "<Message " + std::string(attributes) + "/>\n";
    }
    EXPECT_EQ(BusContent(), expected);
}

struct OffsetCase {
    std::uint16_t startBit;
    std::uint16_t little;
    std::uint16_t big;
};

constexpr OffsetCase kOffsets[] = {
    // start  little  big: the highest bit of byte 0 is offset 0, its lowest is 7
    {7, 7, 0},    {0, 0, 7},    {4, 4, 3},    {15, 15, 8},     {8, 8, 15},         {14, 14, 9},
    {23, 23, 16}, {63, 63, 56}, {56, 56, 63}, {247, 247, 240}, {1000, 1000, 1007}, {65535, 65535, 65528},
};

TEST_F(KcdWriter, OffsetOfABigEndianSignalCountsFromTheMostSignificantBit) {
    msgblk& message = AddMessage(1, "M");
    std::string expected = "<Message id=\"0x1\" name=\"M\" length=\"0\" format=\"standard\">\n";
    for (const auto& [startBit, little, big] : kOffsets) {
        for (const bool isBig : {false, true}) {
            sigblk& signal = AddSignal(message, "S");
            signal.start_bit = startBit;
            signal.length = 8;
            signal.flags = isBig ? kSignalBigEndian : 0;
            expected += "  <Signal name=\"S\" offset=\"" + std::to_string(isBig ? big : little) +
                        "\" length=\"8\" endianess=\"" + (isBig ? "big" : "little") + "\"/>\n";
        }
    }
    EXPECT_EQ(BusContent(), expected + "</Message>\n");
}

TEST_F(KcdWriter, MultiplexedSignalsWithoutAMultiplexorArePlain) {
    msgblk& message = AddMessage(1, "M");
    sigblk& signal = AddSignal(message, "S_M2");
    signal.length = 8;
    signal.flags = kSignalMultiplexed;
    signal.multiplexer_value = 2;
    EXPECT_EQ(BusContent(), R"(<Message id="0x1" name="M" length="0" format="standard">
  <Signal name="S_M2" offset="0" length="8" endianess="little"/>
</Message>
)");
}

TEST_F(KcdWriter, OfTwoMultiplexorsTheSecondIsASignal) {
    msgblk& message = AddMessage(1, "M");
    for (const char* name : {"First", "Second"}) {
        sigblk& signal = AddSignal(message, name);
        signal.length = 8;
        signal.flags = kSignalMultiplexor;
    }
    sigblk& signal = AddSignal(message, "S");
    signal.length = 8;
    signal.flags = kSignalMultiplexed;
    EXPECT_EQ(BusContent(), R"(<Message id="0x1" name="M" length="0" format="standard">
  <Multiplex name="First" offset="0" length="8">
    <MuxGroup count="0">
      <Signal name="S" offset="0" length="8" endianess="little"/>
    </MuxGroup>
  </Multiplex>
  <Signal name="Second" offset="0" length="8" endianess="little"/>
</Message>
)");
}

TEST_F(KcdWriter, SignalOfOneBitHasItsLength) {
    AddSignal(AddMessage(1, "M"), "Flag").length = 1;
    EXPECT_EQ(BusContent(), R"(<Message id="0x1" name="M" length="0" format="standard">
  <Signal name="Flag" offset="0" length="1" endianess="little"/>
</Message>
)");
}

TEST_F(KcdWriter, MultiplexorOfAWholeByteStartsThereInEitherByteOrder) {
    std::string expected;
    for (const bool isBig : {false, true}) {
        sigblk& signal = AddSignal(AddMessage(1, "M"), "Mux");
        signal.start_bit = isBig ? 23 : 16;
        signal.length = 8;
        signal.flags = kSignalMultiplexor | (isBig ? kSignalBigEndian : 0U);
        expected += R"(<Message id="0x1" name="M" length="0" format="standard">
  <Multiplex name="Mux" offset="16" length="8"/>
</Message>
)";
    }
    EXPECT_EQ(BusContent(), expected);
}

TEST_F(KcdWriter, GroupsStandInTheOrderOfTheirValues) {
    msgblk& message = AddMessage(1, "M");
    AddSignal(message, "Mux").flags = kSignalMultiplexor;
    for (const std::uint32_t value : {4294967295U, 10U, 9U, 10U}) {
        sigblk& signal = AddSignal(message, "S" + std::to_string(value));
        signal.length = 8;
        signal.flags = kSignalMultiplexed;
        signal.multiplexer_value = value;
    }
    const std::string content = BusContent();
    const std::string groups = content.substr(content.find("    <MuxGroup"),
                                              content.find("  </Multiplex>") - content.find("    <MuxGroup"));
    EXPECT_EQ(groups, R"(    <MuxGroup count="9">
      <Signal name="S9" offset="0" length="8" endianess="little"/>
    </MuxGroup>
    <MuxGroup count="10">
      <Signal name="S10" offset="0" length="8" endianess="little"/>
      <Signal name="S10" offset="0" length="8" endianess="little"/>
    </MuxGroup>
    <MuxGroup count="4294967295">
      <Signal name="S4294967295" offset="0" length="8" endianess="little"/>
    </MuxGroup>
)");
}

TEST_F(KcdWriter, AttributesThatWereNotSetLeaveNoNotes) {
    DefineString(AttrObject::Database, "Author", "Ada");
    DefineString(AttrObject::Node, "Maker", "Works");
    DefineString(AttrObject::Message, "Topic", "Sound");
    AddNode("Radio");
    AddMessage(1, "M");
    EXPECT_EQ(Xml().find("Notes"), std::string::npos);
}

struct DocDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

struct TextCase {
    const char* what;
    const char* text;
    const char* read;
};

constexpr TextCase kTexts[] = {
    {"letters beyond ASCII", "Größe €", "Größe €"},
    {"beyond the first plane", "\xF0\x9F\x93\xBB", "\xF0\x9F\x93\xBB"},
    {"markup", "<a href=\"b\">'&amp;'</a>]]>", "<a href=\"b\">'&amp;'</a>]]>"},
    {"line feed and tab", "a\nb\tc", "a\nb\tc"},
    {"control characters", "a\x01\x1F\rb", "a???b"},
    {"no UTF-8", "a\xE4z", "a\xEF\xBF\xBDz"},
    {"delete", "a\x7Fz", "a\x7Fz"},
};

class KcdTexts : public KcdWriter {
  protected:
    /// The name of the first node and the notes of the bus, as an XML parser reads them.
    std::string NameAndNotes(const std::string& xml) {
        const std::unique_ptr<xmlDoc, DocDeleter> document(
            xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                          XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
        if (document == nullptr) {
            return "the XML is not well-formed";
        }
        std::string found;
        for (xmlNode* element = xmlFirstElementChild(xmlDocGetRootElement(document.get()));
             element != nullptr; element = xmlNextElementSibling(element)) {
            if (xmlStrEqual(element->name, reinterpret_cast<const xmlChar*>("Node")) != 0) {
                found += Taken(xmlGetProp(element, reinterpret_cast<const xmlChar*>("name")));
            } else if (xmlNode* notes = xmlFirstElementChild(element)) {
                found += " | " + Taken(xmlNodeGetContent(notes));
            }
        }
        return found;
    }

  private:
    static std::string Taken(xmlChar* text) {
        std::string copy = reinterpret_cast<const char*>(text);
        xmlFree(text);
        return copy;
    }
};

TEST_F(KcdTexts, AreReadAsTheyWereWritten) {
    for (const auto& [what, text, read] : kTexts) {
        manager_.CreateDatabase("cabin", &key_, nullptr);
        DefineString(AttrObject::Database, "T", "");
        manager_.SetAttrValue(key_, "T", Text(text));
        AddNode(text);
        EXPECT_EQ(NameAndNotes(Xml()), std::string(read) + " | T = " + read) << what;
    }
}

TEST_F(KcdTexts, CharactersThatXmlDoesNotHaveLeaveItWellFormed) {
    for (const char* text : {"a\xEF\xBF\xBEz", "a\xEF\xBF\xBFz"}) {  // U+FFFE and U+FFFF
        manager_.CreateDatabase("cabin", &key_, nullptr);
        DefineString(AttrObject::Database, "T", "");
        manager_.SetAttrValue(key_, "T", Text(text));
        AddNode("Radio");
        const std::string found = NameAndNotes(Xml());
        EXPECT_EQ(found.substr(0, 13), "Radio | T = a");
        EXPECT_EQ(found.back(), 'z');
    }
}

TEST_F(KcdTexts, NamesCutWithinACharacterLoseItsRest) {
    AddNode("123456789 123456789 123456789 1ä");  // 33 bytes
    DefineString(AttrObject::Database, "T", "");
    manager_.SetAttrValue(key_, "T", Text("x"));
    EXPECT_EQ(NameAndNotes(Xml()), "123456789 123456789 123456789 1 | T = x");
}

TEST_F(KcdWriter, WritingTwiceGivesTheSameBytes) {
    for (std::uint32_t number = 0; number < 100; ++number) {
        sigblk& signal = AddSignal(AddMessage(number, "Message"), "Level");
        signal.value_descriptions = Describe(number, "Loud");
    }
    const std::string first = Xml();
    EXPECT_EQ(Xml(), first);
}

}  // namespace
