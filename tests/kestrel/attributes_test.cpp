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
    manager_.SetAttrValue(key_, "Author", Text("Ada"));
    manager_.SetAttrValue(key_, "Revision", Number(1));
    manager_.SetAttrValue(key_, "Author", Text("Grace"));
    manager_.SetAttrValue(key_, "Revision", Number(2));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Author": "Grace", "Revision": 2},)");
}

TEST_F(Attributes, SameTextSetAgainStaysValid) {
    DefineString(AttrObject::Database, "Author", "");
    const kestrel_attr_value_t author = Text("Ada");
    manager_.SetAttrValue(key_, "Author", author);
    manager_.SetAttrValue(key_, "Author", author);
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Author": "Ada"},)");
}

TEST_F(Attributes, NullTextCountsAsEmpty) {
    DefineString(AttrObject::Database, "Author", "nobody");
    manager_.SetAttrValue(key_, "Author", {.text = nullptr});
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Author": ""},)");
}

TEST_F(Attributes, ValueWithoutDefinitionIsIgnored) {
    DefineInteger(AttrObject::Node, "Slot", 0, 9, 0);
    manager_.SetAttrValue(key_, "Slot", Number(1));
    manager_.SetAttrValue(key_, "Unheard", Number(1));
    manager_.SetAttrValue(key_, "Slo", Number(1));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {},)");
}

TEST_F(Attributes, DefinitionsOfOneNameAreToldApartByTheKindOfObject) {
    DefineInteger(AttrObject::Database, "Level", 0, 9, 0);
    DefineString(AttrObject::Node, "Level", "");
    DefineEnumeration(AttrObject::Message, "Level", "Low\nHigh", "Low");
    manager_.SetAttrValue(*manager_.CreateMessage(key_, 0), "Level", Number(1));
    manager_.SetAttrValue(*manager_.CreateNode(key_, 0), "Level", Text("two"));
    manager_.SetAttrValue(key_, "Level", Number(3));
    const nlohmann::json parsed = nlohmann::json::parse(Written());
    EXPECT_EQ(parsed["messages"][0]["attributes"].dump(), R"({"Level":"High"})");
    EXPECT_EQ(parsed["nodes"][0]["attributes"].dump(), R"({"Level":"two"})");
    EXPECT_EQ(parsed["attributes"].dump(), R"({"Level":3})");
}

TEST_F(Attributes, FirstOfTwoDefinitionsWithOneNameCounts) {
    DefineEnumeration(AttrObject::Database, "Level", "Low\nHigh", "Low");
    DefineInteger(AttrObject::Database, "Level", 0, 9, 0);
    manager_.SetAttrValue(key_, "Level", Number(1));
    EXPECT_EQ(DatabaseValues(), R"("attributes": {"Level": "High"},)");
}

TEST_F(Attributes, NameIsCutAt32BytesLikeTheDefinitions) {
    const char* name = "AttributeWithAVeryLongNameIndeed, longer than a record holds";
    DefineInteger(AttrObject::Database, name, 0, 9, 0);
    manager_.SetAttrValue(key_, name, Number(1));
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
        manager_.CreateDatabase("cabin", &database, nullptr);
        key_ = database;
        DefineEnumeration(AttrObject::Database, "E", row.values, "default");
        manager_.SetAttrValue(key_, "E", Number(row.index));
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
    manager_.SetAttrValue(key_, nullptr, Number(1));
    manager_.SetAttrValue(*manager_.CreateNode(key_, 0), nullptr, Number(1));
    manager_.SetAttrValue(*manager_.CreateMessage(key_, 0), nullptr, Number(1));
    const nlohmann::json parsed = nlohmann::json::parse(Written());
    EXPECT_TRUE(parsed["attributes"].empty());
    EXPECT_TRUE(parsed["nodes"][0]["attributes"].empty());
    EXPECT_TRUE(parsed["messages"][0]["attributes"].empty());
}

}  // namespace
