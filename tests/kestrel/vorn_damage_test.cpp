/// Vorn files with one fault each, and where the reader finds it. A message of several lines is looked at
/// when it is complete: its faults have the line of its end.

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "full_database.h"
#include "support.h"

namespace {

struct LineDamageCase {
    const char* what;
    /// A part of the good file, and what takes its place.
    const char* good;
    const char* bad;
    const char* error;
};

// clang-format off
constexpr LineDamageCase kDamagedSections[] = {
    {"another format",        R"("Vorn")",       R"("Worn")",         "line 2: this is no Vorn file"},
    {"format is no text",     R"("Vorn")",       "1",                 "line 2: this is no Vorn file"},
    {"later version",         R"("version": 1)", R"("version": 2)",   "line 3: version 2 of Vorn is not known"},
    {"version is a text",     R"("version": 1)", R"("version": "1")", "line 3: version \"1\" of Vorn is not known"},
    {"version is null",       R"("version": 1)", R"("version": null)", "line 3: version null of Vorn is not known"},
    {"name is a number",      R"("cabin")",      "5",                 "line 4: \"database\" is no text"},
    {"name is a list",        R"("cabin")",      "[]",                "line 4: \"database\" is no text"},
    {"name with a zero",      R"("cabin")",      R"("ca\u0000bin")",  "line 4: the database's name has a zero character"},
    {"attributes are a list", R"({"Stage": "Final", "Author": "Ada \"Gräfin\" L.\n", "Revision": 100000})", "[]",
     "line 5: \"attributes\" is no object"},
    {"first key is missing",  "\"format\": \"Vorn\",\n", "",          "line 2: the key \"version\" is not expected here"},
    {"a key is missing",      "\"database\": \"cabin\",\n", "",       "line 4: the key \"attributes\" is not expected here"},
    {"a key stands twice",    "\"version\": 1,", "\"version\": 1,\n\"version\": 1,",
     "line 4: the key \"version\" is not expected here"},
    {"keys in another order", "\"version\": 1,\n\"database\": \"cabin\",", "\"database\": \"cabin\",\n\"version\": 1,",
     "line 3: the key \"database\" is not expected here"},
    {"an unknown key",        "\"nodes\": [",    "\"gateways\": [",   "line 17: the key \"gateways\" is not expected here"},
    {"a key behind the last", "]\n}\n",          "],\n\"more\": 1}",  "line 39: the key \"more\" is not expected here"},
    {"the nodes are an object", "\"nodes\": [",  "\"nodes\": {",      "line 17: \"nodes\" is no list"},
    {"the nodes are null",    "\"nodes\": [",    "\"nodes\": null, \"x\": [", "line 17: a node is no object"},
    {"a node is a text",      R"({"name": "Bare", "attributes": {}})", R"("Bare")", "line 19: a node is no object"},
    {"a node is a list",      R"({"name": "Bare", "attributes": {}})", R"(["Bare"])", "line 19: a node is no object"},
    {"text behind the end",   "]\n}\n",          "]\n}\n{}",          "line 40: syntax error"},
    {"a comma too many",      "{}},\n  {\"name\": \"Größe €\"", "{}},,\n  {\"name\": \"Größe €\"", "line 19: syntax error"},
    {"a comma too few",       "},\n  {\"name\": \"Bare\"", "}\n  {\"name\": \"Bare\"", "line 19: syntax error"},
    {"no quote at the end",   R"("Bare",)",      R"("Bare,)",         "line 19: syntax error"},
    {"a raw control character", "\"Bare\"",      "\"Ba\x01re\"",      "line 19: syntax error"},
    {"no UTF-8",              "Größe €\", \"attributes\"", "Gr\xF6\xDF\", \"attributes\"", "line 20: syntax error"},
    {"half a surrogate",      "\"Bare\"",        "\"\\ud800\"",       "line 19: syntax error"},
    {"a leading zero",        "\"length\": 1,",  "\"length\": 01,",   "line 28: syntax error"},
    {"a number like no other", "\"length\": 1,", "\"length\": 0x1,",  "line 28: syntax error"},
    {"not a number",          "\"length\": 1,",  "\"length\": NaN,",  "line 28: syntax error"},
    {"beyond every number",   "\"length\": 1,",  "\"length\": 1e999,", "line 28: "},
};

constexpr LineDamageCase kDamagedDefinitions[] = {
    {"unknown object",       R"("object": "node", "name": "Maker")", R"("object": "car", "name": "Maker")",
     "line 10: 'car' is no kind of object"},
    {"object is no text",    R"("object": "node", "name": "Maker")", R"("object": 1, "name": "Maker")",
     "line 10: \"object\" of a definition is no text"},
    {"no object",            R"("object": "node", "name": "Maker")", R"("name": "Maker")",
     "line 10: a definition has no \"object\""},
    {"no name",              R"("name": "Maker", "type")", R"("type")", "line 10: a definition has no \"name\""},
    {"no type",              R"("type": "string", "default": "nobody")", R"("default": "nobody")",
     "line 10: a definition has no \"type\""},
    {"unknown type",         R"("type": "string", "default": "nobody")", R"("type": "float", "default": "nobody")",
     "line 10: 'float' is no type of attribute"},
    {"no default",           R"(, "default": "nobody")", "", "line 10: a definition has no \"default\""},
    {"default of a string is a number", R"("default": "nobody")", R"("default": 1)",
     "line 10: \"default\" of a definition is no text"},
    {"default of an integer is a text", R"("default": 65535)", R"("default": "65535")",
     "line 11: \"default\" of a definition is no number"},
    {"no minimum",           R"("minimum": -1, )", "", "line 11: a definition has no \"minimum\""},
    {"minimum is null",      R"("minimum": -1)", R"("minimum": null)", "line 11: \"minimum\" of a definition is no number"},
    {"maximum is true",      R"("maximum": 65535)", R"("maximum": true)", "line 11: \"maximum\" of a definition is no number"},
    {"no maximum",           R"("maximum": 65535, )", "", "line 11: a definition has no \"maximum\""},
    {"no values",            R"("values": ["Only"], )", "", "line 15: a definition has no \"values\""},
    {"values are a text",    R"("values": ["Only"])", R"("values": "Only")", "line 15: \"values\" of a definition is no list"},
    {"a value is a number",  R"("values": ["Only"])", R"("values": [1])",
     "line 15: \"values\" of a definition is no list of texts"},
    {"the only value is empty",    R"("values": ["Only"])", R"("values": [""])", "line 15: an enumeration has one value without a name"},
    {"a value of two lines", R"("values": ["Only"])", R"("values": ["On\nly"])", "line 15: the name of a value has a line feed"},
    {"a value with a zero",  R"("values": ["Only"])", R"("values": ["On\u0000ly"])", "line 15: a text has a zero character"},
    {"a string has values",  R"("default": "nobody")", R"("default": "nobody", "values": [])",
     "line 10: a definition has an unknown key"},
    {"an unknown key",       R"("default": "nobody")", R"("default": "nobody", "unit": "m")",
     "line 10: a definition has an unknown key"},
    {"a key stands twice",   R"("default": "nobody")", R"("default": "nobody", "default": "nobody")",
     "line 10: the key \"default\" stands twice"},
    {"defined twice",        R"("object": "node", "name": "Slot")", R"("object": "node", "name": "Maker")",
     "line 11: the attribute 'Maker' is defined twice"},
    {"a name of 33 bytes",   R"("name": "Maker")", R"("name": "123456789 123456789 123456789 1ä")",
     "line 10: the name '123456789 123456789 123456789 1ä' is longer than 32 bytes"},
    {"a name with a zero",   R"("name": "Maker")", R"("name": "Ma\u0000ker")", "line 10: a name has a zero character"},
    {"a default with a zero", R"("default": "nobody")", R"("default": "no\u0000body")",
     "line 10: a text has a zero character"},
    {"a default with a zero behind values", R"("default": "None")", R"("default": "\u0000")",
     "line 15: a text has a zero character"},
};

constexpr LineDamageCase kDamagedNodesAndAttributes[] = {
    {"node without a name",       R"({"name": "Bare", )",   "{",                       "line 19: a node has no \"name\""},
    {"name is null",              R"("name": "Bare")",      R"("name": null)",         "line 19: \"name\" of a node is no text"},
    {"node without attributes",   R"("Bare", "attributes": {}})", R"("Bare"})",        "line 19: a node has no \"attributes\""},
    {"attributes are null",       R"("Bare", "attributes": {}})", R"("Bare", "attributes": null})",
     "line 19: \"attributes\" is no object"},
    {"an unknown key",            R"("Bare", "attributes": {}})", R"("Bare", "attributes": {}, "id": 1})",
     "line 19: a node has an unknown key"},
    {"a key stands twice",        R"("Bare", "attributes": {}})", R"("Bare", "name": "Bare", "attributes": {}})",
     "line 19: the key \"name\" stands twice"},
    {"an attribute stands twice", R"("Slot": -1)",          R"("Slot": -1, "Slot": -1)", "line 18: the key \"Slot\" stands twice"},
    {"a name of 33 bytes",        R"("Bare")",              R"("123456789 123456789 123456789 123")",
     "line 19: the name '123456789 123456789 123456789 123' is longer than 32 bytes"},
    {"a name with a zero",        R"("Bare")",              R"("Ba\u0000re")",         "line 19: a name has a zero character"},
    {"not defined",               R"("Slot": -1)",          R"("Slat": -1)",           "line 18: the attribute 'Slat' is not defined"},
    {"defined for messages only", R"("Slot": -1)",          R"("Topic": "x")",         "line 18: the attribute 'Topic' is not defined"},
    {"longer than its definition", R"("Slot": -1)",         R"("SlotSlotSlotSlotSlotSlotSlotSlotSlot": -1)",
     "line 18: the attribute 'SlotSlotSlotSlotSlotSlotSlotSlotSlot' is not defined"},
    {"a text for an integer",     R"("Slot": -1)",          R"("Slot": "-1")",         "line 18: the attribute 'Slot' is a number"},
    {"a number for a string",     R"("Maker": "Works")",    R"("Maker": 1)",           "line 18: the attribute 'Maker' is no number"},
    {"a number for an enumeration", R"("Power": "")",       R"("Power": 0)",           "line 18: the attribute 'Power' is no number"},
    {"no such value",             R"("Power": "")",         R"("Power": "On")",        "line 18: the attribute 'Power' has no value 'On'"},
    {"a value is null",           R"("Slot": -1)",          R"("Slot": null)",
     "line 18: the attribute 'Slot' is neither a number nor a text"},
    {"a value is true",           R"("Slot": -1)",          R"("Slot": true)",
     "line 18: the attribute 'Slot' is neither a number nor a text"},
    {"a value is a list",         R"("Slot": -1)",          R"("Slot": [-1])",
     "line 18: the attribute 'Slot' is neither a number nor a text"},
    {"a text with a zero",        R"("Maker": "Works")",    R"("Maker": "Wo\u0000rks")", "line 18: a text has a zero character"},
    {"message attribute",         R"("Topic": "Sound")",    R"("Slot": 1)",            "line 29: the attribute 'Slot' is not defined"},
    {"value of a message",        R"("Kind": "None")",      R"("Kind": "Final")",
     "line 32: the attribute 'Kind' has no value 'Final'"},
};

constexpr LineDamageCase kDamagedDatabaseAttributes[] = {
    {"not defined",           R"("Stage": "Final")",   R"("Stag": "Final")",   "the attribute 'Stag' is not defined"},
    {"defined for nodes only", R"("Stage": "Final")",  R"("Slot": 1)",         "the attribute 'Slot' is not defined"},
    {"no such value",         R"("Stage": "Final")",   R"("Stage": "Ready")",  "the attribute 'Stage' has no value 'Ready'"},
    {"a text for an integer", R"("Revision": 100000)", R"("Revision": "1")",   "the attribute 'Revision' is a number"},
    {"a value is null",       R"("Revision": 100000)", R"("Revision": null)",
     "the attribute 'Revision' is neither a number nor a text"},
};

constexpr LineDamageCase kDamagedMessages[] = {
    {"no identifier",           R"("identifier": 2236420, )",     "", "line 29: a message has no \"identifier\""},
    {"no extended",             R"("extended": true, )",          "", "line 29: a message has no \"extended\""},
    {"no name",                 R"("name": "Radio_Volume_Status", )", "", "line 29: a message has no \"name\""},
    {"no length",               R"("length": 65535, )",           "", "line 29: a message has no \"length\""},
    {"no node",                 R"("length": 65535, "node": "Radio")", R"("length": 65535)", "line 29: a message has no \"node\""},
    {"no attributes",           R"(   "attributes": {"Kind": "None"},)", "", "line 32: a message has no \"attributes\""},
    {"no signals",              ",\n   \"signals\": []}",         "}", "line 31: a message has no \"signals\""},
    {"an unknown key",          R"("signals": []})",              R"("signals": [], "id": 1})", "line 32: a message has an unknown key"},
    {"a key stands twice",      R"("length": 65535)",             R"("length": 65535, "length": 65535)",
     "line 23: the key \"length\" stands twice"},
    {"signals are an object",   R"("signals": [])",               R"("signals": {})", "line 32: \"signals\" of a message is no list"},
    {"a signal is null",        R"("signals": [])",               R"("signals": [null])", "line 32: a signal is no object"},
    {"identifier with bit 31",  "2236420",    "2147483648",       "line 29: the identifier is out of range"},
    {"identifier of 33 bits",   "2236420",    "4294967296",       "line 29: \"identifier\" of a message is no whole number from 0 to 4294967295"},
    {"identifier of 65 bits",   "2236420",    "18446744073709551616",
     "line 29: \"identifier\" of a message is no whole number from 0 to 4294967295"},
    {"identifier below zero",   "2236420",    "-1",               "line 29: \"identifier\" of a message is no whole number from 0 to 4294967295"},
    {"identifier is a text",    "2236420",    R"("0x222004")",    "line 29: \"identifier\" of a message is no whole number from 0 to 4294967295"},
    {"identifier with a fraction", "2236420", "1.5",              "line 29: \"identifier\" of a message is no whole number from 0 to 4294967295"},
    {"extended is a number",    R"("extended": true)", R"("extended": 1)", "line 29: \"extended\" of a message is no true or false"},
    {"length of 17 bits",       R"("length": 65535)", R"("length": 65536)",
     "line 29: \"length\" of a message is no whole number from 0 to 65535"},
    {"no node of that name",    R"("length": 65535, "node": "Radio")", R"("length": 65535, "node": "Radios")",
     "line 29: there is no node 'Radios'"},
    {"node is longer than any", R"("length": 65535, "node": "Radio")", R"("length": 65535, "node": "123456789 123456789 123456789 123")",
     "line 29: there is no node '123456789 123456789 123456789 123'"},
    {"node is a number",        R"("length": 65535, "node": "Radio")", R"("length": 65535, "node": 1)",
     "line 29: \"node\" of a message is no text"},
    {"a name of 33 bytes",      "Radio_Volume_Status", "123456789 123456789 123456789 123",
     "line 29: the name '123456789 123456789 123456789 123' is longer than 32 bytes"},
};

constexpr LineDamageCase kDamagedSignals[] = {
    {"no name",               R"({"name": "Level", )",   "{", "line 29: a signal has no \"name\""},
    {"no start bit",          R"("start_bit": 7, )",     "", "line 29: a signal has no \"start_bit\""},
    {"no length",             R"("start_bit": 7, "length": 8, )", R"("start_bit": 7, )", "line 29: a signal has no \"length\""},
    {"no byte order",         R"("length": 8, "byte_order": "big_endian", )", R"("length": 8, )",
     "line 29: a signal has no \"byte_order\""},
    {"not said whether signed", R"("byte_order": "little_endian", "signed": true)", R"("byte_order": "little_endian")",
     "line 37: a signal has no \"signed\""},
    {"an unknown key",        R"("start_bit": 7, )",     R"("start_bit": 7, "colour": "red", )", "line 29: a signal has an unknown key"},
    {"a key stands twice",    R"("start_bit": 7, )",     R"("start_bit": 7, "start_bit": 7, )",
     "line 26: the key \"start_bit\" stands twice"},
    {"unknown byte order",    R"("length": 16, "byte_order": "little_endian")", R"("length": 16, "byte_order": "middle_endian")",
     "line 29: 'middle_endian' is no byte order"},
    {"byte order in capitals", R"("length": 16, "byte_order": "little_endian")", R"("length": 16, "byte_order": "Little_Endian")",
     "line 29: 'Little_Endian' is no byte order"},
    {"start bit of 17 bits",  R"("start_bit": 65535)",   R"("start_bit": 65536)",
     "line 29: \"start_bit\" of a signal is no whole number from 0 to 65535"},
    {"start bit below zero",  R"("start_bit": 65535)",   R"("start_bit": -1)",
     "line 29: \"start_bit\" of a signal is no whole number from 0 to 65535"},
    {"length is a text",      R"("length": 16)",         R"("length": "16")",
     "line 29: \"length\" of a signal is no whole number from 0 to 65535"},
    {"signed is a text",      R"("signed": true, "values")", R"("signed": "true", "values")",
     "line 29: \"signed\" of a signal is no true or false"},
    {"multiplexor is 1",      R"("multiplexor": true)",  R"("multiplexor": 1)",
     "line 29: \"multiplexor\" of a signal is no true or false"},
    {"multiplexer value of 33 bits", R"("multiplexer_value": 4294967295)", R"("multiplexer_value": 4294967296)",
     "line 29: \"multiplexer_value\" of a signal is no whole number from 0 to 4294967295"},
    {"multiplexer value is null", R"("multiplexer_value": 4294967295)", R"("multiplexer_value": null)",
     "line 29: \"multiplexer_value\" of a signal is no whole number from 0 to 4294967295"},
    {"a name of 33 bytes",    "Track_M1",                "Track_M1_Track_M1_Track_M1_Track_",
     "line 29: the name 'Track_M1_Track_M1_Track_M1_Track_' is longer than 32 bytes"},
    {"values are a text",     R"([[0, "Zero"]])",        R"("Zero")",   "line 29: \"values\" of a signal is no list"},
    {"a value is no pair",    R"([[0, "Zero"]])",        R"(["Zero"])",
     "line 29: \"values\" of a signal is no list of pairs of a number and a text"},
    {"a pair of one",         R"([[0, "Zero"]])",        R"([[0]])",
     "line 29: \"values\" of a signal is no list of pairs of a number and a text"},
    {"a pair of three",       R"([[0, "Zero"]])",        R"([[0, "Zero", 1]])",
     "line 29: \"values\" of a signal is no list of pairs of a number and a text"},
    {"a pair the wrong way round", R"([[0, "Zero"]])",   R"([["Zero", 0]])",
     "line 29: \"values\" of a signal is no list of pairs of a number and a text"},
    {"a value of 33 bits",    R"([[0, "Zero"]])",        R"([[4294967296, "Zero"]])",
     "line 29: \"values\" of a signal is no whole number from 0 to 4294967295"},
    {"a value below zero",    R"([[0, "Zero"]])",        R"([[-1, "Zero"]])",
     "line 29: \"values\" of a signal is no whole number from 0 to 4294967295"},
    {"a text of 33 bytes",    R"([[0, "Zero"]])",        R"([[0, "123456789 123456789 123456789 1ä"]])",
     "line 29: the name '123456789 123456789 123456789 1ä' is longer than 32 bytes"},
};
// clang-format on

class DamagedVorn : public testing::Test {
  protected:
    /// What is wrong with the full database's file when one part is replaced.
    std::string ErrorWith(const std::string& good, const std::string& bad) {
        std::string text = kFullVorn;
        const std::size_t place = text.find(good);
        if (place == std::string::npos) {
            return "the good file has no " + good;
        }
        text.replace(place, good.size(), bad);
        MakeFile(directory_ / "bad.vorn", text);
        return ErrorOf(directory_ / "bad.vorn");
    }

    /// The rows' errors are whole, but for those of the JSON parser.
    template <std::size_t kCount>
    void ExpectErrors(const LineDamageCase (&rows)[kCount]) {
        for (const LineDamageCase& row : rows) {
            std::string error = ErrorWith(row.good, row.bad);
            const std::string expected = row.error;
            if (expected.ends_with("syntax error") || expected.ends_with(": ")) {
                error.resize(expected.size());
            }
            EXPECT_EQ(error, expected) << row.what;
        }
    }

    TemporaryDirectory directory_;
};

TEST_F(DamagedVorn, SectionsAreChecked) {
    ExpectErrors(kDamagedSections);
}

TEST_F(DamagedVorn, DefinitionsAreChecked) {
    ExpectErrors(kDamagedDefinitions);
}

TEST_F(DamagedVorn, NodesAndAttributesAreChecked) {
    ExpectErrors(kDamagedNodesAndAttributes);
}

TEST_F(DamagedVorn, MessagesAreChecked) {
    ExpectErrors(kDamagedMessages);
}

TEST_F(DamagedVorn, SignalsAreChecked) {
    ExpectErrors(kDamagedSignals);
}

TEST_F(DamagedVorn, AttributesOfTheDatabaseAreCheckedAgainstTheirDefinitions) {
    for (const auto& [what, good, bad, error] : kDamagedDatabaseAttributes) {
        const std::string found = ErrorWith(good, bad);
        EXPECT_TRUE(found.ends_with(error)) << what << ": " << found;
    }
}

TEST_F(DamagedVorn, FaultOfTheDatabasesAttributesHasItsLine) {
    EXPECT_EQ(ErrorWith(R"("Stage": "Final")", R"("Stage": "Ready")").substr(0, 8), "line 5: ");
}

struct NestingCase {
    const char* good;
    const char* opening;
    const char* error;
};

constexpr NestingCase kNesting[] = {
    // good                    the nesting follows   error
    {R"("version": 1)", R"("version": )", "line 3: the file is nested too deep"},
    {R"("Stage": "Final")", R"("Stage": )", "line 5: the file is nested too deep"},
    {R"("default": "Draft")", R"("default": )", "line 9: the file is nested too deep"},
    {R"("name": "Bare")", R"("name": )", "line 19: the file is nested too deep"},
    {R"("identifier": 2236420)", R"("identifier": )", "line 23: the file is nested too deep"},
    {R"([1, "Loud"])", "[1, ", "line 26: the file is nested too deep"},
};

TEST_F(DamagedVorn, DeepNestingIsRefusedInEverySection) {
    for (const auto& [good, opening, error] : kNesting) {
        EXPECT_EQ(ErrorWith(good, opening + std::string(200'000, '[')), error) << good;
        std::string objects;
        for (int depth = 0; depth < 50'000; ++depth) {
            objects += "{\"a\":";
        }
        EXPECT_EQ(ErrorWith(good, opening + objects), error) << good;
    }
}

TEST_F(DamagedVorn, ThousandsOfKeysAreRefused) {
    std::string attributes;
    for (int number = 0; number < 20'000; ++number) {
        attributes += "\"K" + std::to_string(number) + "\": 1, ";
    }
    EXPECT_EQ(ErrorWith(R"("Slot": -1)", attributes + R"("Slot": -1)"),
              "line 18: an object has too many keys");
}

TEST_F(DamagedVorn, NamesOfAMegabyteAreRefused) {
    const std::string name(1'000'000, 'x');
    EXPECT_TRUE(ErrorWith("Bare", name).starts_with("line 19: the name '"));
    EXPECT_EQ(ErrorWith("Radio_Volume_Status", name).substr(0, 19), "line 29: the name '");
    EXPECT_TRUE(
        ErrorWith("\"database\": \"cabin\"", "\"" + name + "\": 1").starts_with("line 4: the key \""));
}

TEST_F(DamagedVorn, FileCutAnywhereIsRefusedWithALine) {
    const std::string text = kFullVorn;
    for (std::size_t part = 1; part < 100; ++part) {
        MakeFile(directory_ / "cut.vorn", text.substr(0, text.size() * part / 100));
        EXPECT_EQ(ErrorOf(directory_ / "cut.vorn").substr(0, 5), "line ") << part;
    }
}

TEST_F(DamagedVorn, FileWithoutItsLastLineFeedIsWhole) {
    const std::string text = kFullVorn;
    MakeFile(directory_ / "cut.vorn", text.substr(0, text.size() - 1));
    EXPECT_EQ(ReadAsVorn(directory_ / "cut.vorn"), text);
}

}  // namespace
