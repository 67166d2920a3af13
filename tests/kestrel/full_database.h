/// One database with everything that a database can hold, and its Vorn text. The tests of the writers and
/// readers take it as it is or damage a copy of it.

#pragma once

#include <memory>
#include <string>

#include "kestrel/reader.h"
#include "kestrel/writer.h"
#include "support.h"

/// The tests of damaged files name its lines: definitions 7 to 15, nodes 18 to 20, messages 23 to 29, 30 to
/// 32 and 33 to 37.
inline constexpr const char* kFullVorn =
    R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {"Stage": "Final", "Author": "Ada \"Gräfin\" L.\n", "Revision": 100000},
"attribute_definitions": [
  {"object": "database", "name": "Author", "type": "string", "default": ""},
  {"object": "database", "name": "Revision", "type": "integer", "minimum": 0, "maximum": 9007199254740994, "default": 1},
  {"object": "database", "name": "Stage", "type": "enumeration", "values": ["Draft", "Final"], "default": "Draft"},
  {"object": "node", "name": "Maker", "type": "string", "default": "nobody"},
  {"object": "node", "name": "Slot", "type": "integer", "minimum": -1, "maximum": 65535, "default": 65535},
  {"object": "node", "name": "Power", "type": "enumeration", "values": [], "default": ""},
  {"object": "message", "name": "Topic", "type": "string", "default": "General"},
  {"object": "message", "name": "Period", "type": "integer", "minimum": 0.5, "maximum": 2.25, "default": 1.75},
  {"object": "message", "name": "Kind", "type": "enumeration", "values": ["Only"], "default": "None"}
],
"nodes": [
  {"name": "Radio", "attributes": {"Slot": -1, "Maker": "Works", "Power": ""}},
  {"name": "Bare", "attributes": {}},
  {"name": "Größe €", "attributes": {"Maker": ""}}
],
"messages": [
  {"identifier": 2236420, "extended": true, "name": "Radio_Volume_Status", "length": 65535, "node": "Radio",
   "attributes": {"Topic": "Sound", "Kind": "Only", "Period": 0.75},
   "signals": [
     {"name": "Level", "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": false, "values": [[1, "Loud"], [0, "Off"], [4294967295, "Any"], [1, "Loud again"]]},
     {"name": "PosX", "start_bit": 0, "length": 16, "byte_order": "little_endian", "signed": false, "multiplexor": true},
     {"name": "Track_M1", "start_bit": 65535, "length": 1, "byte_order": "big_endian", "signed": true, "values": [[0, "Zero"]], "multiplexer_value": 4294967295}
   ]},
  {"identifier": 2147483647, "extended": false, "name": "Plain", "length": 0, "node": null,
   "attributes": {"Kind": "None"},
   "signals": []},
  {"identifier": 2147483647, "extended": false, "name": "Plain", "length": 1, "node": "Größe €",
   "attributes": {},
   "signals": [
     {"name": "Ä", "start_bit": 0, "length": 8, "byte_order": "little_endian", "signed": true}
   ]}
]
}
)";

/// A manager whose database "cabin" is the one above.
class FullDatabase : public DatabaseTest {
  protected:
    FullDatabase() {
        AddDefinitions();
        manager_.SetAttrValue(key_, "Stage", Number(1));
        manager_.SetAttrValue(key_, "Author", Text("Ada \"Gräfin\" L.\n"));
        manager_.SetAttrValue(key_, "Revision", Number(100000));

        symblk& radio = AddNode("Radio");
        manager_.SetAttrValue(radio, "Slot", Number(-1));
        manager_.SetAttrValue(radio, "Maker", Text("Works"));
        manager_.SetAttrValue(radio, "Power", Number(0));
        AddNode("Bare");
        symblk& size = AddNode("Größe €");
        manager_.SetAttrValue(size, "Maker", Text(""));

        AddRadioStatus(radio);
        manager_.SetAttrValue(AddMessage(0x7FFFFFFF, "Plain"), "Kind", Number(1));
        msgblk& second = AddMessage(0x7FFFFFFF, "Plain");
        second.node = &size;
        second.length = 1;
        sigblk& umlaut = AddSignal(second, "Ä");
        umlaut.length = 8;
        umlaut.flags = kSignalSigned;
    }

    /// Writes the database to a file in the test's directory.
    std::string WriteAs(const char* name) {
        std::string path = directory_ / name;
        EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelOk) << name;
        return path;
    }

  private:
    void AddDefinitions() {
        DefineString(AttrObject::Database, "Author", "");
        DefineInteger(AttrObject::Database, "Revision", 0, 9007199254740994, 1);
        DefineEnumeration(AttrObject::Database, "Stage", "Draft\nFinal", "Draft");
        DefineString(AttrObject::Node, "Maker", "nobody");
        DefineInteger(AttrObject::Node, "Slot", -1, 65535, 65535);
        DefineEnumeration(AttrObject::Node, "Power", "", "");
        DefineString(AttrObject::Message, "Topic", "General");
        DefineInteger(AttrObject::Message, "Period", 0.5, 2.25, 1.75);
        DefineEnumeration(AttrObject::Message, "Kind", "Only", "None");
    }

    void AddRadioStatus(symblk& radio) {
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
        level.value_descriptions =
            Describe(1, "Loud", Describe(0, "Off", Describe(4294967295, "Any", Describe(1, "Loud again"))));
        sigblk& pos = AddSignal(status, "PosX");
        pos.length = 16;
        pos.flags = kSignalMultiplexor;
        sigblk& track = AddSignal(status, "Track_M1");
        track.start_bit = 65535;
        track.length = 1;
        track.flags = kSignalBigEndian | kSignalSigned | kSignalMultiplexed;
        track.multiplexer_value = 4294967295;
        track.value_descriptions = Describe(0, "Zero");
    }
};

/// Reads a file and writes it as Vorn into the same directory; the text.
inline std::string ReadAsVorn(const std::string& path) {
    const std::string copy = path + ".read.vorn";
    EXPECT_EQ(kestrel::WriteDatabase(*kestrel::ReadDatabase(path), copy.c_str()), kKestrelOk);
    return ReadFile(copy);
}

/// What is wrong with a file; empty when it can be read.
inline std::string ErrorOf(const std::string& path) {
    try {
        kestrel::ReadDatabase(path);
    } catch (const kestrel::ReadError& error) {
        return error.what();
    }
    return "";
}
