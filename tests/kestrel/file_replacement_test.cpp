/// How a written database takes the place of the file that was there.

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "kestrel/atomic_file.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* kEmptyDatabase = R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {},
"attribute_definitions": [],
"nodes": [],
"messages": []
}
)";

class FileReplacement : public DatabaseTest {
  protected:
    KestrelError WriteTo(const std::string& path) { return manager_.WriteDatabase(key_, path.c_str()); }

    struct stat Status(const std::string& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status;
    }

    mode_t Mode(const std::string& path) { return Status(path).st_mode & 07777U; }
};

/// Sets the process's file mode mask and puts the old one back.
class UmaskInForce {
  public:
    explicit UmaskInForce(mode_t mask) : old_(umask(mask)) {}
    UmaskInForce(const UmaskInForce&) = delete;
    UmaskInForce(UmaskInForce&&) = delete;
    UmaskInForce& operator=(const UmaskInForce&) = delete;
    UmaskInForce& operator=(UmaskInForce&&) = delete;
    ~UmaskInForce() { umask(old_); }

  private:
    mode_t old_;
};

/// Makes every write beyond the first bytes of a file fail, as on a full disk.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) {
        oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &oldLimit_);
        const rlimit limit{bytes, oldLimit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk(SmallDisk&&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    SmallDisk& operator=(SmallDisk&&) = delete;
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &oldLimit_);
        (void)std::signal(SIGXFSZ, oldHandler_);
    }

  private:
    rlimit oldLimit_{};
    void (*oldHandler_)(int) = nullptr;
};

TEST_F(FileReplacement, NewFileIsAllThatIsLeftInTheDirectory) {
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
    EXPECT_EQ(ReadFile(directory_ / "out.vorn"), kEmptyDatabase);
    EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
}

TEST_F(FileReplacement, OldFileIsReplacedWhole) {
    MakeFile(directory_ / "out.vorn", std::string(10'000, 'o'));
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
    EXPECT_EQ(ReadFile(directory_ / "out.vorn"), kEmptyDatabase);
    EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
}

TEST_F(FileReplacement, ReaderOfTheOldFileKeepsIt) {
    MakeFile(directory_ / "out.vorn", "old");
    std::ifstream reader(directory_ / "out.vorn");
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
    std::string text;
    reader >> text;
    EXPECT_EQ(text, "old");
}

TEST_F(FileReplacement, FileNameWithoutDirectoryIsInTheCurrentOne) {
    const fs::path before = fs::current_path();
    fs::current_path(directory_.Path());
    const KestrelError result = WriteTo("out.vorn");
    fs::current_path(before);
    EXPECT_EQ(result, kKestrelOk);
    EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
}

TEST_F(FileReplacement, ReadOnlyFileIsRefusedAlsoForRoot) {
    MakeFile(directory_ / "out.vorn", "old");
    chmod((directory_ / "out.vorn").c_str(), 0444);
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(ReadFile(directory_ / "out.vorn"), "old");
    EXPECT_EQ(Mode(directory_ / "out.vorn"), 0444U);
    EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
}

TEST_F(FileReplacement, DirectoryIsRefused) {
    fs::create_directory(directory_ / "out.vorn");
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(WriteTo((directory_ / "out.vorn") + "/"), kKestrelCannotOpen);
    EXPECT_TRUE(fs::is_empty(directory_ / "out.vorn"));
    EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
}

TEST_F(FileReplacement, PipeIsRefused) {
    ASSERT_EQ(mkfifo((directory_ / "out.vorn").c_str(), 0600), 0);
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelCannotOpen);
    EXPECT_TRUE(S_ISFIFO(Status(directory_ / "out.vorn").st_mode));
    EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
}

TEST_F(FileReplacement, MissingDirectoryIsRefused) {
    EXPECT_EQ(WriteTo(directory_ / "missing/out.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(directory_.Names(), Names{});
}

TEST_F(FileReplacement, FileInPlaceOfTheDirectoryIsRefused) {
    MakeFile(directory_ / "file", "old");
    EXPECT_EQ(WriteTo(directory_ / "file/out.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(ReadFile(directory_ / "file"), "old");
}

TEST_F(FileReplacement, EmptyPathIsRefused) {
    EXPECT_EQ(WriteTo(""), kKestrelCannotOpen);
}

TEST_F(FileReplacement, NewNameThatEndsInASlashFailsAndLeavesNothing) {
    EXPECT_NE(WriteTo((directory_ / "out.vorn") + "/"), kKestrelOk);
    EXPECT_EQ(directory_.Names(), Names{});
}

TEST_F(FileReplacement, FileBehindALinkIsReplacedAndTheLinkStays) {
    fs::create_directory(directory_ / "real");
    MakeFile(directory_ / "real/out.vorn", "old");
    fs::create_symlink("real/out.vorn", directory_ / "relative.vorn");
    fs::create_symlink(directory_ / "relative.vorn", directory_ / "absolute.vorn");
    EXPECT_EQ(WriteTo(directory_ / "absolute.vorn"), kKestrelOk);
    EXPECT_EQ(fs::read_symlink(directory_ / "absolute.vorn"), directory_ / "relative.vorn");
    EXPECT_EQ(fs::read_symlink(directory_ / "relative.vorn"), "real/out.vorn");
    EXPECT_EQ(ReadFile(directory_ / "real/out.vorn"), kEmptyDatabase);
    EXPECT_EQ(directory_.Names(), (Names{"absolute.vorn", "real", "relative.vorn"}));
}

TEST_F(FileReplacement, LinkToNothingYetIsFollowed) {
    fs::create_symlink("real.vorn", directory_ / "link.vorn");
    EXPECT_EQ(WriteTo(directory_ / "link.vorn"), kKestrelOk);
    EXPECT_TRUE(fs::is_symlink(directory_ / "link.vorn"));
    EXPECT_EQ(ReadFile(directory_ / "real.vorn"), kEmptyDatabase);
}

TEST_F(FileReplacement, LinkToAReadOnlyFileIsRefused) {
    MakeFile(directory_ / "real.vorn", "old");
    chmod((directory_ / "real.vorn").c_str(), 0444);
    fs::create_symlink("real.vorn", directory_ / "link.vorn");
    EXPECT_EQ(WriteTo(directory_ / "link.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(ReadFile(directory_ / "real.vorn"), "old");
}

TEST_F(FileReplacement, LinkToItselfIsRefused) {
    fs::create_symlink("link.vorn", directory_ / "link.vorn");
    EXPECT_EQ(WriteTo(directory_ / "link.vorn"), kKestrelCannotOpen);
    EXPECT_TRUE(fs::is_symlink(directory_ / "link.vorn"));
}

TEST_F(FileReplacement, ModeOfTheOldFileIsKept) {
    const UmaskInForce umaskInForce(077);
    for (const mode_t mode : {0640U, 0666U, 0200U, 0755U}) {
        MakeFile(directory_ / "out.vorn", "old");
        chmod((directory_ / "out.vorn").c_str(), mode);
        EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
        EXPECT_EQ(Mode(directory_ / "out.vorn"), mode);
    }
}

TEST_F(FileReplacement, ModeOfANewFileFollowsTheUmask) {
    for (const mode_t mask : {0U, 022U, 027U, 077U}) {
        const UmaskInForce umaskInForce(mask);
        fs::remove(directory_ / "out.vorn");
        EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
        EXPECT_EQ(Mode(directory_ / "out.vorn"), 0666U & ~mask);
    }
}

/// Who writes it may have to open it again by its name.
TEST_F(FileReplacement, TemporaryFileIsTheOwnersWhateverTheUmaskTakesAway) {
    const UmaskInForce umaskInForce(0777);
    kestrel::AtomicFile file;
    ASSERT_TRUE(file.Open(directory_ / "out.sqlite"));
    EXPECT_EQ(std::filesystem::status(file.TemporaryPath()).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(FileReplacement, OwnerOfTheOldFileIsKeptForRoot) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    MakeFile(directory_ / "out.vorn", "old");
    ASSERT_EQ(chown((directory_ / "out.vorn").c_str(), 1234, 2345), 0);
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
    EXPECT_EQ(Status(directory_ / "out.vorn").st_uid, 1234U);
    EXPECT_EQ(Status(directory_ / "out.vorn").st_gid, 2345U);
}

TEST_F(FileReplacement, LinksInACircleAreRefused) {
    fs::create_symlink("b.vorn", directory_ / "a.vorn");
    fs::create_symlink("a.vorn", directory_ / "b.vorn");
    EXPECT_EQ(WriteTo(directory_ / "a.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(directory_.Names(), (Names{"a.vorn", "b.vorn"}));
}

TEST_F(FileReplacement, LinkIntoAMissingDirectoryIsRefused) {
    fs::create_symlink("missing/real.vorn", directory_ / "link.vorn");
    EXPECT_EQ(WriteTo(directory_ / "link.vorn"), kKestrelCannotOpen);
    EXPECT_EQ(directory_.Names(), Names{"link.vorn"});
}

TEST_F(FileReplacement, NameThatNoFileCanHaveIsRefused) {
    EXPECT_EQ(WriteTo(directory_ / std::string(300, 'n')), kKestrelCannotOpen);
    EXPECT_EQ(WriteTo(directory_ / std::string(5000, 'n')), kKestrelCannotOpen);
    std::string deep = directory_.Path();
    while (deep.size() < 5000) {
        deep += "/directory";
    }
    EXPECT_EQ(WriteTo(deep), kKestrelCannotOpen);
    EXPECT_EQ(directory_.Names(), Names{});
}

TEST_F(FileReplacement, TemporaryFilesOfAKilledProcessAreNotInTheWay) {
    MakeFile(directory_ / ".kestrel-aaaaaa", "half a database");
    chmod((directory_ / ".kestrel-aaaaaa").c_str(), 0);
    fs::create_directory(directory_ / ".kestrel-bbbbbb");
    MakeFile(directory_ / "out.vorn", "old");
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
    EXPECT_EQ(ReadFile(directory_ / "out.vorn"), kEmptyDatabase);
    EXPECT_EQ(directory_.Names(), (Names{".kestrel-aaaaaa", ".kestrel-bbbbbb", "out.vorn"}));
}

TEST_F(FileReplacement, FullDiskLeavesTheOldFileAndNothingElse) {
    MakeFile(directory_ / "out.vorn", "old");
    for (const int nodes : {100, 50'000}) {  // fails with the last block, fails with the first of many
        for (int number = 0; number < nodes; ++number) {
            AddNode("Radio");
        }
        KestrelError result = kKestrelOk;
        {
            const SmallDisk smallDisk(1000);
            result = WriteTo(directory_ / "out.vorn");
        }
        EXPECT_EQ(result, kKestrelWriteFailed);
        EXPECT_EQ(ReadFile(directory_ / "out.vorn"), "old");
        EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
    }
    EXPECT_EQ(WriteTo(directory_ / "out.vorn"), kKestrelOk);
}

TEST_F(FileReplacement, FailureInAnyFormatLeavesTheOldFile) {
    for (int number = 0; number < 100; ++number) {
        AddNode("Radio");
    }
    for (const char* name : {"out.sqlite", "out.kcd"}) {
        MakeFile(directory_ / name, "old");
        KestrelError result = kKestrelOk;
        {
            const SmallDisk smallDisk(1000);
            result = WriteTo(directory_ / name);
        }
        EXPECT_EQ(result, kKestrelWriteFailed) << name;
        EXPECT_EQ(ReadFile(directory_ / name), "old") << name;
        chmod((directory_ / name).c_str(), 0444);
        EXPECT_EQ(WriteTo(directory_ / name), kKestrelCannotOpen) << name;
        EXPECT_EQ(ReadFile(directory_ / name), "old") << name;
    }
    EXPECT_EQ(directory_.Names(), (Names{"out.kcd", "out.sqlite"}));
}

TEST_F(FileReplacement, ModeOfANewFileIsTheSameInEveryFormat) {
    const UmaskInForce umaskInForce(027);
    for (const char* name : {"out.sqlite", "out.kcd"}) {
        EXPECT_EQ(WriteTo(directory_ / name), kKestrelOk) << name;
        EXPECT_EQ(Mode(directory_ / name), 0640U) << name;
    }
}

}  // namespace
