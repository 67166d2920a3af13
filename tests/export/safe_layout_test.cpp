/// Safe layouts: records without a switch, switches at their place, and the attribute that tells how far the
/// signals of a message reach.

#include <string>

#include <gtest/gtest.h>

#include "export/signal_layout.h"
#include "support/catalog_import.h"

namespace tarvex::test::safe_layout_test {
namespace {

struct SafeCase {
    LayoutCase layout;
    const char* verdict;
};

nlohmann::json SafeDatabase(const NamedTypes& params, bool isSafe = true) {
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", params)));
    conversion.flags.writeSignals = true;
    conversion.flags.safeLayout = isSafe;
    return conversion.Database();
}

void Expect(const SafeCase& row) {
    SCOPED_TRACE(row.layout.what);
    const nlohmann::json message = MessageNamed(SafeDatabase(row.layout.params), "Amp_Volume_Status");
    EXPECT_EQ(message["length"], row.layout.length);
    EXPECT_EQ(message["signals"], SignalsOf(row.layout.signals));
    EXPECT_EQ(message["attributes"]["Layout"], row.verdict);
}

/// A switch whose first bit is not bit 0.
SignalRow SwitchAt(int startBit) {
    return {"PosX", startBit, 16, Switch};
}

const std::string kInner = Record({{"C", UByte()}, {"D", UWord()}});

TEST(SafeLayout, HasEachFieldOfAPlainRecordOnceAndWhatFollows) {
    const SafeCase rows[] = {
        // byte 0: A   1 2: B   3: Z
        {{"a record",
          {{"R", Record({{"A", UByte()}, {"B", SWord()}})}, {"Z", UByte()}},
          4,
          {{"A", 7, 8}, {"B", 15, 16, Signed}, {"Z", 31, 8}}},
         "Complete"},
        // byte 0: A   1: C   2 3: D   4: B   5: Z
        {{"a record in a record",
          {{"R", Record({{"A", UByte()}, {"I", kInner}, {"B", UByte()}})}, {"Z", UByte()}},
          6,
          {{"A", 7, 8}, {"C", 15, 8}, {"D", 23, 16}, {"B", 39, 8}, {"Z", 47, 8}}},
         "Complete"},
        {{"two records",
          {{"R", Record({{"A", UByte()}})}, {"S", Record({{"B", UByte()}})}},
          2,
          {{"A", 7, 8}, {"B", 15, 8}}},
         "Complete"},
        {{"until a string inside",
          {{"R", Record({{"A", UByte()}, {"T", String()}, {"B", UByte()}})}, {"Z", UByte()}},
          1,
          {{"A", 7, 8}}},
         "Open"},
        {{"a void parameter takes nothing", {{"V", Void()}, {"A", UByte()}}, 1, {{"A", 7, 8}}}, "Complete"},
        {{"until an array", {{"A", UByte()}, {"L", Array()}, {"B", UByte()}}, 1, {{"A", 7, 8}}}, "Open"},
    };
    for (const SafeCase& row : rows) {
        Expect(row);
    }
}

TEST(SafeLayout, HasASwitchAtItsOwnFirstByte) {
    const SafeCase rows[] = {
        // byte 0: N   1 2: Pos   3: A   4: B for the value 0
        {{"behind a number",
          {{"N", UByte()}, {"Pos", UWord()}, {"Data", Record({{"A", UByte()}, {"B", UByte()}})}},
          5,
          {{"N", 7, 8},
           SwitchAt(8),
           {"A_M0", 31, 8, Unsigned, 0},
           {"A_M1", 31, 8, Unsigned, 1},
           {"B_M0", 39, 8, Unsigned, 0},
           {"B_M2", 31, 8, Unsigned, 2}}},
         "Complete"},
        // byte 0 1: Pos   2: A   3: C   4 5: D for the value 0; C and D from byte 2 on for the value 2
        {{"a record in the chosen one",
          {{"Pos", UWord()}, {"Data", Record({{"A", UByte()}, {"I", kInner}})}},
          6,
          {SwitchAt(0),
           {"A_M0", 23, 8, Unsigned, 0},
           {"A_M1", 23, 8, Unsigned, 1},
           {"C_M0", 31, 8, Unsigned, 0},
           {"D_M0", 39, 16, Unsigned, 0},
           {"C_M2", 23, 8, Unsigned, 2},
           {"D_M2", 31, 16, Unsigned, 2}}},
         "Complete"},
        {{"what stands behind the chosen record has no place",
          {{"Pos", UWord()}, {"Data", Record({{"A", UByte()}})}, {"Z", UByte()}},
          3,
          {SwitchAt(0), {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}},
         "Open"},
        // A "Pos" of one byte chooses too, but no signal can say so.
        {{"another size of Pos", {{"Pos", UByte()}, {"Data", Record({{"A", UByte()}})}}, 1, {{"Pos", 7, 8}}},
         "Open"},
        {{"a Pos inside a record",
          {{"R", Record({{"Pos", UWord()}, {"Data", Record({{"A", UByte()}})}, {"B", UByte()}})},
           {"Z", UByte()}},
          2,
          {{"Pos", 7, 16}}},
         "Open"},
        {{"a Pos without a record", {{"Pos", UWord()}, {"Data", Array()}}, 2, {{"Pos", 7, 16}}}, "Open"},
    };
    for (const SafeCase& row : rows) {
        Expect(row);
    }
}

TEST(SafeLayout, EndsWhereBitsCanNotBeCounted) {
    NamedTypes params;
    const std::string large = Number("TULong");
    NamedTypes fields;
    for (int field = 0; field < 1000; ++field) {
        fields.push_back({"F" + std::to_string(field), large});
    }
    // 2,048 numbers of 32 bits have a place, 65,536 bits.
    params = {{"A", Record(fields)}, {"B", Record(fields)}, {"C", Record(fields)}};
    const nlohmann::json message = MessageNamed(SafeDatabase(params), "Amp_Volume_Status");
    EXPECT_EQ(message["signals"].size(), 2048U);
    EXPECT_EQ(message["signals"].back()["start_bit"], 65536 - 32 + 7);
    EXPECT_EQ(message["length"], 8192);
}

TEST(SafeLayout, AttributeStandsBehindAllOthersAndOnlyThere) {
    const nlohmann::json safe = SafeDatabase({{"A", UByte()}});
    const nlohmann::json definition = safe["attribute_definitions"].back();
    EXPECT_EQ(definition, nlohmann::json::parse(
                              R"({"object": "message", "name": "Layout", "type": "enumeration",
                                  "values": ["Complete", "Open", "Incomplete"], "default": "Complete"})"));
    const nlohmann::json other = SafeDatabase({{"A", UByte()}}, false);
    EXPECT_EQ(other["attribute_definitions"].size() + 1, safe["attribute_definitions"].size());
    EXPECT_FALSE(other["messages"][0]["attributes"].contains("Layout"));
}

}  // namespace
}  // namespace tarvex::test::safe_layout_test
