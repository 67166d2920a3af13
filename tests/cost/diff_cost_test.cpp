/// Catalogs that differ in everything are compared with work that grows with their size, not with its square.

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "cost/work.h"
#include "review/catalog_reading.h"
#include "review/diff.h"
#include "support/catalog_import.h"
#include "support/temp_dir.h"

namespace tarvex::test::diff_cost_test {
namespace {

/// `piece` of 0, 1, ..., one after the other.
std::string Each(unsigned count, const std::function<std::string(unsigned number)>& piece) {
    std::string text;
    for (unsigned number = 0; number < count; ++number) {
        text += piece(number);
    }
    return text;
}

std::string Enumeration(unsigned count, unsigned firstCode, const std::string& name, bool isNumbered) {
    return CatalogOfParams(
        Param("Mode", "<TEnum TypeRef=\"type_enum\" TEnumMax=\"65535\">" + Each(count, [&](unsigned number) {
                          return "<TEnumValue Code=\"" + std::to_string(firstCode + number) + "\">" + name +
                                 (isNumbered ? std::to_string(number) : "") + "</TEnumValue>";
                      }) + "</TEnum>"));
}

std::string Fields(unsigned count, bool areTurned, const char* name) {
    return CatalogOfParams(Param(
        "R", "<TRecord TypeRef=\"type_record\" NElements=\"" + std::to_string(count) + "\">" +
                 Each(count,
                      [&](unsigned number) {
                          const unsigned called = areTurned ? count - number : number;
                          return "<TRecordField FieldIdx=\"" + std::to_string(number + 1) +
                                 "\"><TRecordFieldName>" + (*name != 0 ? name : std::to_string(called)) +
                                 "</TRecordFieldName><TString TypeRef=\"type_string\" MaxSize=\"" +
                                 std::to_string(called + 1) + "\"/></TRecordField>";
                      }) +
                 "</TRecord>"));
}

std::string Cases(unsigned count, const char* members) {
    return CatalogOfParams(Param(
        "S",
        "<TStream TypeRef=\"type_stream\" Length=\"9\">" + Each(count, [&](unsigned number) {
            return "<StreamCase><PosDescription PosX=\"#NULL#\" PosY=\"" + std::to_string(number) +
                   "\"/><StreamParam><ParamName ParamIdx=\"1\">" + members +
                   "</ParamName><TString TypeRef=\"type_string\" MaxSize=\"9\"/></StreamParam></StreamCase>";
        }) + "</TStream>"));
}

std::string Functions(unsigned count, unsigned firstId, const char* name) {
    return CatalogOf(BlockOf(Each(count, [&](unsigned number) {
        return "<Function><FunctionID>" + std::to_string(firstId + number) + "</FunctionID><FunctionName>" +
               name + std::to_string(number) + "</FunctionName><FunctionClass><Property><PUnclassified>" +
               Param("V", "<TBool TypeRef=\"type_bool\"/>") +
               "</PUnclassified></Property></FunctionClass></Function>";
    })));
}

/// Before and after, so large.
struct Row {
    const char* name;
    std::function<std::string(unsigned count)> before;
    std::function<std::string(unsigned count)> after;
};

Work WorkOfDiff(const Row& row, unsigned count) {
    const TempDir dir;
    const review::CatalogReading before(dir.Write("before.xml", row.before(count)), {});
    const review::CatalogReading after(dir.Write("after.xml", row.after(count)), {});
    std::size_t changes = 0;
    const Work work =
        WorkOf([&] { changes = review::CompareCatalogs(*before.Catalog(), *after.Catalog(), {}).size(); });
    EXPECT_GE(changes, count / 2) << row.name;
    return work;
}

TEST(DiffCost, GrowsInProportionToTheCatalogs) {
    const Row rows[] = {
        {"values of one name", [](unsigned count) { return Enumeration(count, 0, "A", false); },
         [](unsigned count) { return Enumeration(count, count / 2, "A", false); }},
        {"codes that shift", [](unsigned count) { return Enumeration(count, 0, "A", true); },
         [](unsigned count) { return Enumeration(count, 1, "A", true); }},
        {"other names of values", [](unsigned count) { return Enumeration(count, 0, "A", true); },
         [](unsigned count) { return Enumeration(count, 0, "B", true); }},
        {"fields turned round", [](unsigned count) { return Fields(count, false, ""); },
         [](unsigned count) { return Fields(count, true, ""); }},
        {"fields of one name", [](unsigned count) { return Fields(count, false, "F"); },
         [](unsigned count) { return Fields(count, true, "F"); }},
        {"other fields", [](unsigned count) { return Fields(count, false, "F"); },
         [](unsigned count) { return Fields(count, false, "G"); }},
        {"cases", [](unsigned count) { return Cases(count, "A"); },
         [](unsigned count) { return Cases(count, "B"); }},
        {"functions that shift", [](unsigned count) { return Functions(count, 0, "F"); },
         [](unsigned count) { return Functions(count, 1, "F"); }},
        {"other functions", [](unsigned count) { return Functions(count, 0, "F"); },
         [](unsigned count) { return Functions(count, 0, "G"); }},
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(GrowsInProportion(WorkOfDiff(row, 150), WorkOfDiff(row, 300))) << row.name;
    }
}

}  // namespace
}  // namespace tarvex::test::diff_cost_test
