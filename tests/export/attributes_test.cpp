/// What goes into attribute definitions and values: the values of "OpType", texts and names in records.

#include "export/attributes.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "export/kestrel_values.h"
#include "support/temp_dir.h"

namespace tarvex::test::attributes_test {
namespace {

struct ValueRow {
    unsigned property;
    unsigned method;
};
constexpr ValueRow kValues[] = {
    /*  0 */ {0, 9},    // Set, Start
    /*  1 */ {1, 10},   // Get, Abort
    /*  2 */ {2, 11},   // SetGet, StartResult
    /*  3 */ {3, 18},   // Increment, NDef
    /*  4 */ {4, 18},   // Decrement, NDef
    /*  5 */ {5, 5},    // GetInterface
    /*  6 */ {17, 12},  // Reserved, StartResultAck
    /*  7 */ {18, 20},  // NDef, AbortAck
    /*  8 */ {18, 21},  // NDef, StartAck
    /*  9 */ {18, 13},  // NDef, ErrorAck
    /* 10 */ {18, 19},  // NDef, ProcessingAck
    /* 11 */ {18, 14},  // NDef, Processing
    /* 12 */ {6, 15},   // Status, Result
    /* 13 */ {18, 16},  // NDef, ResultAck
    /* 14 */ {7, 7},    // Interface
    /* 15 */ {8, 8},    // Error
};

TEST(OpTypeValue, DependsOnOpTypeAndKindOfFunction) {
    for (unsigned opType = 0; opType < std::size(kValues); ++opType) {
        SCOPED_TRACE(opType);
        EXPECT_EQ(OpTypeValue(ClassKind::Property, opType), kValues[opType].property);
        EXPECT_EQ(OpTypeValue(ClassKind::Method, opType), kValues[opType].method);
    }
}

TEST(OpTypeValue, IsNotDefinedForOtherKindsOfFunction) {
    for (unsigned opType = 0; opType < 18; ++opType) {
        SCOPED_TRACE(opType);
        EXPECT_EQ(OpTypeValue(ClassKind::Unknown, opType), 18U);
        EXPECT_EQ(OpTypeValue(ClassKind::ErrorFunction, opType), 18U);
        EXPECT_EQ(OpTypeValue(static_cast<ClassKind>(4), opType), 18U);
    }
}

TEST(OpTypeValue, IsNotDefinedAboveOpTypeFifteen) {
    for (const unsigned opType : {16U, 17U, 28U, 0x1FU, 255U, ~0U}) {
        SCOPED_TRACE(opType);
        EXPECT_EQ(OpTypeValue(ClassKind::Property, opType), 18U);
        EXPECT_EQ(OpTypeValue(ClassKind::Method, opType), 18U);
    }
}

struct CopyCase {
    std::string_view text;
    std::string_view record;  // the 32 bytes up to the unused ones
};
constexpr CopyCase kCopies[] = {
    {"", ""},
    {"Amp", "Amp"},
    {"Abcdefghijklmnopqrstuvwxyz01234", "Abcdefghijklmnopqrstuvwxyz01234"},     // 31
    {"Abcdefghijklmnopqrstuvwxyz012345", "Abcdefghijklmnopqrstuvwxyz012345"},   // 32
    {"Abcdefghijklmnopqrstuvwxyz0123456", "Abcdefghijklmnopqrstuvwxyz012345"},  // 33
    {"Abcdefghijklmnopqrstuvwxyz01234567890", "Abcdefghijklmnopqrstuvwxyz012345"},
};

TEST(CopyName, TakesAtMostThirtyTwoBytesAndClearsTheRest) {
    for (const CopyCase& row : kCopies) {
        SCOPED_TRACE(row.text);
        char name[kNameSize];
        std::ranges::fill(name, '#');
        CopyName(name, row.text);
        std::string expected(row.record);
        expected.resize(kNameSize, '\0');
        EXPECT_EQ(std::string(name, kNameSize), expected);
    }
}

TEST(TextValue, IsACopyThatTheWriterCanFree) {
    const std::string_view text = std::string_view("Audio Amp").substr(0, 5);
    const kestrel_attr_value_t value = TextValue(text);
    EXPECT_STREQ(value.text, "Audio");
    EXPECT_NE(value.text, text.data());
    kestrel_free(value.text);
    const kestrel_attr_value_t empty = TextValue("");
    EXPECT_STREQ(empty.text, "");
    kestrel_free(empty.text);
}

TEST(DefineAttributes, DefinitionThatCannotBeCreatedIsSkippedWithItsValue) {
    KestrelWriteManager writer(nullptr);
    const char* database = nullptr;
    ASSERT_EQ(writer.CreateDatabase("out", &database, nullptr), kKestrelOk);
    DefineAttributes(writer, "unknown", "sys.xml");
    DefineAttributes(writer, nullptr, "sys.xml");
    const TempDir dir;
    const std::string path = dir.File("out.vorn");
    ASSERT_EQ(writer.WriteDatabase(database, path.c_str()), kKestrelOk);
    const auto written = nlohmann::json::parse(ReadFile(path), nullptr, false);
    EXPECT_EQ(written["attribute_definitions"], nlohmann::json::array());
    EXPECT_EQ(written["attributes"], nlohmann::json::object());
}

}  // namespace
}  // namespace tarvex::test::attributes_test
