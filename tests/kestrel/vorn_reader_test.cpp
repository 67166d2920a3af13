/// Vorn files that can be read, and files that are not Vorn files at all.

#include <filesystem>
#include <string>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "full_database.h"
#include "support.h"

namespace {

class VornReader : public FullDatabase {
  protected:
    /// The Vorn text of what is read from a Vorn text.
    std::string ReadBack(const std::string& text) {
        const std::string path = directory_ / "in.vorn";
        MakeFile(path, text);
        return ReadAsVorn(path);
    }

    std::string Error(const std::string& text) {
        const std::string path = directory_ / "in.vorn";
        MakeFile(path, text);
        return ErrorOf(path);
    }
};

/// A file whose lists are empty but for the one that is given.
std::string Small(const std::string& definitions, const std::string& nodes, const std::string& messages) {
    const auto list = [](const std::string& lines) { return lines.empty() ? "[]" : "[\n" + lines + "\n]"; };
    return "{\n\"format\": \"Vorn\",\n\"version\": 1,\n\"database\": \"cabin\",\n\"attributes\": {},\n"
           "\"attribute_definitions\": " +
           list(definitions) + ",\n\"nodes\": " + list(nodes) + ",\n\"messages\": " + list(messages) +
           "\n}\n";
}

TEST_F(VornReader, FullDatabaseIsWrittenAsItsText) {
    EXPECT_EQ(ReadFile(WriteAs("out.vorn")), kFullVorn);
}

TEST_F(VornReader, EverythingIsReadBackByteForByte) {
    EXPECT_EQ(ReadBack(kFullVorn), kFullVorn);
}

TEST_F(VornReader, EmptyDatabaseIsReadBackByteForByte) {
    EXPECT_EQ(ReadBack(Small("", "", "")), Small("", "", ""));
}

TEST_F(VornReader, VornGoesToSqliteAndBackUnchanged) {
    const std::string sqlite = directory_ / "out.sqlite";
    MakeFile(directory_ / "in.vorn", kFullVorn);
    ASSERT_EQ(kestrel::WriteDatabase(*kestrel::ReadDatabase(directory_ / "in.vorn"), sqlite.c_str()),
              kKestrelOk);
    EXPECT_EQ(ReadFile(sqlite), ReadFile(WriteAs("direct.sqlite")));
    EXPECT_EQ(ReadAsVorn(sqlite), kFullVorn);
}

TEST_F(VornReader, KcdOfWhatIsReadIsThatOfTheDatabase) {
    const std::string kcd = directory_ / "out.kcd";
    MakeFile(directory_ / "in.vorn", kFullVorn);
    ASSERT_EQ(kestrel::WriteDatabase(*kestrel::ReadDatabase(directory_ / "in.vorn"), kcd.c_str()),
              kKestrelOk);
    EXPECT_EQ(ReadFile(kcd), ReadFile(WriteAs("direct.kcd")));
}

TEST_F(VornReader, LayoutAndOrderInsideRecordsDoNotMatter) {
    const std::string text = Small(
        R"(  {"object": "node", "name": "N", "type": "enumeration", "values": ["a", "b"], "default": "a"})",
        R"(  {"name": "Ä\"", "attributes": {"N": "b"}})",
        R"(  {"identifier": 1, "extended": true, "name": "M", "length": 2, "node": "Ä\"",
   "attributes": {},
   "signals": [
     {"name": "S", "start_bit": 3, "length": 4, "byte_order": "big_endian", "signed": true, "values": [[5, "x"]], "multiplexor": true, "multiplexer_value": 6}
   ]})");
    const std::string shuffled =
        "{\"format\":\"Vorn\",\r\n\t\"version\":1,\"database\":\"c\\u0061bin\",\"attributes\":{},"
        R"("attribute_definitions":[{"default":"a","values":["a","b"],"type":"enumeration","name":"N","object":"node"}],)"
        R"("nodes":[{"attributes":{"N":"b"},"name":"\u00c4\u0022"}],)"
        R"("messages":[{"signals":[{"multiplexer_value":6,"multiplexor":true,"values":[[5,"x"]],"signed":true,)"
        R"("byte_order":"big_endian","length":4,"start_bit":3,"name":"S"}],"attributes":{},"node":"\u00c4\"",)"
        R"("length":2,"name":"M","extended":true,"identifier":1}]})";
    EXPECT_EQ(ReadBack(text), text);
    EXPECT_EQ(ReadBack(shuffled), text);
}

TEST_F(VornReader, MultiplexorThatIsFalseIsNone) {
    const std::string signal =
        R"({"name": "S", "start_bit": 0, "length": 1, "byte_order": "big_endian", "signed": false)";
    const std::string head =
        "  {\"identifier\": 1, \"extended\": false, \"name\": \"M\", \"length\": 0, \"node\": null,\n"
        "   \"attributes\": {},\n   \"signals\": [\n     ";
    EXPECT_EQ(ReadBack(Small("", "", head + signal + ", \"multiplexor\": false, \"values\": []}\n   ]}")),
              Small("", "", head + signal + "}\n   ]}"));
}

constexpr const char* kDefinitions[] = {
    R"(  {"object": "node", "name": "N", "type": "integer", "minimum": -2.5, "maximum": 18446744073709551616, "default": 0.1})",
    R"(  {"object": "node", "name": "", "type": "string", "default": "\u0001\\\"/"})",
    R"(  {"object": "node", "name": "N", "type": "enumeration", "values": [], "default": "none"})",
    R"(  {"object": "node", "name": "N", "type": "enumeration", "values": ["a", "a", "b"], "default": "b"})",
    R"(  {"object": "node", "name": "123456789 123456789 123456789 ä", "type": "string", "default": ""})",
};

TEST_F(VornReader, DefinitionsAreReadBackByteForByte) {
    for (const char* definition : kDefinitions) {
        EXPECT_EQ(ReadBack(Small(definition, "", "")), Small(definition, "", ""));
    }
}

struct ValueCase {
    const char* definition;
    const char* value;
};

constexpr ValueCase kValues[] = {
    {R"("type": "integer", "minimum": 0, "maximum": 1, "default": 0)", "5"},  // the range is not enforced
    {R"("type": "integer", "minimum": 0, "maximum": 1, "default": 0)", "-9007199254740992"},
    {R"("type": "integer", "minimum": 0, "maximum": 1, "default": 0)", "0.1"},
    {R"("type": "string", "default": "")", R"("")"},
    {R"("type": "enumeration", "values": ["a", "b"], "default": "a")", R"("b")"},
    {R"("type": "enumeration", "values": ["a", "b"], "default": "c")", R"("c")"},
    {R"("type": "enumeration", "values": ["a", "a", "b"], "default": "a")", R"("b")"},  // not the second "a"
    {R"("type": "enumeration", "values": ["a", "a"], "default": "c")", R"("c")"},
};

TEST_F(VornReader, ValuesAreReadBackByteForByte) {
    for (const auto& [definition, value] : kValues) {
        const std::string text =
            Small("  {\"object\": \"node\", \"name\": \"N\", " + std::string(definition) + "}",
                  "  {\"name\": \"Radio\", \"attributes\": {\"N\": " + std::string(value) + "}}", "");
        EXPECT_EQ(ReadBack(text), text);
    }
}

TEST_F(VornReader, TextsOfAMegabyteAreReadBackByteForByte) {
    const std::string definition = R"(  {"object": "node", "name": "N", "type": "string", "default": ")" +
                                   std::string(1'000'000, 'd') + "\"}";
    const std::string node =
        R"(  {"name": "Radio", "attributes": {"N": ")" + std::string(1'000'000, 'x') + "\"}}";
    EXPECT_TRUE(ReadBack(Small(definition, node, "")) == Small(definition, node, ""));
}

TEST_F(VornReader, MessageFindsTheFirstOfTwoNodesWithItsNodesName) {
    const std::string text = Small(
        "", "  {\"name\": \"Radio\", \"attributes\": {}},\n  {\"name\": \"Radio\", \"attributes\": {}}",
        "  {\"identifier\": 1, \"extended\": false, \"name\": \"M\", \"length\": 0, \"node\": \"Radio\",\n"
        "   \"attributes\": {},\n   \"signals\": []}");
    MakeFile(directory_ / "in.vorn", text);
    const auto database = kestrel::ReadDatabase(directory_ / "in.vorn");
    EXPECT_EQ(database->Messages().front().node, &database->Nodes().front());
}

TEST_F(VornReader, ByteOrderMarkIsNoFault) {
    EXPECT_EQ(ReadBack("\xEF\xBB\xBF" + std::string(kFullVorn)), kFullVorn);
}

TEST_F(VornReader, NameThatIsNotUtf8IsReadAfterItWasWritten) {
    // The byte that is no UTF-8 is written as U+FFFD: three bytes, so that the name grows beyond 32.
    AddNode("123456789 \xE4 123456789 123456789");
    EXPECT_EQ(ErrorOf(WriteAs("out.vorn")), "");
    EXPECT_EQ(ErrorOf(WriteAs("out.sqlite")), "");
}

struct FileCase {
    const char* what;
    const char* text;
    const char* error;
};

constexpr FileCase kFiles[] = {
    {"an empty file", "", "the file is empty; vorn reads Vorn and SQLite"},
    {"only blanks", " \n\n ", "line 3: "},
    {"a number", "5", "line 1: a Vorn file is one object"},
    {"a text", "\n\"Vorn\"", "line 2: a Vorn file is one object"},
    {"a list", "[]", "line 1: a Vorn file is one object"},
    {"null", "null", "line 1: a Vorn file is one object"},
    {"an empty object", "{}", "line 1: the file is not complete"},
    {"half a byte order mark", "\xEF\xBB{}", "line 1: "},
    {"UTF-16", "\xFF\xFE{", "line 1: "},
    {"plain text", "Hello", "line 1: "},
    {"a SQLite file", "SQLite format 3", "line 1: "},
    {"XML", "<?xml version=\"1.0\"?>", "this is XML; vorn reads Vorn and SQLite"},
    {"a comment", "{ // Vorn\n}", "line 1: "},
};

TEST_F(VornReader, OtherFilesAreRefused) {
    for (const auto& [what, text, error] : kFiles) {
        const std::string found = Error(text);
        EXPECT_EQ(found.substr(0, std::string(error).size()), error) << what << ": " << found;
    }
}

TEST_F(VornReader, FilesAreReadAsWhatTheyAreWhateverTheirNames) {
    for (const auto& [written, called] :
         {std::pair("out.sqlite", "a.vorn"), std::pair("out.vorn", "b.sqlite"),
          std::pair("out.vorn", "c.kcd"), std::pair("out.db", "d.csv")}) {
        std::filesystem::rename(WriteAs(written), directory_ / called);
        EXPECT_EQ(ReadAsVorn(directory_ / called), kFullVorn) << called;
    }
}

TEST_F(VornReader, FilesThatCanNotBeReadAreRefused) {
    std::filesystem::create_directory(directory_ / "dir.vorn");
    EXPECT_EQ(ErrorOf(directory_ / "none.vorn"), "No such file or directory");
    EXPECT_EQ(ErrorOf(directory_ / "dir.vorn"), "Is a directory");
}

TEST_F(VornReader, PipesAndDevicesAreRefused) {
    ASSERT_EQ(mkfifo((directory_ / "pipe.vorn").c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf(directory_ / "pipe.vorn"), "Not a regular file");
    EXPECT_EQ(ErrorOf("/dev/zero"), "Not a regular file");
}

TEST_F(VornReader, FormatsThatAreWrittenOnlyAreNotRead) {
    EXPECT_EQ(ErrorOf(WriteAs("out.kcd")), "KCD files can be written, not read");
    EXPECT_EQ(ErrorOf(WriteAs("out.csv")), "CSV files can be written, not read");
}

TEST_F(VornReader, WhatIsNoDatabaseIsToldByItsContent) {
    const char* const kNames[] = {"text", "text.KCD", "text.csv", "text.db", "text.sqlite", "text.json"};
    for (const char* name : kNames) {
        MakeFile(directory_ / name, "hello");
        EXPECT_EQ(ErrorOf(directory_ / name), "this is neither Vorn nor SQLite") << name;
        MakeFile(directory_ / name, "{\"format\": \"Born\"}");
        EXPECT_EQ(ErrorOf(directory_ / name), "this is JSON, but no Vorn") << name;
    }
    MakeFile(directory_ / "text.VORN", "hello");
    EXPECT_TRUE(ErrorOf(directory_ / "text.VORN").starts_with("line 1: syntax error"));
}

}  // namespace
