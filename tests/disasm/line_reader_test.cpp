/// Lines of any length, from files and from pipes.

#include "driver/line_reader.h"

#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::line_reader_test {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A line as the reader gives it, "+" in front of one that is cut.
using Lines = std::vector<std::string>;

Lines ReadAll(LineReader& reader) {
    Lines lines;
    std::string_view line;
    while (reader.Next(line)) {
        lines.push_back((reader.IsCut() ? "+" : "") + std::string(line));
    }
    return lines;
}

Lines LinesOf(const std::string& content) {
    const TempDir dir;
    const File file(std::fopen(dir.Write("capture.txt", content).c_str(), "rb"));
    LineReader reader(fileno(file.get()), [] { return true; });
    Lines lines = ReadAll(reader);
    EXPECT_FALSE(reader.HasFailed());
    return lines;
}

struct ContentRow {
    std::string content;
    Lines lines;
};

TEST(LineReader, LineFeedsEndLines) {
    const ContentRow rows[] = {
        {"", {}},           {"\n", {""}},       {"\n\n\n", {"", "", ""}}, {"a", {"a"}},
        {"a\n", {"a"}},     {"\na", {"", "a"}}, {"a\nb", {"a", "b"}},     {"a\n\nbc\n", {"a", "", "bc"}},
        {" a \n", {" a "}},
    };
    for (const ContentRow& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.content));
        EXPECT_EQ(LinesOf(row.content), row.lines);
    }
}

TEST(LineReader, NulBytesBelongToTheLine) {
    const std::string nul(1, '\0');
    EXPECT_EQ(LinesOf("a" + nul + "b\n" + nul + "\n" + nul), (Lines{"a" + nul + "b", nul, nul}));
}

struct LengthRow {
    std::size_t length;
    std::size_t given;
    bool isCut;
};
constexpr LengthRow kLengths[] = {
    {0, 0, false},
    {1, 1, false},
    {2, 2, false},
    {4095, 4095, false},
    {4096, 4096, false},
    {65536, 65536, false},
    {kMaxLine - 1, kMaxLine - 1, false},
    {kMaxLine + 1, kMaxLine, true},
    {kMaxLine + 2, kMaxLine, true},
    {2 * kMaxLine - 1, kMaxLine, true},
    {2 * kMaxLine, kMaxLine, true},
    {2 * kMaxLine + 1, kMaxLine, true},
    {50 * kMaxLine + 7, kMaxLine, true},
};

/// A line of that length whose bytes tell where they stand.
std::string LineOf(std::size_t length) {
    std::string line(length, ' ');
    for (std::size_t i = 0; i < length; ++i) {
        line[i] = static_cast<char>('a' + i % 23);
    }
    return line;
}

TEST(LineReader, LinesBeyondTheLimitAreCutAndTheRestIsSkipped) {
    EXPECT_EQ(kMaxLine, 262144U);
    for (const LengthRow& row : kLengths) {
        const std::string given = (row.isCut ? "+" : "") + LineOf(row.given);
        for (const char* before : {"", "x\n", "xyz\n\n"}) {
            SCOPED_TRACE(std::to_string(row.length) + " after " + testing::PrintToString(before));
            Lines expected;
            for (const char* at = before; *at != '\0'; ++at) {
                if (*at == '\n') {
                    expected.push_back(expected.empty() ? std::string(before, at) : "");
                }
            }
            expected.push_back(given);
            expected.emplace_back("end");
            EXPECT_TRUE(LinesOf(before + LineOf(row.length) + "\nend\n") == expected);
            // Without a line feed at the end of the stream.
            expected.pop_back();
            if (row.length == 0) {
                expected.pop_back();
            }
            EXPECT_TRUE(LinesOf(before + LineOf(row.length)) == expected);
        }
    }
}

TEST(LineReader, PiecesOfALongLineMakeItUpAndMayBeLeftOut) {
    for (const std::size_t length : {kMaxLine + 1, kMaxLine + 2, 2 * kMaxLine + 1, 3 * kMaxLine + 7}) {
        for (const char* end : {"", "\n", "\nend\n"}) {
            SCOPED_TRACE(std::to_string(length) + " before " + testing::PrintToString(end));
            const TempDir dir;
            const File file(std::fopen(dir.Write("capture.txt", "x\n" + LineOf(length) + end).c_str(), "rb"));
            LineReader reader(fileno(file.get()), [] { return true; });
            std::string_view line;
            ASSERT_TRUE(reader.Next(line));
            EXPECT_FALSE(reader.NextPiece(line));
            ASSERT_TRUE(reader.Next(line));
            std::string whole(line);
            for (std::string_view piece; reader.NextPiece(piece);) {
                whole += piece;
            }
            EXPECT_FALSE(reader.IsCut());
            EXPECT_TRUE(whole == LineOf(length));
            EXPECT_EQ(reader.Next(line), std::string_view(end).size() > 1);
        }
    }
}

TEST(LineReader, LineOfExactlyTheLimitIsWhole) {
    const std::string line = LineOf(kMaxLine);
    EXPECT_TRUE(LinesOf(line) == Lines{line});
    EXPECT_TRUE(LinesOf(line + "\n") == Lines{line});
    EXPECT_TRUE(LinesOf(line + "\n" + line + "\nend\n") == (Lines{line, line, "end"}));
    EXPECT_TRUE(LinesOf("x\n" + line + "\nend") == (Lines{"x", line, "end"}));
}

TEST(LineReader, ManyLongLinesInARow) {
    std::string content;
    Lines expected;
    for (std::size_t i = 0; i < 12; ++i) {
        const std::size_t length = (i % 2 == 0 ? kMaxLine - 2 : kMaxLine + 1) + i % 2;
        content += LineOf(length) + "\n";
        expected.push_back(length > kMaxLine ? "+" + LineOf(kMaxLine) : LineOf(length));
    }
    EXPECT_TRUE(LinesOf(content) == expected);
}

/// Delivers the bytes of a text one by one, or in pieces of that size.
class Pipe {
  public:
    Pipe(std::string content, std::size_t piece) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        reading_.reset(fdopen(ends[0], "rb"));
        writer_ = std::thread([content = std::move(content), piece, end = ends[1]] {
            for (std::size_t at = 0; at < content.size(); at += piece) {
                const std::size_t count = std::min(piece, content.size() - at);
                if (write(end, content.data() + at, count) != static_cast<ssize_t>(count)) {
                    break;
                }
            }
            close(end);
        });
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() { writer_.join(); }

    std::FILE* Stream() const { return reading_.get(); }

  private:
    File reading_;
    std::thread writer_;
};

TEST(LineReader, BytesMayComeOneByOne) {
    const Pipe pipe("22.01.400.C 05\n\nabc\n" + std::string(1, '\0') + "\nend", 1);
    int readCount = 0;
    LineReader reader(fileno(pipe.Stream()), [&] {
        ++readCount;
        return true;
    });
    EXPECT_EQ(ReadAll(reader), (Lines{"22.01.400.C 05", "", "abc", std::string(1, '\0'), "end"}));
    EXPECT_FALSE(reader.HasFailed());
    EXPECT_GE(readCount, 1);
}

TEST(LineReader, LongLinesMayComeInPieces) {
    const Pipe pipe(LineOf(kMaxLine + 1) + "\n" + LineOf(kMaxLine - 1) + "\nend\n", 1009);
    LineReader reader(fileno(pipe.Stream()), [] { return true; });
    EXPECT_TRUE(ReadAll(reader) == (Lines{"+" + LineOf(kMaxLine), LineOf(kMaxLine - 1), "end"}));
    EXPECT_FALSE(reader.HasFailed());
}

TEST(LineReader, GivesALineBeforeTheNextOneIsThere) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const File reading(fdopen(ends[0], "rb"));
    LineReader reader(fileno(reading.get()), [] { return true; });
    ASSERT_EQ(write(ends[1], "one\ntw", 6), 6);
    std::string_view line;
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "one");
    ASSERT_EQ(write(ends[1], "o\n", 2), 2);
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "two");
    close(ends[1]);
    EXPECT_FALSE(reader.Next(line));
    EXPECT_FALSE(reader.HasFailed());
}

TEST(LineReader, TellsBeforeItMayHaveToWait) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const File reading(fdopen(ends[0], "rb"));
    // Whatever is missing is written only when the reader says that it is about to wait for it.
    std::vector<std::string> pieces{"two\n", "one\n"};
    LineReader reader(fileno(reading.get()), [&] {
        if (!pieces.empty()) {
            const std::string piece = pieces.back();
            pieces.pop_back();
            EXPECT_EQ(write(ends[1], piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
            if (pieces.empty()) {
                close(ends[1]);
            }
        }
        return true;
    });
    EXPECT_EQ(ReadAll(reader), (Lines{"one", "two"}));
}

TEST(LineReader, ReadsNoMoreWhenItIsToldSo) {
    const TempDir dir;
    const File file(std::fopen(dir.Write("capture.txt", "one\ntwo\n").c_str(), "rb"));
    LineReader reader(fileno(file.get()), [] { return false; });
    EXPECT_EQ(ReadAll(reader), Lines{});
    EXPECT_FALSE(reader.HasFailed());
}

TEST(LineReader, StreamThatCannotBeReadHasFailed) {
    const TempDir dir;
    const File file(std::fopen(dir.Path().c_str(), "rb"));  // a directory opens, but cannot be read
    ASSERT_NE(file, nullptr);
    LineReader reader(fileno(file.get()), [] { return true; });
    std::string_view line;
    EXPECT_FALSE(reader.Next(line));
    EXPECT_TRUE(reader.HasFailed());
}

}  // namespace
}  // namespace tarvex::test::line_reader_test
