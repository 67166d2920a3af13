/// Catalogs made to have very many signals or value descriptions. They end at a limit, soon.

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/signal_layout.h"

namespace tarvex::test::signal_limits_test {
namespace {

using nlohmann::json;
/// The message "Amp_Volume_Status" with these parameters.
json StatusOf(const NamedTypes& params) {
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", params)));
    conversion.flags.writeSignals = true;
    return MessageNamed(conversion.Database(), "Amp_Volume_Status");
}

struct RangeCase {
    const char* what;
    unsigned max;
    std::vector<CodeName> values;
    std::size_t count;
    json first;
    json last;
};

TEST(SignalLimits, ValueDescriptionsEndAtTheLargestRawValue) {
    const RangeCase kRows[] = {
        {"one byte", 255, {{"0..0x7FFFFFFF", "All"}}, 256, {0, "All"}, {255, "All"}},
        {"one byte, unsigned", 255, {{"0..0xFFFFFFFF", "All"}}, 256, {0, "All"}, {255, "All"}},
        {"one byte, open", 3, {{">3", "Many"}}, 253, {3, "Many"}, {255, "Many"}},
        {"one byte, and a code behind",
         255,
         {{"1..0xFFFFFFFF", "All"}, {"0", "Off"}},
         256,
         {1, "All"},
         {0, "Off"}},
        {"one byte, all beyond it",
         255,
         {{"0xFFFFFF00..0xFFFFFFFF", "None"}, {"9", "Nine"}},
         1,
         {9, "Nine"},
         {9, "Nine"}},
        {"two bytes", 65535, {{"65000..0xFFFFFFFF", "All"}}, 536, {65000, "All"}, {65535, "All"}},
        {"two bytes, open", 256, {{">65535", "Many"}}, 1, {65535, "Many"}, {65535, "Many"}},
    };
    for (const RangeCase& row : kRows) {
        SCOPED_TRACE(row.what);
        const json signals = StatusOf({{"Mode", Enumeration(row.max, row.values)}})["signals"];
        ASSERT_EQ(signals.size(), 1U);
        const json& values = signals[0]["values"];
        EXPECT_EQ(values.size(), row.count);
        EXPECT_EQ(values.front(), row.first);
        EXPECT_EQ(values.back(), row.last);
    }
}

std::vector<unsigned> ValuesOf(const sigblk* signal) {
    std::vector<unsigned> values;
    for (const valdesc* entry = signal->value_descriptions; entry != nullptr; entry = entry->next) {
        values.push_back(entry->value);
    }
    return values;
}

Values DescribedIn(const sigblk* signal) {
    Values values;
    for (const valdesc* entry = signal->value_descriptions; entry != nullptr; entry = entry->next) {
        values.emplace_back(entry->value, std::string(entry->text, strnlen(entry->text, sizeof entry->text)));
    }
    return values;
}

TEST(SignalLimits, AllSignalsShareABudgetOfValueDescriptions) {
    const std::string codes = Enumeration(255, {{"1..4", "Code"}});
    const Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", {{"A", codes}, {"B", codes}, {"C", codes}})));
    const ZMTOperation* operation = conversion.Catalog().GetAt(0x22)->GetAt(0x400)->GetAt(12);
    KestrelWriteManager manager(nullptr);
    const AliasNames aliases;
    msgblk* message = manager.CreateMessage(nullptr, 0);
    SignalBudget budget;
    budget.descriptions = Allowance(5);
    SignalWriter signals(manager, aliases, SignalOptions(), budget);
    signals.Write(*message, *operation);
    EXPECT_TRUE(signals.IsCut());
    EXPECT_EQ(ValuesOf(manager.GetSignal(*message, "A")), (std::vector<unsigned>{1, 2, 3, 4}));
    EXPECT_EQ(ValuesOf(manager.GetSignal(*message, "B")), (std::vector<unsigned>{1}));
    EXPECT_EQ(ValuesOf(manager.GetSignal(*message, "C")), (std::vector<unsigned>{}));
}

TEST(SignalLimits, AllMessagesShareABudgetOfSignals) {
    const std::string codes = Enumeration(255, {{"1", "Code"}});
    const Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", {{"A", codes}, {"B", codes}, {"C", codes}})));
    const ZMTOperation* operation = conversion.Catalog().GetAt(0x22)->GetAt(0x400)->GetAt(12);
    KestrelWriteManager manager(nullptr);
    const AliasNames aliases;
    SignalBudget budget;
    budget.signals = Allowance(4);
    SignalWriter signals(manager, aliases, SignalOptions(), budget);
    msgblk* first = manager.CreateMessage(nullptr, 0);
    msgblk* second = manager.CreateMessage(nullptr, 0);
    EXPECT_EQ(signals.Write(*first, *operation), 3);
    EXPECT_FALSE(signals.IsCut());
    EXPECT_EQ(signals.Write(*second, *operation), 3);  // the parameters are there all the same
    EXPECT_TRUE(signals.IsCut());
    EXPECT_NE(manager.GetSignal(*second, "AB"), nullptr);
    EXPECT_EQ(manager.GetSignal(*second, "BB"), nullptr);
}

struct RunCase {
    const char* what;
    Cost part;
    std::size_t signals;
    std::size_t descriptions;
};

/// Three signals with a description each. A signal takes 160 steps, 256 bytes of memory and 160 of files; a
/// description 50, 72 and 64.
TEST(SignalLimits, SignalsAndDescriptionsTakeFromTheRun) {
    const RunCase rows[] = {
        {"enough", {630, 984, 672}, 3, 3},
        {"a step less", {629, 984, 672}, 3, 2},
        {"a byte of memory less", {630, 983, 672}, 3, 2},
        {"a byte of files less", {630, 984, 671}, 3, 2},
        {"two signals", {420, 656, 448}, 2, 2},
        {"one", {160, 256, 160}, 1, 0},
        {"nothing", {0, 0, 0}, 0, 0},
    };
    const std::string codes = Enumeration(255, {{"1", "Code"}});
    const Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", {{"A", codes}, {"B", codes}, {"C", codes}})));
    const ZMTOperation* operation = conversion.Catalog().GetAt(0x22)->GetAt(0x400)->GetAt(12);
    for (const RunCase& row : rows) {
        SCOPED_TRACE(row.what);
        KestrelWriteManager manager(nullptr);
        const AliasNames aliases;
        msgblk* message = manager.CreateMessage(nullptr, 0);
        SignalWriter signals(manager, aliases, SignalOptions(), SignalBudget(0, RunAllowance(row.part)));
        EXPECT_EQ(signals.Write(*message, *operation), 3);
        std::size_t signalCount = 0;
        std::size_t descriptionCount = 0;
        for (const char* name : {"A", "B", "C"}) {
            if (const sigblk* signal = manager.GetSignal(*message, name)) {
                ++signalCount;
                descriptionCount += ValuesOf(signal).size();
            }
        }
        EXPECT_EQ(signalCount, row.signals);
        EXPECT_EQ(descriptionCount, row.descriptions);
        EXPECT_EQ(signals.IsCut(), descriptionCount < 3);
    }
}

TEST(SignalLimits, ALongNameTakesMoreSteps) {
    // 160 steps and one for every four letters: 200.
    const std::string name(160, 'n');
    const Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", {{name, UByte()}})));
    const ZMTOperation* operation = conversion.Catalog().GetAt(0x22)->GetAt(0x400)->GetAt(12);
    for (const std::size_t steps : {200U, 199U}) {
        KestrelWriteManager manager(nullptr);
        const AliasNames aliases;
        SignalWriter signals(manager, aliases, SignalOptions(),
                             SignalBudget(0, RunAllowance(Cost{steps, 1000, 1000})));
        signals.Write(*manager.CreateMessage(nullptr, 0), *operation);
        EXPECT_EQ(signals.IsCut(), steps < 200);
    }
}

TEST(SignalLimits, BudgetsGrowWithTheCatalog) {
    EXPECT_EQ(SignalBudget::kSignals.For(0), 1'048'576U);
    EXPECT_EQ(SignalBudget::kDescriptions.For(0), 4'194'304U);
    EXPECT_EQ(SignalBudget::kSignals.For(40'000'000), 11'048'576U);
    EXPECT_EQ(SignalBudget::kDescriptions.For(40'000'000), 14'194'304U);
}

struct ManyValuesCase {
    const char* what;
    std::vector<CodeName> values;
    Values described;
};

/// Five, here.
TEST(SignalLimits, OneSignalTakesSoManyValueDescriptions) {
    EXPECT_EQ(SignalBudget().descriptionsPerSignal, 65'536U);
    const ManyValuesCase rows[] = {
        {"three full ranges",
         {{"0..4", "A"}, {"0..4", "B"}, {"0..4", "C"}},
         {{0, "A"}, {1, "A"}, {2, "A"}, {3, "A"}, {4, "A"}}},
        {"the second range ends early",
         {{"0..2", "A"}, {"0..4", "B"}},
         {{0, "A"}, {1, "A"}, {2, "A"}, {0, "B"}, {1, "B"}}},
        {"a code too many", {{"0..4", "A"}, {"0", "B"}}, {{0, "A"}, {1, "A"}, {2, "A"}, {3, "A"}, {4, "A"}}},
        {"just as many", {{"1..4", "A"}, {"0", "B"}}, {{1, "A"}, {2, "A"}, {3, "A"}, {4, "A"}, {0, "B"}}},
        {"many equal codes",
         std::vector<CodeName>(300, {"7", "A"}),
         {{7, "A"}, {7, "A"}, {7, "A"}, {7, "A"}, {7, "A"}}},
    };
    SignalBudget budget;
    budget.descriptionsPerSignal = 5;
    for (const ManyValuesCase& row : rows) {
        SCOPED_TRACE(row.what);
        const Conversion conversion(BlockOf(
            PropertyOf("0x400", "Volume",
                       {{"Mode", Enumeration(255, row.values)}, {"Next", Enumeration(255, {{"9", "Z"}})}})));
        KestrelWriteManager manager(nullptr);
        const AliasNames aliases;
        msgblk* message = manager.CreateMessage(nullptr, 0);
        SignalWriter signals(manager, aliases, SignalOptions(), budget);
        EXPECT_EQ(signals.Write(*message, *conversion.Catalog().GetAt(0x22)->GetAt(0x400)->GetAt(12)), 2);
        EXPECT_FALSE(signals.IsCut());
        EXPECT_EQ(DescribedIn(manager.GetSignal(*message, "Mode")), row.described);
        EXPECT_EQ(DescribedIn(manager.GetSignal(*message, "Next")), (Values{{9, "Z"}}));
    }
}

/// 2048 fields of the 4095 have both of their signals; the length is that of all.
TEST(SignalLimits, OneMessageTakes4096Signals) {
    EXPECT_EQ(SignalBudget().signalsPerMessage, 4096U);
    NamedTypes fields;
    for (int k = 1; k <= 4095; ++k) {
        fields.push_back({"F" + std::to_string(k), UByte()});
    }
    const json message = StatusOf({{"Rec", Record(fields)}});
    EXPECT_EQ(message["length"], 4095);
    const json& signals = message["signals"];
    ASSERT_EQ(signals.size(), 4096U);
    EXPECT_EQ(json::array({signals[0], signals[1], signals[4094], signals[4095]}),
              SignalsOf({{"F1_M0", 7, 8, Unsigned, 0},
                         {"F1_M1", 7, 8, Unsigned, 1},
                         {"F2048_M0", 16383, 8, Unsigned, 0},
                         {"F2048_M800", 7, 8, Unsigned, 2048}}));
}

/// The 4,097th signal would be the second one of a field, or the second bit of a copy.
TEST(SignalLimits, TheLastSignalMayBeInTheMiddleOfAField) {
    NamedTypes fields;
    for (int k = 1; k <= 4095; ++k) {
        fields.push_back({"F", UByte()});
    }
    const json odd = StatusOf({{"Level", UByte()}, {"Rec", Record(fields)}});
    EXPECT_EQ(odd["length"], 4096);
    ASSERT_EQ(odd["signals"].size(), 4096U);
    EXPECT_EQ(odd["signals"].front()["name"], "Level");
    EXPECT_EQ(odd["signals"].back()["multiplexer_value"], 0);
    EXPECT_EQ(odd["signals"].back()["start_bit"], 8 + 2047 * 8 + 7);

    // Fields of five bits take ten signals: 409 fields, and five bits of the next one plus one of the copy.
    const std::string five = BitField(8, {{0, "A"}, {1, "B"}, {2, "C"}, {3, "D"}, {4, "E"}});
    const json bits = StatusOf({{"Rec", Record(NamedTypes(1000, {"Bits", five}))}});
    EXPECT_EQ(bits["length"], 1000);
    ASSERT_EQ(bits["signals"].size(), 4096U);
    EXPECT_EQ(bits["signals"][4094]["multiplexer_value"], 0);
    EXPECT_EQ(bits["signals"][4094]["start_bit"], 409 * 8 + 4);
    EXPECT_EQ(bits["signals"][4095]["multiplexer_value"], 410);
    EXPECT_EQ(bits["signals"][4095]["start_bit"], 0);
}

/// Messages do not share the limit.
TEST(SignalLimits, TheNextMessageStartsAnew) {
    const NamedTypes params{{"Rec", Record(NamedTypes(2100, {"F", UByte()}))}};
    Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", params) + PropertyOf("0x401", "Bass", params)));
    conversion.flags.writeSignals = true;
    const json messages = conversion.Database()["messages"];
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0]["signals"].size(), 4096U);
    EXPECT_EQ(messages[1]["signals"].size(), 4096U);
    EXPECT_EQ(messages[1]["length"], 2100);
}

/// 64 records in each other, each with these fields in front of the inner one.
std::string Nested(const std::string& innermost, const NamedTypes& front = {}) {
    std::string type = innermost;
    for (int level = 64; level >= 1; --level) {
        NamedTypes fields = front;
        fields.push_back({"N", type});
        type = Record(fields);
    }
    return type;
}

/// Every level doubles the signals of the level below: 2 to the 64th of them would be there.
TEST(SignalLimits, RecordsNested64LevelsDeepEndAtTheLimit) {
    const json message = StatusOf({{"Rec", Nested(UByte())}});
    EXPECT_EQ(message["length"], 1);
    const json& signals = message["signals"];
    ASSERT_EQ(signals.size(), 4096U);
    EXPECT_EQ(json::array({signals[0], signals[1], signals[2], signals[4094], signals[4095]}),
              SignalsOf({{"N_M0", 7, 8, Unsigned, 0},
                         {"N_M1", 7, 8, Unsigned, 1},
                         {"NB_M0", 7, 8, Unsigned, 0},
                         {"NDAT_M0", 7, 8, Unsigned, 0},  // 2047 is 3 * 26^2 + 0 * 26 + 19
                         {"NDAT_M1", 7, 8, Unsigned, 1}}));
}

TEST(SignalLimits, RecordsNested64LevelsDeepWithFieldsEndAtTheLimit) {
    const json message = StatusOf({{"Rec", Nested(UByte(), {{"A", UByte()}})}});
    EXPECT_EQ(message["length"], 65);
    const json& signals = message["signals"];
    ASSERT_EQ(signals.size(), 4096U);
    // The "A" of each level comes in front of the inner record.
    EXPECT_EQ(signals[0]["name"], "A_M0");
    EXPECT_EQ(signals[1]["name"], "A_M1");
    EXPECT_EQ(signals[126]["start_bit"], 63 * 8 + 7);
    EXPECT_EQ(signals[127]["start_bit"], 63 * 8 + 7);
    // "N" stands behind the 64th "A": in its place, then at the first bit of the 64th record.
    EXPECT_EQ(signals[128], SignalsOf({{"N_M0", 64 * 8 + 7, 8, Unsigned, 0}})[0]);
    EXPECT_EQ(signals[129], SignalsOf({{"N_M2", 63 * 8 + 7, 8, Unsigned, 2}})[0]);
}

struct SilentCase {
    const char* what;
    std::string innermost;
    int length;
};

TEST(SignalLimits, RecordsNested64LevelsDeepAroundNoSignalEndSoon) {
    const SilentCase kRows[] = {
        {"string", String(), 0},
        {"void", Void(), 0},
        {"bit field without bits", BitField(8, {}), 1},
        {"boolean whose bits have no room", Boolean({{8, "Over"}}), 1},
    };
    for (const SilentCase& row : kRows) {
        SCOPED_TRACE(row.what);
        const json message = StatusOf({{"Rec", Nested(row.innermost)}, {"Behind", UByte()}});
        EXPECT_EQ(message["length"], row.length);
        EXPECT_EQ(message["signals"], json::array());
    }
}

}  // namespace
}  // namespace tarvex::test::signal_limits_test
