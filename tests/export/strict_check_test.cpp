/// Which operations pass the strict check, and what becomes of their messages.

#include "export/strict_check.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "export/signal_layout.h"
#include "export/stand_in_param.h"
#include "params/record.h"

namespace tarvex::test::strict_check_test {
namespace {

using Kinds = std::vector<NodeType>;

/// No parameter at that position.
constexpr NodeType kHole = kNodeBase;

void Fill(ZMTNode& parent, ZMTChildList<ZMTParam>& params, const Kinds& kinds, const Kinds& fields) {
    for (unsigned pos = 0; pos < kinds.size(); ++pos) {
        if (kinds[pos] == kHole) {
            continue;
        }
        std::unique_ptr<ZMTParam> param;
        if (kinds[pos] == kParamRecord) {
            auto record = std::make_unique<ZMTParamRecord>();
            Fill(*record, *record, fields, {});
            param = std::move(record);
        } else {
            param = std::make_unique<StandInParam>(kinds[pos]);
        }
        param->SetParent(&parent);
        param->SetParamPos(pos);
        params.SetAt(std::move(param), pos);
    }
}

struct CheckCase {
    const char* what;
    Kinds params;
    Kinds fields;  ///< Of every record that is no field itself.
    bool passes;
};

TEST(StrictCheck, WantsFixedLengthsAndOneRecordAtTheEnd) {
    const CheckCase kRows[] = {
        {"no parameter", {}, {}, true},
        {"no record", {kParamNumber, kParamEnum, kParamBitField, kParamBool}, {}, true},
        {"void", {kParamVoid}, {}, true},
        // kinds without a fixed length, at any place
        {"stream", {kParamStream}, {}, false},
        {"string", {kParamString}, {}, false},
        {"array", {kParamArray}, {}, false},
        {"function IDs", {kParamFktIDBitStream}, {}, false},
        {"stream behind others", {kParamNumber, kParamNumber, kParamStream}, {}, false},
        {"string between others", {kParamNumber, kParamString, kParamNumber}, {}, false},
        {"array behind a hole", {kHole, kParamNumber, kHole, kParamArray}, {}, false},
        {"stream in front of a record", {kParamStream, kParamRecord}, {kParamNumber}, false},
        {"string in front of a record", {kParamString, kParamRecord}, {kParamNumber}, false},
        {"array behind a record", {kParamRecord, kParamArray}, {kParamNumber}, false},
        {"function IDs behind a record and a hole",
         {kParamRecord, kHole, kParamFktIDBitStream},
         {kParamNumber},
         false},
        // records
        {"record alone", {kParamRecord}, {kParamNumber, kParamEnum, kParamBitField, kParamBool}, true},
        {"record at the end", {kParamNumber, kParamNumber, kParamRecord}, {kParamNumber}, true},
        {"record from position 1 on", {kHole, kParamRecord}, {kParamNumber}, true},
        {"record without fields", {kParamRecord}, {}, true},
        {"record with a void field", {kParamRecord}, {kParamVoid}, true},
        {"record with a stream", {kParamRecord}, {kParamStream}, false},
        {"record with a string", {kParamNumber, kParamRecord}, {kParamNumber, kParamString}, false},
        {"record with an array", {kParamRecord}, {kParamArray, kParamNumber}, false},
        {"record with function IDs", {kParamRecord}, {kHole, kParamFktIDBitStream}, false},
        {"record with a record", {kParamRecord}, {kHole, kParamNumber, kParamRecord}, false},
        // what follows the record
        {"number behind the record", {kParamRecord, kParamNumber}, {kParamNumber}, false},
        {"void behind the record", {kParamNumber, kParamRecord, kParamVoid}, {kParamNumber}, false},
        {"record behind the record", {kParamRecord, kParamRecord}, {kParamNumber}, false},
        {"a hole behind the record", {kParamRecord, kHole, kParamNumber}, {kParamNumber}, true},
    };
    for (const CheckCase& row : kRows) {
        SCOPED_TRACE(row.what);
        ZMTOperation operation(ClassKind::Property, 12);
        Fill(operation, operation, row.params, row.fields);
        EXPECT_EQ(PassesStrictCheck(&operation), row.passes);
    }
}

TEST(StrictCheck, FailsWithoutAnOperation) {
    EXPECT_FALSE(PassesStrictCheck(nullptr));
}

nlohmann::json StatusOf(const NamedTypes& params, bool strict) {
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", params)));
    conversion.flags.writeSignals = true;
    conversion.flags.strictExport = strict;
    return MessageNamed(conversion.Database(), "Amp_Volume_Status");
}

struct MessageCase {
    const char* what;
    NamedTypes params;
    std::size_t signalCount;  // without the check
};

TEST(StrictExport, LeavesMessagesThatPassAsTheyAre) {
    const MessageCase kRows[] = {
        {"numbers", {{"A", UByte()}, {"B", SWord()}}, 2},
        {"bits", {{"A", BitField(10, {{0, "On"}, {9, ""}})}, {"B", Boolean({{0, "Mute"}})}}, 3},
        {"void", {{"A", UByte()}, {"None", Void()}, {"B", UByte()}}, 1},
        {"Pos and Data", {{"Pos", UWord()}, {"Data", Record({{"A", UByte()}, {"B", UByte()}})}}, 5},
        {"a record with a void field", {{"Rec", Record({{"A", UByte()}, {"None", Void()}})}}, 2},
    };
    for (const MessageCase& row : kRows) {
        SCOPED_TRACE(row.what);
        const nlohmann::json plain = StatusOf(row.params, false);
        EXPECT_EQ(plain["signals"].size(), row.signalCount);
        EXPECT_EQ(StatusOf(row.params, true), plain);
    }
}

TEST(StrictExport, LeavesNothingButTheMessageWhereTheCheckFails) {
    const std::string record = Record({{"B", UByte()}});
    const MessageCase kRows[] = {
        {"string", {{"A", UByte()}, {"Text", String()}}, 1},
        {"array", {{"A", UByte()}, {"List", Array()}}, 1},
        {"string first", {{"Text", String()}, {"A", UByte()}}, 0},
        {"number behind the record", {{"A", UByte()}, {"Rec", record}, {"C", UByte()}}, 3},
        {"two records", {{"Rec", record}, {"Other", record}}, 2},
        {"record with a string", {{"Rec", Record({{"B", UByte()}, {"Text", String()}})}}, 2},
        {"record with an array", {{"Rec", Record({{"B", UByte()}, {"List", Array()}})}}, 2},
        {"record in a record", {{"Rec", Record({{"B", UByte()}, {"Inner", record}})}}, 6},
    };
    for (const MessageCase& row : kRows) {
        SCOPED_TRACE(row.what);
        nlohmann::json expected = StatusOf(row.params, false);
        EXPECT_EQ(expected["signals"].size(), row.signalCount);
        expected["signals"] = nlohmann::json::array();
        expected["length"] = 12;
        EXPECT_EQ(StatusOf(row.params, true), expected);
    }
}

}  // namespace
}  // namespace tarvex::test::strict_check_test
