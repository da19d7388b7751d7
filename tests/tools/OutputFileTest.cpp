#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "support/ChildProcess.h"
#include "support/ScratchDirectory.h"
#include "tools/InputFile.h"
#include "tools/OutputFile.h"

namespace quorvane::tool {
namespace {

/// While it lives no file grows beyond a size, as on a full disk.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes) : signal(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &usual);
        const rlimit small{bytes, usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, signal);
    }

private:
    void (*const signal)(int);
    rlimit usual{};
};

class OutputFileTest : public ::testing::Test {
protected:
    static void write(const std::string& where, const std::string& text) {
        OutputFile file(where);
        file.write(text);
        file.finish();
    }
    /// The sentence about a file that cannot be written.
    [[nodiscard]] static std::string failureOf(const std::string& where, const std::string& text = "text") {
        try {
            write(where, text);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "";
    }
    [[nodiscard]] std::ptrdiff_t filesInFolder() const {
        return std::distance(std::filesystem::directory_iterator(scratch.path()), {});
    }
    [[nodiscard]] static mode_t modeOf(const std::string& where) {
        struct stat status {};
        EXPECT_EQ(stat(where.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    const testing::ScratchDirectory scratch;
    const std::string path = scratch.path() + "/output";
};

TEST_F(OutputFileTest, AFileHasItsNameOnceItIsFinished) {
    OutputFile file(path);
    file.write("one ");
    file.write("two");
    EXPECT_FALSE(std::filesystem::exists(path));

    file.finish();

    EXPECT_EQ(contentOf(path), "one two");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(OutputFileTest, WhatHadTheNameBeforeHasItUntilTheFileIsFinished) {
    write(path, "the earlier one");
    {
        OutputFile dropped(path);
        dropped.write("never finished");
    }
    EXPECT_EQ(contentOf(path), "the earlier one");
    EXPECT_EQ(filesInFolder(), 1);

    write(path, "the later one");
    EXPECT_EQ(contentOf(path), "the later one");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(OutputFileTest, AWriteThatFailsLeavesTheEarlierFile) {
    write(path, "the earlier one");
    {
        const SmallFiles full(10'000);
        EXPECT_EQ(failureOf(path, std::string(100'000, 'x')), path + ": File too large");
        EXPECT_EQ(failureOf(path, std::string(10'001, 'x')), path + ": File too large");
    }
    EXPECT_EQ(contentOf(path), "the earlier one");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(OutputFileTest, AFileKeepsItsModeAndANewOneHasTheUsual) {
    std::ofstream(scratch.path() + "/usual") << "x";
    write(path, "x");
    EXPECT_EQ(modeOf(path), modeOf(scratch.path() + "/usual"));

    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    write(path, "y");
    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(OutputFileTest, ALinkStaysALink) {
    const std::string real = scratch.path() + "/real";
    std::filesystem::create_symlink("real", path);

    write(path, "made through the link");
    EXPECT_EQ(contentOf(real), "made through the link");
    write(path, "replaced through the link");
    EXPECT_EQ(contentOf(real), "replaced through the link");

    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(OutputFileTest, AFileOfTwoNamesIsWrittenToAtOnceAndKeepsBoth) {
    write(path, "the earlier one");
    const std::string other = scratch.path() + "/other";
    std::filesystem::create_hard_link(path, other);

    write(path, "the later one");

    EXPECT_EQ(contentOf(other), "the later one");
    EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(OutputFileTest, WhatAnOrdinaryUserMayNotWriteIsRefusedAndAFolderThatTakesNothingDoesNotMatter) {
    write(path, "the earlier one");
    const std::string locked = scratch.path() + "/locked";
    write(locked, "not to be written");
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(locked.c_str(), 0444), 0);
    ASSERT_EQ(chmod(scratch.path().c_str(), 0555), 0);

    testing::ChildProcess user([&] {
        testing::giveUpPrivileges();
        EXPECT_EQ(failureOf(locked), locked + ": Permission denied");
        write(path, "the later one");
    });
    EXPECT_TRUE(user.succeeds());

    ASSERT_EQ(chmod(scratch.path().c_str(), 0755), 0);
    EXPECT_EQ(contentOf(locked), "not to be written");
    EXPECT_EQ(contentOf(path), "the later one");
    EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(OutputFileTest, APipeIsWrittenToAndStaysOne) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::future<std::string> read = std::async(std::launch::async, [this] { return contentOf(path); });

    write(path, "through the pipe");

    EXPECT_EQ(read.get(), "through the pipe");
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(OutputFileTest, WhatCannotBeWrittenIsNamed) {
    EXPECT_EQ(failureOf("/dev/full"), "/dev/full: No space left on device");
    EXPECT_EQ(failureOf(scratch.path()), scratch.path() + ": Is a directory");
    EXPECT_EQ(failureOf(scratch.path() + "/no/such"), scratch.path() + "/no/such: No such file or directory");
    EXPECT_EQ(failureOf("\x1b/no"), "?/no: No such file or directory");
    EXPECT_NE(failureOf(scratch.path() + "/" + std::string(300, 'n')), "");
}

} // namespace
} // namespace quorvane::tool
