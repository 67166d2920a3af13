/// Which messages are found.

#include "vorn/selection.h"

#include <span>

#include <gtest/gtest.h>

#include "kestrel/most_columns.h"
#include "sample.h"

namespace vorn::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kSued =
    "S\xC3\xBC"
    "d";

MessageRow Of(std::uint32_t identifier, const char* name, const char* node, AttributeRows attributes = {}) {
    return {identifier | kExtendedIdentifier, name, 1, {}, node, std::move(attributes)};
}

/// Two blocks, one of which has no attributes, and a message that is none of MOST.
Sample Car() {
    return {
        .definitions = {String("message", "FBlock", "GeneralBlock"), String("message", "Function", ""),
                        Enumeration("message", "OpType", {"Set", "Get", "Status"}, "Status")},
        .nodes = {{"AudioAmp"}, {"Tuner"}, {"Phone"}},
        .messages = {
            Of(0x224020, "Amp_Bass_Set", "AudioAmp",
               {{"FBlock", "AudioAmp"}, {"Function", "Bass"}, {"OpType", "Set"}}),
            Of(0x22402C, "Amp_Bass_Stat", "AudioAmp", {{"FBlock", "AudioAmp"}, {"Function", "Bass"}}),
            Of(0x22410C, "Amp_Balance_Stat", "AudioAmp", {{"FBlock", "AudioAmp"}, {"Function", "Balance"}}),
            Of(0x40402C, kSued, "Tuner", {{"Function", "Bass"}}),
            Of(0x7FFFFFFF, "16", ""),
            {16, "Ping"}}};
}

Texts Found(const Selection& selection) {
    const auto database = Build(Car());
    Texts names;
    for (const kestrel::Message* message : Select(*database, selection)) {
        names.emplace_back(kestrel::NameIn(message->name));
    }
    return names;
}

struct FoundCase {
    Selection selection;
    Texts names;
};

const Texts kBass = {"Amp_Bass_Set", "Amp_Bass_Stat"};

const FoundCase kByMessage[] = {
    {{.messages = {"Amp_Bass_Set"}}, {"Amp_Bass_Set"}},
    {{.messages = {"amp_bass_SET"}}, {"Amp_Bass_Set"}},
    {{.messages = {"Amp_Bass"}}, {}},
    {{.messages = {"Amp_Bass*"}}, kBass},
    {{.messages = {"*_b[ae]ss_S?t"}}, {"Amp_Bass_Set"}},
    {{.messages = {"S?d"}}, {kSued}},
    {{.messages = {""}}, {}},
    {{.messages = {"Ping", "*_Balance_*"}}, {"Amp_Balance_Stat", "Ping"}},
    {{.messages = {"0x224020"}}, {"Amp_Bass_Set"}},
    {{.messages = {"0X0022402c"}}, {"Amp_Bass_Stat"}},
    {{.messages = {"0x80224020"}}, {"Amp_Bass_Set"}},
    {{.messages = {"2244640"}}, {"Amp_Bass_Set"}},
    {{.messages = {"224020"}}, {}},
    {{.messages = {"0x22402"}}, {}},
    {{.messages = {"0x"}}, {}},
    {{.messages = {"-1"}}, {}},
    {{.messages = {"4294967312"}}, {}},
    {{.messages = {"16"}}, {"16", "Ping"}},
};

const FoundCase kByAddress[] = {
    {{.messages = {"22.402.C"}}, {"Amp_Bass_Stat"}},
    {{.messages = {"22.402.c"}}, {"Amp_Bass_Stat"}},
    {{.messages = {"22.01.402.C"}}, {"Amp_Bass_Stat"}},
    {{.messages = {"22.*.402.C"}}, {"Amp_Bass_Stat"}},
    {{.messages = {"22.*.C"}}, {"Amp_Bass_Stat", "Amp_Balance_Stat"}},
    {{.messages = {"*.402.*"}}, {"Amp_Bass_Set", "Amp_Bass_Stat", kSued}},
    {{.messages = {"[24]?.402.C"}}, {"Amp_Bass_Stat", kSued}},
    {{.messages = {"0.1.0"}}, {"Ping"}},
    {{.messages = {"00.001.0"}}, {"Ping"}},
    {{.messages = {"22.402"}}, {}},
    {{.messages = {"22..C"}}, {}},
    {{.messages = {"22.01.01.402.C"}}, {}},
    {{.messages = {"22.402.C."}}, {}},
    {{.messages = {"*.*.F"}}, {}},  // an identifier of 31 bits is made of no address
};

const FoundCase kByAttributes[] = {
    {{.fblocks = {"audioamp"}}, {"Amp_Bass_Set", "Amp_Bass_Stat", "Amp_Balance_Stat"}},
    {{.fblocks = {"General*"}}, {kSued, "16", "Ping"}},  // the default
    {{.fblocks = {"0x22"}}, {"Amp_Bass_Set", "Amp_Bass_Stat", "Amp_Balance_Stat"}},
    {{.fblocks = {"22"}}, {}},
    {{.fblocks = {"0x7F"}}, {}},
    {{.functions = {"b*"}}, {"Amp_Bass_Set", "Amp_Bass_Stat", "Amp_Balance_Stat", kSued}},
    {{.functions = {"0x402"}}, {"Amp_Bass_Set", "Amp_Bass_Stat", kSued}},
    {{.opTypes = {"set"}}, {"Amp_Bass_Set"}},
    {{.opTypes = {"0xC"}}, {"Amp_Bass_Stat", "Amp_Balance_Stat", kSued}},
    {{.nodes = {"tuner"}}, {kSued}},
    {{.nodes = {"Phone"}}, {}},
    {{.nodes = {"*"}}, {"Amp_Bass_Set", "Amp_Bass_Stat", "Amp_Balance_Stat", kSued}},
    {{.functions = {"Bass"}, .nodes = {"AudioAmp"}}, kBass},
    {{.messages = {"*_Set", "*.410.*"}, .fblocks = {"0x22", "0x40"}}, {"Amp_Bass_Set", "Amp_Balance_Stat"}},
    {{.functions = {"Bass"}, .nodes = {"Phone"}}, {}},
    {{}, {"Amp_Bass_Set", "Amp_Bass_Stat", "Amp_Balance_Stat", kSued, "16", "Ping"}},
};

void Expect(std::span<const FoundCase> cases) {
    for (std::size_t row = 0; row < cases.size(); ++row) {
        EXPECT_EQ(Found(cases[row].selection), cases[row].names) << "row " << row;
    }
}

TEST(Select, ByNameAndIdentifier) {
    Expect(kByMessage);
}

TEST(Select, ByAddress) {
    Expect(kByAddress);
}

TEST(Select, ByAttributesAndNode) {
    Expect(kByAttributes);
}

TEST(Select, ByLongNames) {
    const std::string name = std::string(300, 'x') + "End";
    const auto database = Build(
        {.definitions = {String("message", "Function", "")},
         .messages = {{1, "Long", 0, {}, "", {{"Function", name}}},
                      {2, "Cut", 0, {}, "", {{"Function", std::string(kestrel::kMostColumnSize, 'x')}}}}});
    for (const std::string& text : {name, std::string("x*end")}) {
        const auto found = Select(*database, {.functions = {text}});
        ASSERT_EQ(found.size(), 1U) << text;
        EXPECT_EQ(kestrel::NameIn(found[0]->name), "Long") << text;
    }
}

struct UnansweredCase {
    Selection selection;
    Texts texts;
};

TEST(Unanswered, NamesWhatNobodyHasAndTheNearestThree) {
    const UnansweredCase kCases[] = {
        {{.messages = {"Amp_Bas_Set"}},
         {"there is no message 'Amp_Bas_Set'; the nearest are Amp_Bass_Set, Amp_Bass_Stat and "
          "Amp_Balance_Stat"}},
        {{.messages = {"22.403.C"}},
         {"there is no message '22.403.C'; the nearest are 22.402.C, 22.402.0 and 22.410.C"}},
        // As 00.002.0, of which one digit is another, then three are.
        {{.messages = {"0.2.0"}},
         {"there is no message '0.2.0'; the nearest are 00.001.0, 22.402.0 and 40.402.C"}},
        {{.fblocks = {"AudoiAmp"}},
         {"there is no function block 'AudoiAmp'; the nearest are AudioAmp and GeneralBlock"}},
        {{.functions = {"Bas"}}, {"there is no function 'Bas'; the nearest are Bass and Balance"}},
        {{.opTypes = {"Statsu"}}, {"there is no operation 'Statsu'; the nearest are Status and Set"}},
        {{.nodes = {"Tunr"}}, {"there is no node 'Tunr'; the nearest are Tuner, Phone and AudioAmp"}},
        {{.nodes = {"phone"}}, {"node 'phone' sends no message"}},
        {{.messages = {std::string(65, 'x')}},
         {"there is no message 'xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx'"}},
        // Each text for itself, also where others are answered.
        {{.functions = {"Bass", "Bas"}, .nodes = {"Tunr", "Tuner", "Phone"}},
         {"there is no function 'Bas'; the nearest are Bass and Balance",
          "there is no node 'Tunr'; the nearest are Tuner, Phone and AudioAmp",
          "node 'Phone' sends no message"}},
        {{.functions = {"Balance"}, .nodes = {"Tuner"}}, {}},
        {{}, {}},
    };
    const auto database = Build(Car());
    for (const auto& [selection, texts] : kCases) {
        EXPECT_EQ(Unanswered(*database, selection), texts);
    }
}

struct AddressCase {
    std::uint32_t identifier;
    const char* address;
};

TEST(AddressText, IsBlockFunctionAndOperation) {
    const AddressCase kAddresses[] = {{0x22402C, "22.402.C"}, {kExtendedIdentifier | 0x22402C, "22.402.C"},
                                      {0, "00.000.0"},        {0xFFFFFF, "FF.FFF.F"},
                                      {0x1000000, ""},        {0xFFFFFFFF, ""}};
    for (const auto& [identifier, address] : kAddresses) {
        EXPECT_EQ(kestrel::AddressText(identifier), address);
    }
}

}  // namespace
}  // namespace vorn::test
