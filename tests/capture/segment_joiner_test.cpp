/// Messages in segments: what comes out of them, and what is told of those that are lost.

#include "capture/segment_joiner.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "capture/capture_run.h"

namespace tarvex::test::segment_joiner_test {
namespace {

struct Segment {
    unsigned telegram;
    const char* bytes;
    std::uint32_t source = 0x101;
    std::uint32_t fktID = 0x400;
    const char* time = "";
};

std::vector<CapturedMessage> Capture(const std::vector<Segment>& segments) {
    std::vector<CapturedMessage> messages;
    for (const Segment& segment : segments) {
        messages.push_back({.fBlockID = 0x22,
                            .instID = 1,
                            .fktID = segment.fktID,
                            .opType = 0xC,
                            .data = BytesOf(segment.bytes),
                            .time = segment.time,
                            .source = segment.source,
                            .telegram = static_cast<Telegram>(segment.telegram),
                            .line = messages.size() + 1});
    }
    return messages;
}

struct Row {
    const char* what;
    std::vector<Segment> segments;
    std::vector<std::string> joined;
};

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = {
        {"whole messages go through", {{0, "01 02"}, {0, ""}}, {"1: 22.01.400.C 0102", "2: 22.01.400.C "}},
        {"three segments", {{1, "00 AA BB"}, {2, "01 CC"}, {3, "02 DD"}}, {"1: 22.01.400.C AABBCCDD"}},
        {"two segments, numbered from 1", {{1, "01 AA"}, {3, "02 BB"}}, {"1: 22.01.400.C AABB"}},
        {"numbers go round", {{1, "FE AA"}, {2, "FF BB"}, {3, "00 CC"}}, {"1: 22.01.400.C AABBCC"}},
        {"segments without bytes", {{1, "00"}, {2, "01"}, {3, "02"}}, {"1: 22.01.400.C "}},
        {"a whole one between",
         {{1, "00 AA"}, {0, "07"}, {3, "01 BB"}},
         {"2: 22.01.400.C 07", "1: 22.01.400.C AABB"}},
        {"sources and operations apart",
         {{1, "00 AA", 0x101},
          {1, "00 BB", 0x102},
          {1, "00 CC", 0x101, 0x401},
          {3, "01 01", 0x102},
          {3, "01 02", 0x101, 0x401},
          {3, "01 03", 0x101}},
         {"2: 22.01.400.C BB01", "3: 22.01.401.C CC02", "1: 22.01.400.C AA03"}},
        {"a lost one is told once",
         {{1, "00 AA"}, {2, "02 CC"}, {2, "03 DD"}, {3, "04 EE"}, {1, "00 11"}, {3, "01 22"}},
         {"1: 22.01.400.C AA !the message lacks segments: 2 comes in line 2, behind 0",
          "5: 22.01.400.C 1122"}},
        {"the first is lost",
         {{2, "01 BB"}, {2, "02 CC"}, {3, "03 DD"}, {1, "00 11"}, {3, "01 22"}},
         {"1: 22.01.400.C 01BB !the segment belongs to no message: none of its source and operation is open",
          "4: 22.01.400.C 1122"}},
        {"the first of two is lost",
         {{3, "01 BB"}, {1, "00 11"}, {3, "01 22"}},
         {"1: 22.01.400.C 01BB !the segment belongs to no message: none of its source and operation is open",
          "2: 22.01.400.C 1122"}},
        {"the last is lost",
         {{1, "00 AA"}, {2, "01 BB"}, {1, "00 11"}, {3, "01 22"}},
         {"1: 22.01.400.C AABB !the message has no last segment, another one begins in line 3",
          "3: 22.01.400.C 1122"}},
        {"the capture ends",
         {{1, "00 AA"}, {2, "01 BB"}},
         {"1: 22.01.400.C AABB !the message has no last segment"}},
        {"a doubled one is told and left out",
         {{1, "00 AA"}, {1, "00 AA"}, {2, "01 BB"}, {2, "01 BB"}, {3, "02 CC"}},
         {"2: 22.01.400.C 00AA !the segment stands twice, first in line 1",
          "4: 22.01.400.C 01BB !the segment stands twice, first in line 3", "1: 22.01.400.C AABBCC"}},
        {"another one with the same number is of another message",
         {{1, "00 AA"}, {2, "01 BB"}, {2, "01 CC"}, {3, "02 DD"}},
         {"1: 22.01.400.C AABB !the message lacks segments: 1 comes in line 3, behind 1",
          "3: 22.01.400.C 01CC !the segment belongs to no message: none of its source and operation is "
          "open"}},
        {"the last of one and the first of the next are lost",
         {{1, "00 AA"}, {2, "01 BB"}, {2, "02 CC"}, {2, "01 11"}, {3, "02 22"}, {1, "00 33"}, {3, "01 44"}},
         {"1: 22.01.400.C AABBCC !the message lacks segments: 1 comes in line 4, behind 2",
          "4: 22.01.400.C 0111 !the segment belongs to no message: none of its source and operation is open",
          "6: 22.01.400.C 3344"}},
        {"a broken one lacks its last, the next its first",
         {{1, "00 AA"}, {2, "02 BB"}, {2, "01 11"}, {3, "02 22"}},
         {"1: 22.01.400.C AA !the message lacks segments: 2 comes in line 2, behind 0",
          "3: 22.01.400.C 0111 !the segment belongs to no message: none of its source and operation is "
          "open"}},
        {"the last comes twice",
         {{1, "00 AA"}, {3, "01 BB"}, {3, "01 BB"}},
         {"1: 22.01.400.C AABB", "3: 22.01.400.C 01BB !the segment stands twice, first in line 2"}},
        {"another last behind a whole one",
         {{1, "00 AA"}, {3, "01 BB"}, {3, "01 CC"}},
         {"1: 22.01.400.C AABB",
          "3: 22.01.400.C 01CC !the segment belongs to no message: none of its source and operation is "
          "open"}},
        {"an earlier one comes again",
         {{1, "00 AA"}, {2, "01 BB"}, {2, "02 CC"}, {2, "01 BB"}, {3, "03 DD"}},
         {"4: 22.01.400.C 01BB !the segment stands twice, first in line 2", "1: 22.01.400.C AABBCCDD"}},
        {"the first comes again later",
         {{1, "00 AA"}, {2, "01 BB"}, {1, "00 AA"}, {3, "02 CC"}},
         {"3: 22.01.400.C 00AA !the segment stands twice, first in line 1", "1: 22.01.400.C AABBCC"}},
        {"the next message begins alike",
         {{1, "00 AA"}, {2, "01 BB"}, {1, "00 AA"}, {2, "01 BB"}, {3, "02 CC"}},
         {"1: 22.01.400.C AABB !the message has no last segment, another one begins in line 3",
          "3: 22.01.400.C AABBCC"}},
        {"the first comes twice, and the capture ends",
         {{1, "00 AA"}, {2, "01 BB"}, {1, "00 AA"}},
         {"1: 22.01.400.C AABB !the message has no last segment",
          "3: 22.01.400.C 00AA !the segment stands twice, first in line 1"}},
        {"no number",
         {{1, ""}, {3, "01 BB"}},
         {"1: 22.01.400.C  !the segment has no number",
          "2: 22.01.400.C 01BB !the segment belongs to no message: none of its source and operation is "
          "open"}},
        {"too late",
         {{1, "00 AA", 0x101, 0x400, "10.0"}, {3, "01 BB", 0x101, 0x400, "15.5"}},
         {"1: 22.01.400.C AA !the message has no last segment within the time for it"}},
        {"much too late",
         {{1, "00 AA", 0x101, 0x400, "10.0"},
          {0, "07", 0x102, 0x400, "16.0"},
          {3, "01 BB", 0x101, 0x400, "22.0"}},
         {"1: 22.01.400.C AA !the message has no last segment within the time for it", "2: 22.01.400.C 07",
          "3: 22.01.400.C 01BB !the segment belongs to no message: none of its source and operation is "
          "open"}},
        {"milliseconds since 1970",
         {{1, "00 AA", 0x101, 0x400, "1717416000000"}, {3, "01 BB", 0x101, 0x400, "1717416000020"}},
         {"1: 22.01.400.C AABB"}},
        {"in time",
         {{1, "00 AA", 0x101, 0x400, "10.0"},
          {2, "01 BB", 0x101, 0x400, "14.0"},
          {3, "02 CC", 0x101, 0x400, "18.0"}},
         {"1: 22.01.400.C AABBCC"}},
    };
    return rows;
}

TEST(SegmentJoiner, JoinsWhatBelongsTogetherAndTellsTheRest) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(Joined(Capture(row.segments)), row.joined);
    }
}

TEST(SegmentJoiner, KeepsTheTimeAndTheLineOfTheFirst) {
    const std::vector<CapturedMessage> capture = Capture({{1, "00 AA", 0x101, 0x400, "12:00:01"},
                                                          {0, "01", 0x102, 0x400, "12:00:02"},
                                                          {3, "01 BB", 0x101, 0x400, "12:00:03"}});
    struct Last : MessageSink {
        CapturedMessage message;
        void TakeMessage(const CapturedMessage& taken) override { message = taken; }
        void TakeBroken(const CapturedMessage& /*taken*/, std::string_view /*fault*/) override {}
        void TakeUnreadable(std::uint64_t /*line*/, std::string_view /*text*/,
                            std::string_view /*fault*/) override {}
    } last;
    SegmentJoiner joiner(last);
    for (const CapturedMessage& message : capture) {
        joiner.TakeMessage(message);
    }
    EXPECT_EQ(last.message.time, "12:00:01");
    EXPECT_EQ(last.message.line, 1U);
    EXPECT_EQ(last.message.source, 0x101U);
    EXPECT_EQ(last.message.telegram, Telegram::Whole);
}

TEST(SegmentJoiner, WhatIsOpenIsBounded) {
    std::vector<Segment> segments;
    for (std::uint32_t source = 1; source <= 4; ++source) {
        segments.push_back({1, "00 AA BB", source});
    }
    segments.push_back({3, "01 CC", 4});
    const std::string givenUp = " !the message is given up, as too many are open";
    const std::string foreign = " !the message has no last segment";
    using Lines = std::vector<std::string>;
    EXPECT_EQ(Joined(Capture(segments), {.messages = 2}),
              (Lines{"1: 22.01.400.C AABB" + givenUp, "2: 22.01.400.C AABB" + givenUp,
                     "4: 22.01.400.C AABBCC", "3: 22.01.400.C AABB" + foreign}));
    EXPECT_EQ(Joined(Capture(segments), {.bytes = 5}),
              (Lines{"1: 22.01.400.C AABB" + givenUp, "2: 22.01.400.C AABB" + givenUp,
                     "4: 22.01.400.C AABBCC", "3: 22.01.400.C AABB" + foreign}));
    segments.insert(segments.begin() + 4, {{0, "", 9}, {0, "", 9}, {0, "", 9}});
    EXPECT_EQ(Joined(Capture(segments), {.age = 3}).front(),
              "1: 22.01.400.C AABB !the message has no last segment within the time for it");
}

TEST(SegmentJoiner, MessageOfTooManyBytesIsTold) {
    std::vector<CapturedMessage> capture =
        Capture({{1, "00"}, {2, "01"}, {3, "02"}, {1, "00 11"}, {3, "01 22"}});
    for (std::size_t i = 0; i < 2; ++i) {
        capture[i].data.resize(kMaxMessageBytes);
    }
    const std::vector<std::string> joined = Joined(capture);
    ASSERT_EQ(joined.size(), 2U);
    EXPECT_TRUE(joined[0].ends_with(" !the message is too long"));
    EXPECT_EQ(joined[1], "4: 22.01.400.C 1122");
}

/// Messages of five sources, whole and cut into segments that stand between each other.
struct Traffic {
    std::vector<CapturedMessage> whole;
    std::vector<CapturedMessage> segments;
    std::vector<std::size_t> messageOf;  // of each segment
};

Traffic MakeTraffic(std::mt19937& random, std::size_t count) {
    constexpr std::size_t kSources = 5;
    Traffic traffic;
    std::vector<std::vector<CapturedMessage>> queues(kSources);
    std::vector<std::vector<std::size_t>> owners(kSources);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t source = random() % kSources;
        CapturedMessage message{.fBlockID = 0x22, .instID = 1, .fktID = 0x400, .opType = 0xC};
        message.source = static_cast<std::uint32_t>(0x100 + source);
        message.data.resize(random() % 60);
        std::ranges::generate(message.data, [&] { return static_cast<std::uint8_t>(random()); });
        const std::size_t pieces = std::min<std::size_t>(1 + random() % 6, message.data.size());
        std::uint8_t number = 0;
        for (std::size_t piece = 0, begin = 0; pieces > 1 && piece < pieces; ++piece) {
            const bool isLast = piece + 1 == pieces;
            const std::size_t end =
                isLast ? message.data.size()
                       : begin + 1 + random() % (message.data.size() - begin - (pieces - piece - 1));
            CapturedMessage segment = message;
            segment.telegram = isLast ? Telegram::Last : piece == 0 ? Telegram::First : Telegram::Middle;
            segment.data.assign(message.data.begin() + static_cast<std::ptrdiff_t>(begin),
                                message.data.begin() + static_cast<std::ptrdiff_t>(end));
            segment.data.insert(segment.data.begin(), number++);
            queues[source].push_back(segment);
            owners[source].push_back(i);
            begin = end;
        }
        if (pieces <= 1) {
            queues[source].push_back(message);
            owners[source].push_back(i);
        }
        traffic.whole.push_back(message);
    }
    std::vector<std::size_t> next(kSources);
    for (;;) {
        std::vector<std::size_t> left;
        for (std::size_t source = 0; source < kSources; ++source) {
            if (next[source] < queues[source].size()) {
                left.push_back(source);
            }
        }
        if (left.empty()) {
            return traffic;
        }
        const std::size_t source = left[random() % left.size()];
        CapturedMessage segment = queues[source][next[source]];
        segment.line = traffic.segments.size() + 1;
        traffic.segments.push_back(segment);
        traffic.messageOf.push_back(owners[source][next[source]++]);
    }
}

/// Without the line in front, which is another one.
std::string Said(const std::string& joined) {
    return joined.substr(joined.find(' ') + 1);
}

TEST(SegmentJoiner, TenThousandMessagesInPiecesAreWhatTheyWere) {
    std::mt19937 random(17);
    const Traffic traffic = MakeTraffic(random, 10000);
    ASSERT_GT(traffic.segments.size(), 25000U);
    // In any order among sources, in their own order within each: so both are sorted by what they say.
    std::multiset<std::string> expected;
    for (const std::string& line : Joined(traffic.whole)) {
        expected.insert(Said(line));
    }
    std::multiset<std::string> joined;
    for (const std::string& line : Joined(traffic.segments)) {
        joined.insert(Said(line));
    }
    EXPECT_EQ(joined.size(), 10000U);
    EXPECT_TRUE(joined == expected);
}

TEST(SegmentJoiner, OfLostSegmentsExactlyTheMessagesConcernedAreTold) {
    std::mt19937 random(18);
    const Traffic traffic = MakeTraffic(random, 10000);
    std::vector<CapturedMessage> capture;
    std::set<std::size_t> lost;
    std::map<std::size_t, std::size_t> messageOfLine;
    std::map<std::size_t, std::size_t> left;
    // The end of one message and the beginning of the next may be lost so that their numbers meet, and
    // nothing shows: so never both.
    std::map<std::uint32_t, std::size_t> lostLast;
    for (std::size_t i = 0; i < traffic.segments.size(); ++i) {
        const std::size_t message = traffic.messageOf[i];
        const std::uint32_t source = traffic.segments[i].source.value_or(0);
        const auto before = lostLast.find(source);
        if (random() % 100 == 0 && (before == lostLast.end() || before->second == message)) {
            lost.insert(message);
            lostLast[source] = message;
            continue;
        }
        lostLast.erase(source);
        capture.push_back(traffic.segments[i]);
        messageOfLine[traffic.segments[i].line] = message;
        ++left[message];
    }
    std::erase_if(lost,
                  [&](std::size_t message) { return !left.contains(message); });  // nothing came of them
    ASSERT_GT(lost.size(), 200U);
    std::multiset<std::size_t> told;
    std::multiset<std::size_t> joined;
    for (const std::string& line : Joined(capture)) {
        const std::size_t message = messageOfLine.at(std::stoul(line));
        (line.find('!') != std::string::npos ? told : joined).insert(message);
    }
    EXPECT_EQ(told, (std::multiset<std::size_t>(lost.begin(), lost.end())));
    EXPECT_EQ(joined.size() + told.size(), left.size());
    for (const std::size_t message : joined) {
        EXPECT_FALSE(lost.contains(message));
    }
}

}  // namespace
}  // namespace tarvex::test::segment_joiner_test
