#include <algorithm>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Platform/FileManager.h"
#include "Platform/Native/NativePlatform.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform {
namespace {

namespace fs = std::filesystem;

class NativeFiles : public ::testing::Test {
protected:
    [[nodiscard]] FileManager& files() { return native->files(); }

    static int mode(const std::string& path) {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 07777) : -1;
    }

    std::shared_ptr<NativePlatform> launch() {
        NativeOptions options;
        options.home = scratch.path() + "/home";
        return NativePlatform::make(std::move(options));
    }

    const testing::ScratchDirectory scratch;
    std::shared_ptr<NativePlatform> native = launch();
};

TEST_F(NativeFiles, WhatIsWrittenIsForItsOwnerOnlyWhateverTheUmask) {
    for (const mode_t mask : {mode_t{0}, mode_t{022}}) {
        const mode_t before = umask(mask);
        const std::string base = files().cachesDirectory() + "/" + std::to_string(mask);
        EXPECT_FALSE(files().createDirectory(base + "/deep"));
        EXPECT_FALSE(files().replace(base + "/deep/file", "content"));
        umask(before);

        EXPECT_EQ(mode(base), 0700);
        EXPECT_EQ(mode(base + "/deep"), 0700);
        EXPECT_EQ(mode(base + "/deep/file"), 0600);
    }
    EXPECT_EQ(mode(files().cachesDirectory()), 0700);
    EXPECT_EQ(mode(native->home()), 0700);
}

TEST_F(NativeFiles, AFileThatOthersCouldReadIsReplacedByOneThatTheyCannot) {
    const std::string path = files().cachesDirectory() + "/file";
    EXPECT_FALSE(files().createDirectory(files().cachesDirectory()));
    std::ofstream(path) << "old";
    fs::permissions(path, fs::perms(0666));

    EXPECT_FALSE(files().replace(path, "new"));

    EXPECT_EQ(mode(path), 0600);
}

TEST_F(NativeFiles, AReplaceLeavesNothingElseInTheHome) {
    EXPECT_FALSE(files().createDirectory(files().cachesDirectory()));
    EXPECT_FALSE(files().replace(files().cachesDirectory() + "/file", "1"));
    EXPECT_FALSE(files().replace(files().cachesDirectory() + "/file", "2"));
    EXPECT_TRUE(files().replace(files().cachesDirectory() + "/none/file", "3"));

    EXPECT_TRUE(fs::is_empty(native->home() + "/staging"));
}

TEST_F(NativeFiles, AReaderThatHasTheOldFileOpenKeepsIt) {
    const std::string path = files().cachesDirectory() + "/file";
    EXPECT_FALSE(files().createDirectory(files().cachesDirectory()));
    EXPECT_FALSE(files().replace(path, "old"));
    std::ifstream open(path);

    EXPECT_FALSE(files().replace(path, "new and longer"));

    std::string content;
    std::getline(open, content);
    EXPECT_EQ(content, "old");
}

TEST_F(NativeFiles, ADirectoryOnAnotherFileSystemIsWrittenToAsWell) {
    // Memory is a file system of its own on Linux; the scratch directory is usually on a disk.
    const std::string base = "/dev/shm/quorvane-" + fs::path(scratch.path()).filename().string();
    EXPECT_FALSE(files().createDirectory(base + "/own"));

    EXPECT_FALSE(files().replace(base + "/own/file", "1"));
    EXPECT_FALSE(files().replace(base + "/own/file", "2"));

    std::error_code error;
    EXPECT_EQ(files().read(base + "/own/file", error), "2");
    EXPECT_EQ(files().list(base + "/own", error), std::vector<std::string>{"file"});
    EXPECT_EQ(files().list(base, error), std::vector<std::string>{"own"});
    EXPECT_EQ(mode(base + "/own/file"), 0600);
    EXPECT_FALSE(files().remove(base));
}

TEST_F(NativeFiles, WhatAKilledProcessLeftBehindIsClearedAtAStartAnHourLater) {
    EXPECT_FALSE(files().createDirectory(native->home() + "/staging"));
    std::ofstream(native->home() + "/staging/1-1") << "old";
    std::ofstream(native->home() + "/staging/2-1") << "perhaps being written";
    const auto anHourAgo = native->clock().now() - std::chrono::minutes(61);
    EXPECT_FALSE(files().setModificationDate(native->home() + "/staging/1-1", anHourAgo));

    native = launch();

    std::error_code error;
    EXPECT_EQ(files().list(native->home() + "/staging", error), std::vector<std::string>{"2-1"});
}

TEST_F(NativeFiles, AStagedFileWithADateAheadIsTakenForOneThatIsBeingWritten) {
    EXPECT_FALSE(files().createDirectory(native->home() + "/staging"));
    std::ofstream(native->home() + "/staging/1-1") << "dated ahead, perhaps being written";
    EXPECT_FALSE(
        files().setModificationDate(native->home() + "/staging/1-1", native->clock().now() + std::chrono::hours(12)));

    native = launch();

    EXPECT_TRUE(files().exists(native->home() + "/staging/1-1"));
}

TEST_F(NativeFiles, ALinkIsReplacedAndNotWhatItPointsTo) {
    const std::string base = files().cachesDirectory();
    EXPECT_FALSE(files().createDirectory(base));
    EXPECT_FALSE(files().replace(base + "/target", "target"));
    fs::create_symlink(base + "/target", base + "/link");

    EXPECT_FALSE(files().replace(base + "/link", "new"));

    std::error_code error;
    EXPECT_EQ(files().read(base + "/target", error), "target");
    EXPECT_EQ(files().read(base + "/link", error), "new");
    EXPECT_FALSE(fs::is_symlink(base + "/link"));
    EXPECT_EQ(files().list(native->home() + "/staging", error), std::vector<std::string>());
}

TEST_F(NativeFiles, ADirectoryThatIsNotReplacedLeavesNothingBehind) {
    const std::string base = files().cachesDirectory();
    EXPECT_FALSE(files().createDirectory(base + "/directory/below"));

    EXPECT_TRUE(files().replace(base + "/directory", "content"));

    std::error_code error;
    EXPECT_EQ(files().list(base + "/directory", error), std::vector<std::string>{"below"});
    EXPECT_EQ(files().list(native->home() + "/staging", error), std::vector<std::string>());
}

TEST_F(NativeFiles, WhatIsProtectedIsForItsOwnerOnly) {
    const std::string base = files().cachesDirectory() + "/own";
    fs::create_directories(base);
    std::ofstream(base + "/file") << "content";
    fs::permissions(base, fs::perms(0755));
    fs::permissions(base + "/file", fs::perms(0666));

    EXPECT_FALSE(files().protect(base, FileProtection::ownerOnly));
    EXPECT_EQ(mode(base), 0700);
    EXPECT_EQ(mode(base + "/file"), 0666);
    EXPECT_FALSE(files().protect(base + "/file", FileProtection::ownerOnly));
    EXPECT_EQ(mode(base + "/file"), 0600);
}

TEST_F(NativeFiles, AStagedNameThatIsTakenIsPassedOver) {
    EXPECT_FALSE(files().createDirectory(native->home() + "/staging"));
    EXPECT_FALSE(files().createDirectory(files().cachesDirectory()));
    for (int i = 1; i <= 3; ++i) {
        std::ofstream(native->home() + "/staging/" + std::to_string(getpid()) + "-" + std::to_string(i)) << "other's";
    }

    EXPECT_FALSE(files().replace(files().cachesDirectory() + "/file", "content"));

    std::error_code error;
    EXPECT_EQ(files().read(files().cachesDirectory() + "/file", error), "content");
    EXPECT_EQ(files().list(native->home() + "/staging", error)->size(), 3U);
}

TEST_F(NativeFiles, ContentsThatAreReadAreFollowedBySpareMemoryForAParser) {
    const std::string path = files().cachesDirectory() + "/file";
    EXPECT_FALSE(files().createDirectory(files().cachesDirectory()));
    std::error_code error;

    for (const std::size_t size : {0U, 10U, 4096U, 100'000U}) {
        EXPECT_FALSE(files().replace(path, std::string(size, 'x')));
        const std::optional<std::string> content = files().read(path, error);
        ASSERT_TRUE(content.has_value());
        EXPECT_EQ(content->size(), size);
        EXPECT_GE(content->capacity() - content->size(), 64U);
    }
}

TEST_F(NativeFiles, AFileWithoutASizeOfItsOwnIsReadToItsEnd) {
    std::error_code error;

    const std::optional<std::string> content = files().read("/proc/self/maps", error);

    ASSERT_TRUE(content.has_value());
    EXPECT_TRUE(content->ends_with("\n"));
    EXPECT_GT(std::count(content->begin(), content->end(), '\n'), 20);
}

TEST_F(NativeFiles, ALinkIsRemovedWithoutWhatItPointsTo) {
    const std::string base = files().cachesDirectory();
    EXPECT_FALSE(files().createDirectory(base + "/kept"));
    EXPECT_FALSE(files().replace(base + "/kept/file", "content"));
    fs::create_directory_symlink(base + "/kept", base + "/link");

    EXPECT_FALSE(files().remove(base + "/link"));

    EXPECT_TRUE(files().exists(base + "/kept/file"));
}

} // namespace
} // namespace quorvane::platform
