/// Setting attribute values.

#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support.h"

namespace {

class Attributes : public DatabaseTest {
  protected:
    /// The line with the values of the database.
    std::string DatabaseValues() {
        const std::string text = Written();
        const std::size_t begin = text.find("\"attributes\": ");
        return text.substr(begin, text.find('\n', begin) - begin);
    }
};

TEST_F(Attributes, LaterValueReplacesAnEarlierOneInItsPlace) {
    DefineString(AttrObject::Database, "Author", "");
    DefineInteger(AttrObject::Database, "Revision", 0, 9, 0);
    manager.SetAttrValue(key, "Author", Text("Ada"));
    manager.SetAttrValue(key, "Revision", Number(1));
    manager.SetAttrValue(key, "Author", Text("Grace"));
    manager.SetAttrValue(key, "Revision", Number(2));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Author": "Grace", "Revision": 2},)");
}

TEST_F(Attributes, SameTextSetAgainStaysValid) {
    DefineString(AttrObject::Database, "Author", "");
    const kestrel_attr_value_t author = Text("Ada");
    manager.SetAttrValue(key, "Author", author);
    manager.SetAttrValue(key, "Author", author);
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Author": "Ada"},)");
}

TEST_F(Attributes, NullTextCountsAsEmpty) {
    DefineString(AttrObject::Database, "Author", "nobody");
    manager.SetAttrValue(key, "Author", {.text = nullptr});
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Author": ""},)");
}

TEST_F(Attributes, ValueWithoutDefinitionIsIgnored) {
    DefineInteger(AttrObject::Node, "Slot", 0, 9, 0);
    manager.SetAttrValue(key, "Slot", Number(1));
    manager.SetAttrValue(key, "Unheard", Number(1));
    manager.SetAttrValue(key, "Slo", Number(1));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {},)");
}

TEST_F(Attributes, DefinitionsOfOneNameAreToldApartByTheKindOfObject) {
    DefineInteger(AttrObject::Database, "Level", 0, 9, 0);
    DefineString(AttrObject::Node, "Level", "");
    DefineEnumeration(AttrObject::Message, "Level", "Low\nHigh", "Low");
    manager.SetAttrValue(*manager.CreateMessage(key, 0), "Level", Number(1));
    manager.SetAttrValue(*manager.CreateNode(key, 0), "Level", Text("two"));
    manager.SetAttrValue(key, "Level", Number(3));
    const nlohmann::json parsed = nlohmann::json::parse(Written());
    EXPECT_EQ(parsed["messages"][0]["attributes"].dump(), R"({"Level":"High"})");
    EXPECT_EQ(parsed["nodes"][0]["attributes"].dump(), R"({"Level":"two"})");
    EXPECT_EQ(parsed["attributes"].dump(), R"({"Level":3})");
}

TEST_F(Attributes, FirstOfTwoDefinitionsWithOneNameCounts) {
    DefineEnumeration(AttrObject::Database, "Level", "Low\nHigh", "Low");
    DefineInteger(AttrObject::Database, "Level", 0, 9, 0);
    manager.SetAttrValue(key, "Level", Number(1));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Level": "High"},)");
}

TEST_F(Attributes, NameIsCutAt32BytesLikeTheDefinitions) {
    const char* name = "AttributeWithAVeryLongNameIndeed, longer than a record holds";
    DefineInteger(AttrObject::Database, name, 0, 9, 0);
    manager.SetAttrValue(key, name, Number(1));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"AttributeWithAVeryLongNameIndeed": 1},)");
}

struct EnumerationCase {
    const char* values;
    double index;
    const char* written;
};

const EnumerationCase kEnumerations[] = {
    // values      index  written
    {"a\nb\nc", 0, R"("a")"},
    {"a\nb\nc", 2, R"("c")"},
    {"a\nb\nc", 3, R"("default")"},
    {"a\nb\nc", -1, R"("default")"},
    {"a\nb\nc", NAN, R"("default")"},
    {"a\nb\nc", 1e300, R"("default")"},
    {"a", 0, R"("a")"},
    {"a\n", 1, R"("")"},
    {"", 0, R"("default")"},
};

TEST_F(Attributes, EnumerationIsWrittenAsNameAndOutOfRangeAsDefault) {
    for (const EnumerationCase& row : kEnumerations) {
        const char* database = nullptr;
        manager.CreateDatabase("cabin", &database, nullptr);
        key = database;
        DefineEnumeration(AttrObject::Database, "E", row.values, "default");
        manager.SetAttrValue(key, "E", Number(row.index));
        EXPECT_EQ(DatabaseValues(), R"("attributes": {"E": )" + std::string(row.written) + "},")
            << row.values << ' ' << row.index;
    }
}

TEST_F(Attributes, EmptyValueListHasNoValues) {
    DefineEnumeration(AttrObject::Database, "E", "", "default");
    Define(AttrObject::Database, "F", AttrType::Enumeration);
    const nlohmann::json definitions = nlohmann::json::parse(Written())["attribute_definitions"];
    EXPECT_EQ(definitions[0]["values"].dump(), "[]");
    EXPECT_EQ(definitions[1]["values"].dump(), "[]");
    EXPECT_EQ(definitions[1]["default"], "");
}

TEST_F(Attributes, NullNameIsIgnored) {
    DefineInteger(AttrObject::Database, "", 0, 9, 0);
    DefineInteger(AttrObject::Node, "", 0, 9, 0);
    DefineInteger(AttrObject::Message, "", 0, 9, 0);
    manager.SetAttrValue(key, nullptr, Number(1));
    manager.SetAttrValue(*manager.CreateNode(key, 0), nullptr, Number(1));
    manager.SetAttrValue(*manager.CreateMessage(key, 0), nullptr, Number(1));
    const nlohmann::json parsed = nlohmann::json::parse(Written());
    EXPECT_TRUE(parsed["attributes"].empty());
    EXPECT_TRUE(parsed["nodes"][0]["attributes"].empty());
    EXPECT_TRUE(parsed["messages"][0]["attributes"].empty());
}

}  // namespace
