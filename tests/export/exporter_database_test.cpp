/// The database that an export creates: its name, its attribute definitions and its own attribute values.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "export/conversion.h"

namespace tarvex::test::exporter_database_test {
namespace {

using nlohmann::json;

/// In the order of creation. The values of "OpType" have the indices 0 to 21.
constexpr const char* kDefinitionsOfAttributes = R"([
  {"object": "database", "name": "BusType", "type": "string", "default": ""},
  {"object": "database", "name": "MostXMLFile", "type": "string", "default": ""},
  {"object": "message", "name": "MostInstId", "type": "integer", "minimum": 0, "maximum": 255, "default": 0},
  {"object": "message", "name": "MostDestAdr", "type": "integer", "minimum": 0, "maximum": 65535,
   "default": 0},
  {"object": "message", "name": "MostSrcAdr", "type": "integer", "minimum": 0, "maximum": 65535,
   "default": 0},
  {"object": "message", "name": "Function", "type": "string", "default": ""},
  {"object": "message", "name": "FBlock", "type": "string", "default": "GeneralBlock"},
  {"object": "message", "name": "FunctionClass", "type": "enumeration", "values": ["Property", "Method"],
   "default": "Property"},
  {"object": "message", "name": "OpType", "type": "enumeration",
   "values": ["Set", "Get", "SetGet", "Increment", "Decrement", "GetInterface", "Status", "Interface",
              "Error", "Start", "Abort", "StartResult", "StartResultAck", "ErrorAck", "Processing", "Result",
              "ResultAck", "Reserved", "NDef", "ProcessingAck", "AbortAck", "StartAck"],
   "default": "NDef"},
  {"object": "node", "name": "MostNodeAdr", "type": "integer", "minimum": 0, "maximum": 65535,
   "default": 65535}
])";

TEST(ExportedDatabase, HasTenAttributeDefinitions) {
    EXPECT_EQ(Conversion(Block("0x22", "Amp")).Database()["attribute_definitions"],
              json::parse(kDefinitionsOfAttributes));
}

TEST(ExportedDatabase, HasBusTypeAndCatalogFileName) {
    const json expected = {{"BusType", "MOST"}, {"MostXMLFile", "Cat.xml"}};
    EXPECT_EQ(Conversion(Block("0x22", "Amp")).Database()["attributes"], expected);
}

struct DatabaseNameCase {
    const char* output;
    const char* database;
};
constexpr DatabaseNameCase kDatabaseNames[] = {
    {"out.vorn", "out"},     {"out/my.db.x", "my.db"},     {"out/plain", "plain"},
    {"v1.0/plain", "plain"}, {"v1.0/out.", "out"},         {"out/My Bus 2.vorn", "My Bus 2"},
    {"out/.vorn", ""},       {"./out/../a.b.vorn", "a.b"}, {"out\\my.db.x", "out\\my.db"},
};

TEST(ExportedDatabase, IsNamedAfterTheOutputFileWithoutItsLastExtension) {
    Conversion conversion(Block("0x22", "Amp"));
    std::filesystem::create_directory(conversion.Dir().File("out"));
    std::filesystem::create_directory(conversion.Dir().File("v1.0"));
    const WorkingDir workingDir(conversion.Dir().Path());
    for (const DatabaseNameCase& row : kDatabaseNames) {
        SCOPED_TRACE(row.output);
        conversion.output = row.output;
        EXPECT_EQ(conversion.Database()["database"], row.database);
    }
}

struct CatalogFileCase {
    const char* path;
    const char* fileName;
};
constexpr CatalogFileCase kCatalogFiles[] = {
    {"c.xml", "c.xml"},        {"a/b/c.xml", "c.xml"},
    {"a/b/../d.xml", "d.xml"}, {"a/sys.v2.xml", "sys.v2.xml"},
    {"a/catalog", "catalog"},  {"a/My Car.XML", "My Car.XML"},
};

TEST(ExportedDatabase, NamesTheCatalogFileWithoutItsDirectory) {
    const TempDir dir;
    std::filesystem::create_directories(dir.File("a/b"));
    const WorkingDir workingDir(dir.Path());
    for (const CatalogFileCase& row : kCatalogFiles) {
        SCOPED_TRACE(row.path);
        dir.Write(row.path, CatalogOf(Block("0x22", "Amp")));
        ZMostFCatManager manager;
        std::string name;
        ASSERT_TRUE(manager.Import(name, row.path, 0, ""));
        ZVornExporter exporter(manager.FindCatalog(name), "out.vorn", "", "", {}, {},
                               {.makeReadOnly = false});
        ASSERT_EQ(exporter.Export(), 0);
        EXPECT_EQ(json::parse(ReadFile("out.vorn"))["attributes"]["MostXMLFile"], row.fileName);
    }
}

TEST(ExportedDatabase, IsTheSameByteForByteForTheSameCatalog) {
    const std::string blocks =
        Block("0x23", "Tuner",
              Property("0x400", "Station", "<PCmdSet/><PCmdGet/>") + Method("0x100", "Seek")) +
        Block("0x22", "Amp");
    const auto contentOf = [](Conversion& conversion) {
        conversion.aliasNames = "Amp,Booster\n";
        conversion.networkConfiguration = "Gateway,0x101\nAmp,0x102\n";
        EXPECT_EQ(conversion.Export(), 0);
        return ReadFile(conversion.output);
    };
    Conversion one(blocks);
    Conversion two(blocks);
    const std::string first = contentOf(one);
    EXPECT_EQ(json::parse(first)["messages"].size(), 4U);
    EXPECT_EQ(contentOf(one), first);
    EXPECT_EQ(contentOf(two), first);
}

}  // namespace
}  // namespace tarvex::test::exporter_database_test
