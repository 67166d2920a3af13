/// The question before an existing file is overwritten, asked on a standard input that is no terminal.

#include "driver/overwrite_prompt.h"

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::overwrite_prompt_test {
namespace {

/// Puts a pipe that holds some bytes in the place of standard input.
class StandardInput {
  public:
    explicit StandardInput(std::string_view bytes) : saved_(::dup(STDIN_FILENO)) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe(ends), 0);
        EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        ::close(ends[1]);
        ::dup2(ends[0], STDIN_FILENO);
        ::close(ends[0]);
    }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;
    ~StandardInput() {
        ::dup2(saved_, STDIN_FILENO);
        ::close(saved_);
    }

    /// What nobody has read so far.
    static std::string Rest() {
        std::string rest(100, '\0');
        const ssize_t count = ::read(STDIN_FILENO, rest.data(), rest.size());
        rest.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return rest;
    }

  private:
    int saved_;
};

/// Collects standard output in a file.
class StandardOutput {
  public:
    explicit StandardOutput(const std::string& path)
        : path_(path), saved_((std::fflush(stdout), ::dup(STDOUT_FILENO))) {
        std::FILE* file = std::fopen(path.c_str(), "w");
        EXPECT_NE(file, nullptr);
        ::dup2(::fileno(file), STDOUT_FILENO);
        std::fclose(file);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;
    ~StandardOutput() { Restore(); }

    std::string Text() {
        Restore();
        return ReadFile(path_);
    }

  private:
    void Restore() {
        std::fflush(stdout);
        if (saved_ >= 0) {
            ::dup2(saved_, STDOUT_FILENO);
            ::close(saved_);
            saved_ = -1;
        }
    }

    std::string path_;
    int saved_;
};

class OverwritePrompt : public testing::Test {
  protected:
    /// Asks with these bytes on standard input.
    bool Ask(const std::string& path, std::string_view input) {
        const StandardInput standardInput(input);
        StandardOutput standardOutput(dir_.File("stdout"));
        const bool mayOverwrite = MayOverwrite(path, permission_.emplace());
        text_ = standardOutput.Text();
        unread_ = StandardInput::Rest();
        return mayOverwrite;
    }

    static mode_t ModeOf(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    TempDir dir_;
    std::optional<WritePermission> permission_;  // of the last question
    std::string text_;
    std::string unread_;
};

struct AnswerCase {
    std::string_view input;
    bool agrees;
    /// What is printed after the question.
    const char* echo;
    std::string_view unread;
};

TEST_F(OverwritePrompt, OnlyYAgrees) {
    constexpr AnswerCase kCases[] = {
        {"y", true, "y\n", ""},  {"Y", true, "Y\n", ""},    {"yes\n", true, "y\n", "es\n"},
        {"n", false, "", ""},    {"N", false, "", ""},      {"", false, "", ""},
        {"\n", false, "", ""},   {" y", false, "", "y"},    {"\ny\n", false, "", "y\n"},
        {"j", false, "", ""},    {"1", false, "", ""},      {std::string_view("\0y", 2), false, "", "y"},
        {"\x03", false, "", ""}, {"\x1By", false, "", "y"}, {"\xF9", false, "", ""},
    };
    for (const auto& [input, agrees, echo, unread] : kCases) {
        SCOPED_TRACE(testing::PrintToString(input));
        const std::string path = dir_.Write("out.vorn", "older output");
        EXPECT_EQ(Ask(path, input), agrees);
        EXPECT_EQ(text_, "Output file '" + path + "' already exists. Overwrite (y/n)? " + echo);
        EXPECT_EQ(unread_, unread) << "one key is read";
        EXPECT_EQ(ReadFile(path), "older output");
    }
}

struct ModeCase {
    mode_t before;
    mode_t afterYes;
};

TEST_F(OverwritePrompt, AgreedFileIsMadeWritable) {
    constexpr ModeCase kCases[] = {{0444, 0644}, {0400, 0600}, {0644, 0644},
                                   {0555, 0755}, {0666, 0666}, {0440, 0640}};
    const std::string path = dir_.Write("out.vorn", "older output");
    for (const auto& [before, afterYes] : kCases) {
        SCOPED_TRACE(before);
        ASSERT_EQ(::chmod(path.c_str(), before), 0);
        EXPECT_FALSE(Ask(path, "n"));
        EXPECT_EQ(ModeOf(path), before);
        EXPECT_TRUE(Ask(path, "y"));
        EXPECT_EQ(ModeOf(path), afterYes);
    }
}

TEST_F(OverwritePrompt, PermissionEndsWithTheConversion) {
    const std::string path = dir_.Write("out.vorn", "older output");
    for (const mode_t mode : {0444U, 0400U, 0555U, 0644U, 0666U}) {
        SCOPED_TRACE(mode);
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        EXPECT_TRUE(Ask(path, "y"));
        permission_.reset();
        EXPECT_EQ(ModeOf(path), mode);
    }
}

TEST_F(OverwritePrompt, NewFileInTheOldOnesPlaceKeepsItsMode) {
    const std::string path = dir_.Write("out.vorn", "older output");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(::link(path.c_str(), dir_.File("other-name").c_str()), 0);
    EXPECT_TRUE(Ask(path, "y"));
    const std::string newFile = dir_.Write("new", "output");
    ASSERT_EQ(::chmod(newFile.c_str(), 0644), 0);
    ASSERT_EQ(std::rename(newFile.c_str(), path.c_str()), 0);
    permission_.reset();
    EXPECT_EQ(ModeOf(path), 0644U);
    EXPECT_EQ(ModeOf(dir_.File("other-name")), 0444U) << "the old file is still there";
}

TEST_F(OverwritePrompt, ModeThatWasChangedMeanwhileStays) {
    const std::string path = dir_.Write("out.vorn", "older output");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    EXPECT_TRUE(Ask(path, "y"));
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    permission_.reset();
    EXPECT_EQ(ModeOf(path), 0600U);
}

TEST_F(OverwritePrompt, MissingFileAsksNothing) {
    for (const std::string& path : {dir_.File("out.vorn"), dir_.File("missing/out.vorn")}) {
        SCOPED_TRACE(path);
        EXPECT_TRUE(Ask(path, "n"));
        EXPECT_EQ(text_, "");
        EXPECT_EQ(unread_, "n");
        EXPECT_FALSE(FileExists(path));
    }
}

TEST_F(OverwritePrompt, EmptyFileAsksAsWell) {
    const std::string path = dir_.Write("out.vorn", "");
    EXPECT_FALSE(Ask(path, "n"));
    EXPECT_NE(text_, "");
}

TEST_F(OverwritePrompt, LinkLeadsToTheFileThatIsMadeWritable) {
    const std::string path = dir_.Write("out.vorn", "older output");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    const std::string link = dir_.File("link");
    ASSERT_EQ(::symlink("out.vorn", link.c_str()), 0);
    EXPECT_TRUE(Ask(link, "y"));
    EXPECT_EQ(text_, "Output file '" + link + "' already exists. Overwrite (y/n)? y\n");
    EXPECT_EQ(ModeOf(path), 0644U);
}

TEST_F(OverwritePrompt, PathIsPrintedAsItIsGiven) {
    const std::string path = dir_.Write("%n%s%d.vorn", "older output");
    EXPECT_FALSE(Ask(path, "n"));
    EXPECT_EQ(text_, "Output file '" + path + "' already exists. Overwrite (y/n)? ");
}

TEST_F(OverwritePrompt, PipeDoesNotHangTheQuestion) {
    const std::string path = dir_.File("fifo");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    ::alarm(60);
    EXPECT_FALSE(Ask(path, "n"));
    ::alarm(0);
}

}  // namespace
}  // namespace tarvex::test::overwrite_prompt_test
