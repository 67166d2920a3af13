/// Which records of two databases mean the same.

#include <gtest/gtest.h>

#include "cabin.h"
#include "vorn/compare_report.h"

namespace vorn::test {
namespace {

/// What a message of a function carries: block, function and operation.
AttributeRows Meaning(const char* block, const char* function, const char* operation) {
    return {{"FBlock", block}, {"Function", function}, {"OpType", operation}};
}

MessageRow Row(std::uint32_t identifier, const char* name, std::vector<SignalRow> signals = {},
               AttributeRows attributes = {}) {
    return {identifier | kExtendedIdentifier, name, 4, std::move(signals), "", std::move(attributes)};
}

Sample Of(std::vector<MessageRow> messages, std::vector<NodeRow> nodes = {}) {
    return {.definitions = {String("message", "FBlock", ""), String("message", "Function", ""),
                            Enumeration("message", "OpType", {"Set", "Get"}, "Set")},
            .nodes = std::move(nodes),
            .messages = std::move(messages)};
}

struct MeaningCase {
    const char* what;
    Sample before;
    Sample after;
    const char* text;  // with the summary
};

std::vector<MeaningCase> Letters() {
    return {
        {"a name comes before an equal one", Of({Row(2, "M2", {{"Temp", 0, 8}})}),
         Of({Row(1, "M1", {{"Temp", 0, 8}}), Row(2, "M2", {{"TempB", 0, 8}})}),
         "+ message 0x1 extended M1\nmessages: 1 added; 1 name differs only in what makes it unique\n"},
        {"one of three goes",
         Of({Row(1, "M1", {{"Temp", 0, 8}}), Row(2, "M2", {{"TempB", 0, 8}}),
             Row(3, "M3", {{"TempC", 0, 8}})}),
         Of({Row(1, "M1", {{"Temp", 0, 8}}), Row(3, "M3", {{"TempB", 0, 8}})}),
         "- message 0x2 extended M2\nmessages: 1 removed; 1 name differs only in what makes it unique\n"},
        {"in front of what the multiplexor adds",
         Of({Row(1, "M1", {{"PosX", 0, 8, kSelector}, {"Temp_M1f", 8, 8, kSelected, 31}}),
             Row(2, "M2", {{"PosBX", 0, 8, kSelector}, {"TempB_M1f", 8, 8, kSelected, 31}})}),
         Of({Row(2, "M2", {{"PosX", 0, 8, kSelector}, {"Temp_M1f", 8, 8, kSelected, 31}}),
             Row(1, "M1", {{"PosBX", 0, 8, kSelector}, {"TempB_M1f", 8, 8, kSelected, 31}})}),
         "4 names differ only in what makes them unique\n"},
        {"letters that nothing comes before belong to the name", Of({Row(1, "M1", {{"TempB", 0, 8}})}),
         Of({Row(1, "M1", {{"TempC", 0, 8}})}),
         "~ message 0x1 extended M1\n  ~ signal TempC\n      name: \"TempB\" -> \"TempC\"\n"
         "messages: 1 changed; signals: 1 changed\n"},
        {"nor are those letters that do not follow",
         Of({Row(1, "M1", {{"Vol", 0, 8}}), Row(2, "M2", {{"VolMIN", 0, 8}})}),
         Of({Row(1, "M1", {{"Vol", 0, 8}}), Row(2, "M2", {{"VolMAX", 0, 8}})}),
         "~ message 0x2 extended M2\n  ~ signal VolMAX\n      name: \"VolMIN\" -> \"VolMAX\"\n"
         "messages: 1 changed; signals: 1 changed\n"},
        {"nor do letters count where a name is missing on the way to the one without any",
         Of({Row(1, "M1", {{"AxisX", 0, 8}, {"AxisY", 8, 8}, {"AxisZ", 16, 8}})}),
         Of({Row(1, "M1", {{"AxisX", 0, 8}, {"AxisZ", 8, 8}, {"AxisY", 16, 8}})}),
         "~ message 0x1 extended M1\n  ~ signal AxisZ\n      start_bit: \"16\" -> \"8\"\n"
         "  ~ signal AxisY\n      start_bit: \"8\" -> \"16\"\nmessages: 1 changed; signals: 2 changed\n"},
        {"as when it is the one without any", Of({Row(1, "M1", {{"TempB", 0, 8}, {"TempC", 8, 8}})}),
         Of({Row(1, "M1", {{"TempB", 0, 8}, {"Temp", 8, 8}})}),
         "~ message 0x1 extended M1\n  ~ signal Temp\n      name: \"TempC\" -> \"Temp\"\n"
         "messages: 1 changed; signals: 1 changed\n"},
        {"letters behind a name that ends with capitals",
         Of({Row(2, "M2", {{"DiscID", 0, 8}, {"AM", 8, 8}}), Row(3, "M3", {{"DiscIDB", 0, 8}, {"AMB", 8, 8}}),
             Row(4, "M4", {{"DiscIDC", 0, 8}, {"AMC", 8, 8}})}),
         Of({Row(1, "M1", {{"DiscID", 0, 8}, {"AM", 8, 8}}), Row(2, "M2", {{"DiscIDB", 0, 8}, {"AMB", 8, 8}}),
             Row(3, "M3", {{"DiscIDC", 0, 8}, {"AMC", 8, 8}}),
             Row(4, "M4", {{"DiscIDD", 0, 8}, {"AMD", 8, 8}})}),
         "+ message 0x1 extended M1\nmessages: 1 added; 6 names differ only in what makes them unique\n"},
        {"letters that may belong to either of two names",
         Of({Row(1, "M1", {{"Vol", 0, 8}}), Row(2, "M2", {{"VolB", 0, 8}}), Row(3, "M3", {{"VolBB", 0, 8}})}),
         Of({Row(1, "M1", {{"Vol", 0, 8}}), Row(3, "M3", {{"VolB", 0, 8}})}),
         "- message 0x2 extended M2\nmessages: 1 removed; 1 name differs only in what makes it unique\n"},
        {"an equal name is equal whatever letters it has", Of({Row(2, "M2", {{"TempB", 0, 8}})}),
         Of({Row(1, "M1", {{"Temp", 0, 8}}), Row(2, "M2", {{"TempB", 0, 8}})}),
         "+ message 0x1 extended M1\nmessages: 1 added\n"},
        {"digits of messages", Of({Row(2, "Amp_Volume_Set")}),
         Of({Row(1, "Amp_Volume_Set"), Row(2, "Amp_Volume_Set00")}),
         "+ message 0x1 extended Amp_Volume_Set\n"
         "messages: 1 added; 1 name differs only in what makes it unique\n"},
        {"digits that take the place of the last characters",
         Of({Row(1, "Abcdefghijklmnopqrstuvwxyz012345"), Row(2, "Abcdefghijklmnopqrstuvwxyz012300"),
             Row(3, "Abcdefghijklmnopqrstuvwxyz012301")}),
         Of({Row(2, "Abcdefghijklmnopqrstuvwxyz012345"), Row(3, "Abcdefghijklmnopqrstuvwxyz012300")}),
         "- message 0x1 extended Abcdefghijklmnopqrstuvwxyz012345\n"
         "messages: 1 removed; 2 names differ only in what makes them unique\n"},
        {"digits that nothing comes before", Of({Row(1, "Level10")}), Of({Row(1, "Level12")}),
         "~ message 0x1 extended Level12\n    name: \"Level10\" -> \"Level12\"\nmessages: 1 changed\n"},
        {"digits that are not counted from 00", Of({Row(1, "Set10"), Row(2, "Set11"), Row(3, "Set12")}),
         Of({Row(1, "Set10"), Row(2, "Set12"), Row(3, "Set11")}),
         "~ message 0x2 extended Set12\n    name: \"Set11\" -> \"Set12\"\n"
         "~ message 0x3 extended Set11\n    name: \"Set12\" -> \"Set11\"\nmessages: 2 changed\n"},
    };
}

std::vector<MeaningCase> Moves() {
    return {
        {"found by block, function and operation",
         Of({Row(1, "Old_Set", {}, Meaning("Amp", "Volume", "Set"))}),
         Of({Row(2, "New_Set", {}, Meaning("Amp", "Volume", "Set"))}),
         "> message 0x2 extended New_Set\n    identifier: \"0x1\" -> \"0x2\"\n    name: \"Old_Set\" -> "
         "\"New_Set\"\n"
         "messages: 1 moved\n"},
        {"which come before the name",
         Of({Row(1, "A", {}, Meaning("Amp", "Volume", "Set")),
             Row(2, "B", {}, Meaning("Amp", "Volume", "Get"))}),
         Of({Row(3, "B", {}, Meaning("Amp", "Volume", "Set")),
             Row(4, "A", {}, Meaning("Amp", "Volume", "Get"))}),
         "> message 0x3 extended B\n    identifier: \"0x1\" -> \"0x3\"\n    name: \"A\" -> \"B\"\n"
         "> message 0x4 extended A\n    identifier: \"0x2\" -> \"0x4\"\n    name: \"B\" -> \"A\"\n"
         "messages: 2 moved\n"},
        {"an operation that is not said is no meaning",
         Of({Row(1, "A", {}, {{"FBlock", "Amp"}, {"Function", "Volume"}})}),
         Of({Row(2, "B", {}, {{"FBlock", "Amp"}, {"Function", "Volume"}})}),
         "+ message 0x2 extended B\n- message 0x1 extended A\nmessages: 1 added, 1 removed\n"},
        {"an identifier comes before all", Of({Row(1, "A"), Row(2, "B")}), Of({Row(1, "B"), Row(2, "A")}),
         "~ message 0x1 extended B\n    name: \"A\" -> \"B\"\n~ message 0x2 extended A\n    name: \"B\" -> "
         "\"A\"\n"
         "messages: 2 changed\n"},
        {"signals of a moved message are compared", Of({Row(1, "A", {{"S", 0, 8}})}),
         Of({Row(2, "A", {{"S", 0, 9}})}),
         "> message 0x2 extended A\n    identifier: \"0x1\" -> \"0x2\"\n  ~ signal S\n"
         "      length: \"8\" -> \"9\"\nmessages: 1 moved; signals: 1 changed\n"},
        {"messages without names do not belong together", Of({Row(1, "")}), Of({Row(2, "")}),
         "+ message 0x2 extended \n- message 0x1 extended \nmessages: 1 added, 1 removed\n"},
    };
}

std::vector<MeaningCase> Signals() {
    const SignalRow low{"Level", 0, 8};
    const SignalRow high{"Balance", 8, 8};
    return {
        {"a name that is in both has moved, whatever was in its place", Of({Row(1, "A", {low, high})}),
         Of({Row(1, "A", {{"Balance", 0, 8}, {"Level", 8, 8}})}),
         "~ message 0x1 extended A\n  ~ signal Balance\n      start_bit: \"8\" -> \"0\"\n"
         "  ~ signal Level\n      start_bit: \"0\" -> \"8\"\nmessages: 1 changed; signals: 2 changed\n"},
        {"one in front moves the others", Of({Row(1, "A", {low, high})}),
         Of({Row(1, "A", {{"Mute", 0, 8}, {"Level", 8, 8}, {"Balance", 16, 8}})}),
         "~ message 0x1 extended A\n  + signal Mute\n  ~ signal Level\n      start_bit: \"0\" -> \"8\"\n"
         "  ~ signal Balance\n      start_bit: \"8\" -> \"16\"\nmessages: 1 changed; signals: 1 added, 2 "
         "changed\n"},
        {"of equal names those in one place belong together",
         Of({Row(1, "A", {{"Temp", 0, 8}, {"TempB", 8, 8}, {"TempC", 16, 8}})}),
         Of({Row(1, "A", {{"Temp", 8, 8}, {"TempB", 16, 8}})}),
         "~ message 0x1 extended A\n  - signal Temp\n"
         "messages: 1 changed; signals: 1 removed; 2 names differ only in what makes them unique\n"},
        {"one place for several values of the multiplexor",
         Of({Row(1, "A", {{"S", 0, 8, kSelected, 1}, {"T", 0, 8, kSelected, 2}})}),
         Of({Row(1, "A", {{"T", 0, 8, kSelected, 2}, {"U", 0, 8, kSelected, 1}})}),
         "~ message 0x1 extended A\n  ~ signal U\n      name: \"S\" -> \"U\"\n"
         "messages: 1 changed; signals: 1 changed\n"},
        {"another value of the multiplexor is another place", Of({Row(1, "A", {{"S", 0, 8, kSelected, 1}})}),
         Of({Row(1, "A", {{"T", 0, 8, kSelected, 2}})}),
         "~ message 0x1 extended A\n  + signal T\n  - signal S\nmessages: 1 changed; signals: 1 added, 1 "
         "removed\n"},
        {"and of one name has changed", Of({Row(1, "A", {{"S", 0, 8, kSelected, 1}})}),
         Of({Row(1, "A", {{"S", 0, 8, kSelected, 2}})}),
         "~ message 0x1 extended A\n  ~ signal S\n      multiplexer_value: \"1\" -> \"2\"\n"
         "messages: 1 changed; signals: 1 changed\n"},
    };
}

std::vector<MeaningCase> Nodes() {
    const auto from = [](const char* node, std::uint32_t identifier) {
        MessageRow row = Row(identifier, ("M" + std::to_string(identifier)).c_str());
        row.node = node;
        return row;
    };
    return {
        {"all messages of a node have another", Of({from("Amp", 1), from("Amp", 2)}, {{"Amp"}}),
         Of({from("Radio", 1), from("Radio", 2)}, {{"Radio"}}),
         "~ node Radio\n    name: \"Amp\" -> \"Radio\"\nnodes: 1 changed\n"},
        {"some have another", Of({from("Amp", 1), from("Amp", 2)}, {{"Amp"}}),
         Of({from("Radio", 1), from("Tuner", 2)}, {{"Radio"}, {"Tuner"}}),
         "+ node Radio\n+ node Tuner\n- node Amp\n~ message 0x1 extended M1\n    node: \"Amp\" -> \"Radio\"\n"
         "~ message 0x2 extended M2\n    node: \"Amp\" -> \"Tuner\"\n"
         "nodes: 2 added, 1 removed; messages: 2 changed\n"},
        {"two become one", Of({from("Radio", 1), from("Tuner", 2)}, {{"Radio"}, {"Tuner"}}),
         Of({from("Amp", 1), from("Amp", 2)}, {{"Amp"}}),
         "+ node Amp\n- node Radio\n- node Tuner\n~ message 0x1 extended M1\n    node: \"Radio\" -> \"Amp\"\n"
         "~ message 0x2 extended M2\n    node: \"Tuner\" -> \"Amp\"\n"
         "nodes: 1 added, 2 removed; messages: 2 changed\n"},
    };
}

void Expect(const std::vector<MeaningCase>& cases) {
    for (const auto& [what, before, after, text] : cases) {
        EXPECT_EQ(ChangesText(Compare(*Build(before), *Build(after)), Style(false)), text) << what;
    }
}

TEST(CompareMeaning, LettersAndDigitsThatMakeNamesUnique) {
    Expect(Letters());
}

TEST(CompareMeaning, MessagesThatMoved) {
    Expect(Moves());
}

TEST(CompareMeaning, SignalsThatMovedOrWereRenamed) {
    Expect(Signals());
}

TEST(CompareMeaning, NodesThatWereRenamed) {
    Expect(Nodes());
}

TEST(CompareMeaning, UniqueNamesAreToldIfAskedForAndMakeNoDifference) {
    const Sample before = Of({Row(2, "M2", {{"Temp", 0, 8}}), Row(3, "M3", {{"TempB", 0, 8}})});
    const Sample after = Of({Row(3, "M3", {{"Temp", 0, 8}}), Row(2, "M2", {{"TempB", 0, 8}})});
    const Comparison comparison = Compare(*Build(before), *Build(after), {.withUniqueNames = true});
    EXPECT_TRUE(AreSame(comparison));
    EXPECT_EQ(ChangesText(comparison, Style(false)), R"(~ message 0x3 extended M3
  ~ signal Temp
      name: "TempB" -> "Temp"
~ message 0x2 extended M2
  ~ signal TempB
      name: "Temp" -> "TempB"
2 names differ only in what makes them unique
)");
    EXPECT_FALSE(AreSame(Compare(*Build(before), *Build(Of({})))));
}

}  // namespace
}  // namespace vorn::test
