/// The limit of the items of one message.

#include <span>
#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::item_limit_test {
namespace {

std::unique_ptr<DecodedMessage> DecodeZeros(const Decoding& decoding, std::size_t count) {
    return decoding.Decode({.fBlockID = 0x22,
                            .instID = 0,
                            .fktID = 0x400,
                            .opType = 0xC,
                            .data = std::vector<std::uint8_t>(count)});
}

struct LimitRow {
    const char* what;
    std::string type;
    std::size_t bytes;
    std::vector<std::string> faults;
};

void Expect(std::span<const LimitRow> rows) {
    for (const LimitRow& row : rows) {
        SCOPED_TRACE(row.what);
        const Decoding decoding({{"L", row.type}});
        const auto decoded = DecodeZeros(decoding, row.bytes);
        EXPECT_EQ(decoded->faults, row.faults);
        EXPECT_LE(CountItems(decoded->items), kMaxItems);
        EXPECT_GT(CountItems(decoded->items), kMaxItems - 16);
    }
}

TEST(ItemLimit, MessageHasAtMost65536Items) {
    const std::string pair = Record({{"A", kUByte}, {"V", kVoid}});
    const std::string wide = Record({{"A", kUByte}, {"V", kVoid}, {"W", kVoid}, {"X", kVoid}});
    const LimitRow rows[] = {
        // The array and its entries: 1 + 65535.
        {"bytes", Array("NMax", "E", kUByte), 65535, {}},
        // The array, and three items for each byte: 1 + 3 * 21845 = 65536.
        {"records", Array("NMax", "R", pair), 21845, {}},
        {"more records", Array("NMax", "R", pair), 21846, {"byte 21845: R comes after too many parameters"}},
        // Five items for each byte: 1 + 5 * 13107 = 65536.
        {"wide records", Array("NMax", "R", wide), 13107, {}},
        {"more wide records",
         Array("NMax", "R", wide),
         13108,
         {"byte 13107: R comes after too many parameters"}},
    };
    Expect(rows);
}

TEST(ItemLimit, BitsAreItems) {
    const LimitRow rows[] = {
        // The field and its eight bits: 1 + 9 * 7281 = 65530, and the next field does not fit.
        {"bits", Array("NMax", "F", Bits(8)), 7281, {}},
        {"more bits", Array("NMax", "F", Bits(8)), 7282, {"byte 7281: F comes after too many parameters"}},
        // The field and its sixteen bits: 1 + 17 * 3855 = 65536.
        {"long fields", Array("NMax", "F", Bits(16)), 2 * 3855, {}},
        {"more long fields",
         Array("NMax", "F", Bits(16)),
         2 * 3856,
         {"byte 7710: F comes after too many parameters"}},
        {"all long fields",
         Array("NMax", "F", Bits(16)),
         65534,
         {"byte 7710: F comes after too many parameters"}},
    };
    Expect(rows);
}

TEST(ItemLimit, NextMessageBeginsAnew) {
    const Decoding decoding({{"L", Array("NMax", "R", Record({{"A", kUByte}, {"V", kVoid}}))}});
    EXPECT_EQ(DecodeZeros(decoding, 30000)->faults.size(), 1U);
    EXPECT_EQ(DecodeZeros(decoding, 20000)->faults, std::vector<std::string>());
}

}  // namespace
}  // namespace tarvex::test::item_limit_test
