/// Reports of messages that have more to say than there is room for.

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"

namespace tarvex::test::report_room_test {
namespace {

class ReportRoom : public testing::Test {
  protected:
    const Report& Of(std::string_view format) const {
        return format == "json" ? static_cast<const Report&>(json_) : text_;
    }

    TextReport text_;
    JsonReport json_;
    const std::string before_ = "the line before\n";
};

constexpr std::string_view kFormats[] = {"text", "json"};

TEST_F(ReportRoom, MessageThatFitsIsToldAndALongerOneIsNot) {
    const CapturedMessage message{
        .fBlockID = 0x22, .instID = 1, .fktID = 0x400, .opType = 0xC, .data = BytesOf("0102")};
    const Decoding decoding({{"List", Array("3", "Entry", Record({{"A", kUByte}, {"V", kVoid}}))}});
    const auto decoded = decoding.Decode(message);
    for (const std::string_view format : kFormats) {
        SCOPED_TRACE(format);
        std::string whole;
        EXPECT_TRUE(Of(format).Message({}, message, *decoded, whole));
        std::string out = before_;
        EXPECT_TRUE(Of(format).Message({}, message, *decoded, out, whole.size()));
        EXPECT_EQ(out, before_ + whole);
        // Wherever the room ends.
        for (std::size_t room = 0; room < whole.size(); ++room) {
            out = before_;
            EXPECT_FALSE(Of(format).Message({}, message, *decoded, out, room)) << room;
            EXPECT_EQ(out, before_) << room;
        }
    }
}

TEST_F(ReportRoom, NotMuchMoreThanTheRoomIsMade) {
    const std::size_t entries = 10'000;
    const CapturedMessage message{.fBlockID = 0x22,
                                  .instID = 1,
                                  .fktID = 0x400,
                                  .opType = 0xC,
                                  .data = std::vector<std::uint8_t>(entries)};
    const Decoding decoding({{"List", Array("NMax", std::string(200, 'E'), kUByte)}});
    const auto decoded = decoding.Decode(message);
    for (const std::string_view format : kFormats) {
        SCOPED_TRACE(format);
        std::string out;
        EXPECT_TRUE(Of(format).Message({}, message, *decoded, out));
        EXPECT_GT(out.size(), 200 * entries);
        std::string little;
        EXPECT_FALSE(Of(format).Message({}, message, *decoded, little, 100'000));
        // What a string had to hold shows in the memory that it keeps, which at most doubles.
        EXPECT_LT(little.capacity(), 300'000U);
    }
}

}  // namespace
}  // namespace tarvex::test::report_room_test
