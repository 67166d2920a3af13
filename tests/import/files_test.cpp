/// Opening of files, identity of files and parts of paths.

#include "import/text/files.h"

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "import/test_texts.h"

namespace tarvex::test::files_test {
namespace {

namespace fs = std::filesystem;

TEST(OpenFile, WritingTruncatesAndAppendingKeeps) {
    const TempDir dir;
    const std::string path = dir.Write("file", "older text");
    std::fputs("more", OpenForWriting(path, WriteMode::Append).get());
    EXPECT_EQ(ReadFile(path), "older textmore");
    std::fputs("new", OpenForWriting(path, WriteMode::Truncate).get());
    EXPECT_EQ(ReadFile(path), "new");
}

TEST(OpenFile, WritingCreatesAMissingFile) {
    const TempDir dir;
    EXPECT_TRUE(OpenForWriting(dir.File("a"), WriteMode::Truncate));
    EXPECT_TRUE(OpenForWriting(dir.File("b"), WriteMode::Append));
    EXPECT_EQ(ReadFile(dir.File("a")), "");
    EXPECT_EQ(ReadFile(dir.File("b")), "");
}

TEST(OpenFile, OnlyRegularFilesAreOpenedAndNothingHangs) {
    const Deadline deadline;
    const TempDir dir;
    const std::string fifo = dir.File("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {dir.Path(), fifo, dir.File("missing/file"), std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(OpenForReading(path));
        EXPECT_FALSE(OpenForWriting(path, WriteMode::Truncate));
        EXPECT_FALSE(OpenForWriting(path, WriteMode::Append));
    }
    EXPECT_FALSE(OpenForReading(dir.File("missing")));
    EXPECT_FALSE(FileExists(dir.File("missing")));
}

TEST(OpenFile, LinksToRegularFilesAreFollowed) {
    const TempDir dir;
    const std::string path = dir.Write("file", "text");
    fs::create_symlink("file", dir.File("link"));
    EXPECT_TRUE(OpenForReading(dir.File("link")));
}

class SameFile : public testing::Test {
  protected:
    SameFile() {
        dir_.Write("a", "a");
        dir_.Write("b", "b");
        fs::create_hard_link(dir_.File("a"), dir_.File("hard"));
        fs::create_symlink("a", dir_.File("soft"));
        fs::create_symlink("new", dir_.File("soft-new"));
        fs::create_directory(dir_.File("sub"));
        fs::create_directory_symlink("sub", dir_.File("soft-sub"));
    }

    TempDir dir_;
    WorkingDir working_{dir_.Path()};
};

struct PairCase {
    const char* a;
    const char* b;
    bool same;
};

TEST_F(SameFile, IsFoundBySpellingAndByLinks) {
    constexpr PairCase kCases[] = {
        {"a", "a", true},
        {"a", "./a", true},
        {"a", "sub/../a", true},
        {"a", "hard", true},
        {"a", "soft", true},
        {"hard", "soft", true},
        {"a", "b", false},
        {"a", "new", false},
        // files that are still to come
        {"new", "new", true},
        {"new", "./new", true},
        {"new", "sub/../new", true},
        {"sub/new", "soft-sub/new", true},
        {"new", "other", false},
        {"new", "sub/new", false},
        {"new", "soft-new", true},
    };
    for (const auto& [a, b, same] : kCases) {
        SCOPED_TRACE(std::string(a) + " / " + b);
        EXPECT_EQ(IsSameFile(a, b), same);
        EXPECT_EQ(IsSameFile(b, a), same);
        EXPECT_EQ(IsSameFile(dir_.File(a), b), same);
    }
}

TEST(AbsolutePath, JoinsWorkingDirectoryAndPath) {
    const TempDir dir;
    const WorkingDir working(dir.Path());
    const std::string here = fs::current_path().string();
    const std::pair<const char*, std::string> kCases[] = {
        {"Cat.xml", here + "/Cat.xml"},         {"./Cat.xml", here + "/Cat.xml"},
        {"sub/../Cat.xml", here + "/Cat.xml"},  {"sub//Cat.xml", here + "/sub/Cat.xml"},
        {"a b/%20.xml", here + "/a b/%20.xml"}, {"/x/y/Cat.xml", "/x/y/Cat.xml"},
        {"/x/./y//../Cat.xml", "/x/Cat.xml"},   {"/../Cat.xml", "/Cat.xml"},
    };
    for (const auto& [path, absolute] : kCases) {
        SCOPED_TRACE(path);
        EXPECT_EQ(AbsolutePath(path), absolute);
    }
}

TEST(AbsolutePath, KeepsLinks) {
    const TempDir dir;
    dir.Write("file", "");
    fs::create_symlink("file", dir.File("link"));
    EXPECT_EQ(AbsolutePath(dir.File("link")), dir.File("link"));
}

struct PathCase {
    const char* path;
    const char* fileName;
    const char* baseName;
    const char* logPath;
};

TEST(PathParts, ExtensionStartsAtTheLastDotOfTheLastComponent) {
    constexpr PathCase kCases[] = {
        // path               file name     base name    with ".log"
        {"Cat.xml", "Cat.xml", "Cat", "Cat.log"},
        {"/cat/fb.xml", "fb.xml", "fb", "/cat/fb.log"},
        {"a/b/Cat.v2.xml", "Cat.v2.xml", "Cat.v2", "a/b/Cat.v2.log"},
        {"Cat", "Cat", "Cat", "Cat.log"},
        {"d.ir/Cat", "Cat", "Cat", "d.ir/Cat.log"},
        {"../Cat", "Cat", "Cat", "../Cat.log"},
        {"./Cat.xml", "Cat.xml", "Cat", "./Cat.log"},
        {".xml", ".xml", "", ".log"},
        {"d/.xml", ".xml", "", "d/.log"},
        {"Cat.", "Cat.", "Cat", "Cat.log"},
        {"d/", "", "", "d/.log"},
        {"a\\b.xml", "a\\b.xml", "a\\b", "a\\b.log"},
        {"%n%s.xml", "%n%s.xml", "%n%s", "%n%s.log"},
        {"", "", "", ".log"},
    };
    for (const auto& [path, fileName, baseName, logPath] : kCases) {
        SCOPED_TRACE(path);
        EXPECT_EQ(FileName(path), fileName);
        EXPECT_EQ(BaseName(path), baseName);
        EXPECT_EQ(ReplaceExtension(path, ".log"), logPath);
    }
}

}  // namespace
}  // namespace tarvex::test::files_test
