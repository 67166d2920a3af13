/// The bytes of a written database.

#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support.h"

namespace {

using VornLayout = DatabaseTest;

TEST_F(VornLayout, EmptyDatabaseHasEmptyListsOnOneLine) {
    EXPECT_EQ(Written(), R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {},
"attribute_definitions": [],
"nodes": [],
"messages": []
}
)");
}

TEST_F(VornLayout, DatabaseWithEverythingIsWrittenByteForByte) {
    DefineString(AttrObject::Database, "Author", "");
    DefineInteger(AttrObject::Database, "Revision", 0, 100000, 1);
    DefineEnumeration(AttrObject::Database, "Stage", "Draft\nFinal", "Draft");
    DefineString(AttrObject::Node, "Maker", "nobody");
    DefineInteger(AttrObject::Node, "Slot", -1, 65535, 65535);
    DefineEnumeration(AttrObject::Node, "Power", "Off\nStandby\nOn", "On");
    DefineString(AttrObject::Message, "Topic", "General");
    DefineInteger(AttrObject::Message, "Period", 0.5, 2.25, 1.75);
    DefineEnumeration(AttrObject::Message, "Kind", "Only", "Only");

    manager_.SetAttrValue(key_, "Stage", Number(1));
    manager_.SetAttrValue(key_, "Author", Text("Ada"));
    manager_.SetAttrValue(key_, "Revision", Number(100000));

    symblk& radio = AddNode("Radio");
    manager_.SetAttrValue(radio, "Slot", Number(257));
    manager_.SetAttrValue(radio, "Maker", Text("Works"));
    manager_.SetAttrValue(radio, "Power", Number(1));
    AddNode("Bare");

    msgblk& status = AddMessage(0x80222004, "Radio_Volume_Status");
    status.length = 65535;
    status.node = &radio;
    manager_.SetAttrValue(status, "Topic", Text("Sound"));
    manager_.SetAttrValue(status, "Kind", Number(0));
    manager_.SetAttrValue(status, "Period", Number(0.75));
    sigblk& level = AddSignal(status, "Level");
    level.start_bit = 7;
    level.length = 8;
    level.flags = kSignalBigEndian;
    level.value_descriptions = Describe(1, "Loud", Describe(0, "Off", Describe(4294967295, "Any")));
    sigblk& pos = AddSignal(status, "PosX");
    pos.length = 16;
    pos.flags = kSignalMultiplexor;
    sigblk& track = AddSignal(status, "Track_M1");
    track.start_bit = 65535;
    track.length = 1;
    track.flags = kSignalBigEndian | kSignalSigned | kSignalMultiplexed;
    track.multiplexer_value = 4294967295;

    AddMessage(0x7FFFFFFF, "Plain");

    EXPECT_EQ(Written(), R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {"Stage": "Final", "Author": "Ada", "Revision": 100000},
"attribute_definitions": [
  {"object": "database", "name": "Author", "type": "string", "default": ""},
  {"object": "database", "name": "Revision", "type": "integer", "minimum": 0, "maximum": 100000, "default": 1},
  {"object": "database", "name": "Stage", "type": "enumeration", "values": ["Draft", "Final"], "default": "Draft"},
  {"object": "node", "name": "Maker", "type": "string", "default": "nobody"},
  {"object": "node", "name": "Slot", "type": "integer", "minimum": -1, "maximum": 65535, "default": 65535},
  {"object": "node", "name": "Power", "type": "enumeration", "values": ["Off", "Standby", "On"], "default": "On"},
  {"object": "message", "name": "Topic", "type": "string", "default": "General"},
  {"object": "message", "name": "Period", "type": "integer", "minimum": 0.5, "maximum": 2.25, "default": 1.75},
  {"object": "message", "name": "Kind", "type": "enumeration", "values": ["Only"], "default": "Only"}
],
"nodes": [
  {"name": "Radio", "attributes": {"Slot": 257, "Maker": "Works", "Power": "Standby"}},
  {"name": "Bare", "attributes": {}}
],
"messages": [
  {"identifier": 2236420, "extended": true, "name": "Radio_Volume_Status", "length": 65535, "node": "Radio",
   "attributes": {"Topic": "Sound", "Kind": "Only", "Period": 0.75},
   "signals": [
     {"name": "Level", "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": false, "values": [[1, "Loud"], [0, "Off"], [4294967295, "Any"]]},
     {"name": "PosX", "start_bit": 0, "length": 16, "byte_order": "little_endian", "signed": false, "multiplexor": true},
     {"name": "Track_M1", "start_bit": 65535, "length": 1, "byte_order": "big_endian", "signed": true, "multiplexer_value": 4294967295}
   ]},
  {"identifier": 2147483647, "extended": false, "name": "Plain", "length": 0, "node": null,
   "attributes": {},
   "signals": []}
]
}
)");
}

struct SignalCase {
    bool hasValues;
    unsigned flags;
    const char* lineEnd;
};

constexpr SignalCase kSignals[] = {
    // clang-format off
    // values   flags: 8 multiplexed, 4 multiplexor, 2 signed, 1 big-endian; other bits mean nothing
    {false, 0,      R"("little_endian", "signed": false})"},
    {false, 1,      R"("big_endian", "signed": false})"},
    {false, 2,      R"("little_endian", "signed": true})"},
    {false, 3,      R"("big_endian", "signed": true})"},
    {false, 4,      R"("little_endian", "signed": false, "multiplexor": true})"},
    {false, 5,      R"("big_endian", "signed": false, "multiplexor": true})"},
    {false, 6,      R"("little_endian", "signed": true, "multiplexor": true})"},
    {false, 7,      R"("big_endian", "signed": true, "multiplexor": true})"},
    {false, 8,      R"("little_endian", "signed": false, "multiplexer_value": 5})"},
    {false, 9,      R"("big_endian", "signed": false, "multiplexer_value": 5})"},
    {false, 10,     R"("little_endian", "signed": true, "multiplexer_value": 5})"},
    {false, 11,     R"("big_endian", "signed": true, "multiplexer_value": 5})"},
    {false, 12,     R"("little_endian", "signed": false, "multiplexor": true, "multiplexer_value": 5})"},
    {false, 13,     R"("big_endian", "signed": false, "multiplexor": true, "multiplexer_value": 5})"},
    {false, 14,     R"("little_endian", "signed": true, "multiplexor": true, "multiplexer_value": 5})"},
    {false, 15,     R"("big_endian", "signed": true, "multiplexor": true, "multiplexer_value": 5})"},
    {true,  0,      R"("little_endian", "signed": false, "values": [[1, "On"]]})"},
    {true,  1,      R"("big_endian", "signed": false, "values": [[1, "On"]]})"},
    {true,  2,      R"("little_endian", "signed": true, "values": [[1, "On"]]})"},
    {true,  3,      R"("big_endian", "signed": true, "values": [[1, "On"]]})"},
    {true,  4,      R"("little_endian", "signed": false, "values": [[1, "On"]], "multiplexor": true})"},
    {true,  5,      R"("big_endian", "signed": false, "values": [[1, "On"]], "multiplexor": true})"},
    {true,  6,      R"("little_endian", "signed": true, "values": [[1, "On"]], "multiplexor": true})"},
    {true,  7,      R"("big_endian", "signed": true, "values": [[1, "On"]], "multiplexor": true})"},
    {true,  8,      R"("little_endian", "signed": false, "values": [[1, "On"]], "multiplexer_value": 5})"},
    {true,  9,      R"("big_endian", "signed": false, "values": [[1, "On"]], "multiplexer_value": 5})"},
    {true,  10,     R"("little_endian", "signed": true, "values": [[1, "On"]], "multiplexer_value": 5})"},
    {true,  11,     R"("big_endian", "signed": true, "values": [[1, "On"]], "multiplexer_value": 5})"},
    {true,  12,     R"("little_endian", "signed": false, "values": [[1, "On"]], "multiplexor": true, "multiplexer_value": 5})"},
    {true,  13,     R"("big_endian", "signed": false, "values": [[1, "On"]], "multiplexor": true, "multiplexer_value": 5})"},
    {true,  14,     R"("little_endian", "signed": true, "values": [[1, "On"]], "multiplexor": true, "multiplexer_value": 5})"},
    {true,  15,     R"("big_endian", "signed": true, "values": [[1, "On"]], "multiplexor": true, "multiplexer_value": 5})"},
    {false, 0xFFF0, R"("little_endian", "signed": false})"},
    // clang-format on
};

TEST_F(VornLayout, EveryCombinationOfSignalPropertiesHasItsKeysInOrder) {
    msgblk& message = AddMessage(1, "Message");
    std::string expected;
    for (const SignalCase& row : kSignals) {
        sigblk& signal = AddSignal(message, "S");
        signal.flags = static_cast<std::uint16_t>(row.flags);
        signal.multiplexer_value = 5;
        if (row.hasValues) {
            signal.value_descriptions = Describe(1, "On");
        }
        expected += expected.empty() ? "\n" : ",\n";
        expected += R"(     {"name": "S", "start_bit": 0, "length": 0, "byte_order": )";
        expected += row.lineEnd;
    }
    const std::string text = Written();
    const std::string opening = "\"signals\": [";
    const std::size_t begin = text.find(opening) + opening.size();
    EXPECT_EQ(text.substr(begin, text.find("\n   ]}") - begin), expected);
}

TEST_F(VornLayout, EveryKindOfTextIsEscaped) {
    const char* awkward = "a\"b\\c\n\t\x01";
    const char* database = nullptr;
    manager_.CreateDatabase(awkward, &database, nullptr);
    key_ = database;
    DefineString(AttrObject::Database, awkward, awkward);
    DefineEnumeration(AttrObject::Message, "Kind\x02", "x\"\ny\\", "\t");
    manager_.SetAttrValue(key_, awkward, Text(awkward));
    symblk& node = AddNode(awkward);
    msgblk& message = AddMessage(1, awkward);
    message.node = &node;
    AddSignal(message, awkward).value_descriptions = Describe(0, awkward);
    EXPECT_EQ(Written(), R"({
"format": "Vorn",
"version": 1,
"database": "a\"b\\c\n\t\u0001",
"attributes": {"a\"b\\c\n\t\u0001": "a\"b\\c\n\t\u0001"},
"attribute_definitions": [
  {"object": "database", "name": "a\"b\\c\n\t\u0001", "type": "string", "default": "a\"b\\c\n\t\u0001"},
  {"object": "message", "name": "Kind\u0002", "type": "enumeration", "values": ["x\"", "y\\"], "default": "\t"}
],
"nodes": [
  {"name": "a\"b\\c\n\t\u0001", "attributes": {}}
],
"messages": [
  {"identifier": 1, "extended": false, "name": "a\"b\\c\n\t\u0001", "length": 0, "node": "a\"b\\c\n\t\u0001",
   "attributes": {},
   "signals": [
     {"name": "a\"b\\c\n\t\u0001", "start_bit": 0, "length": 0, "byte_order": "little_endian", "signed": false, "values": [[0, "a\"b\\c\n\t\u0001"]]}
   ]}
]
}
)");
}

TEST_F(VornLayout, NamesAndTextsCutWithinACharacterLoseItsRest) {
    const char* cut = "123456789 123456789 123456789 1ä";  // 33 bytes
    DefineInteger(AttrObject::Node, cut, 0, 1, 0);
    symblk& node = AddNode(cut);
    manager_.SetAttrValue(node, cut, Number(1));
    msgblk& message = AddMessage(1, cut);
    message.node = &node;
    AddSignal(message, cut).value_descriptions = Describe(0, cut);
    EXPECT_EQ(Written(), R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {},
"attribute_definitions": [
  {"object": "node", "name": "123456789 123456789 123456789 1", "type": "integer", "minimum": 0, "maximum": 1, "default": 0}
],
"nodes": [
  {"name": "123456789 123456789 123456789 1", "attributes": {"123456789 123456789 123456789 1": 1}}
],
"messages": [
  {"identifier": 1, "extended": false, "name": "123456789 123456789 123456789 1", "length": 0, "node": "123456789 123456789 123456789 1",
   "attributes": {},
   "signals": [
     {"name": "123456789 123456789 123456789 1", "start_bit": 0, "length": 0, "byte_order": "little_endian", "signed": false, "values": [[0, "123456789 123456789 123456789 1"]]}
   ]}
]
}
)");
}

TEST_F(VornLayout, NamesOf32BytesAreWrittenWhole) {
    AddNode("ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
    EXPECT_NE(Written().find(R"(  {"name": "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345", "attributes": {}})"),
              std::string::npos);
}

TEST_F(VornLayout, LettersBeyondAsciiAreWrittenAsTheyAre) {
    AddNode("Größe €");
    EXPECT_NE(Written().find(R"(  {"name": "Größe €", "attributes": {}})"), std::string::npos);
}

TEST_F(VornLayout, RecordsAreReadWhenTheDatabaseIsWritten) {
    symblk& node = *manager_.CreateNode(key_, 0);
    msgblk& message = *manager_.CreateMessage(key_, 0);
    attr_def& definition = *manager_.CreateAttrDefinition(key_, 0);
    message.node = &node;
    Written();
    SetName(node.name, "Late");
    message.length = 3;
    definition.value_type = AttrType::String;
    definition.default_text = Give("later");
    EXPECT_EQ(Written(), R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {},
"attribute_definitions": [
  {"object": "database", "name": "", "type": "string", "default": "later"}
],
"nodes": [
  {"name": "Late", "attributes": {}}
],
"messages": [
  {"identifier": 0, "extended": false, "name": "", "length": 3, "node": "Late",
   "attributes": {},
   "signals": []}
]
}
)");
}

TEST_F(VornLayout, WritingTwiceGivesTheSameBytes) {
    DefineString(AttrObject::Message, "Topic", "");
    for (std::uint32_t number = 0; number < 100; ++number) {
        msgblk& message = AddMessage(number, "Message");
        manager_.SetAttrValue(message, "Topic", Text("Sound"));
        AddSignal(message, "Level").value_descriptions = Describe(number, "Loud");
    }
    const std::string first = Written();
    EXPECT_EQ(Written(), first);
}

TEST_F(VornLayout, LargeFileParsesWithEveryRecordInOrder) {
    DefineString(AttrObject::Message, "Topic", "");
    const std::string longText(400'000, 'x');  // more than one block of output
    for (std::uint32_t number = 0; number < 5000; ++number) {
        msgblk& message = AddMessage(number, "Message" + std::to_string(number));
        AddSignal(message, "Level").value_descriptions = Describe(number, "Loud");
        if (number == 2500) {
            manager_.SetAttrValue(message, "Topic", Text(longText.c_str()));
        }
    }
    const nlohmann::json parsed = nlohmann::json::parse(Written());
    ASSERT_EQ(parsed["messages"].size(), 5000U);
    for (std::uint32_t number = 0; number < 5000; ++number) {
        const nlohmann::json& message = parsed["messages"][number];
        EXPECT_EQ(message["identifier"], number);
        EXPECT_EQ(message["name"], "Message" + std::to_string(number));
        EXPECT_EQ(message["signals"][0]["values"][0][0], number);
    }
    EXPECT_EQ(parsed["messages"][2500]["attributes"]["Topic"], longText);
}

}  // namespace
