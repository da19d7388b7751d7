#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "Cache/Native/NativeCacheTest.h"
#include "support/ChildProcess.h"

namespace quorvane {
namespace {

using quorvane::testing::ChildProcess;
namespace fs = std::filesystem;

/// Cache files in every bad state.
class DiskDamageTest : public NativeCacheTest {
protected:
    /// Puts @p content into the key's file behind the cache's back.
    static void damage(const std::string& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }

    /// Runs @p work in a process of an ordinary user, to whom the scratch directory belongs.
    template <class Work>
    void asOrdinaryUser(Work work) {
        if (geteuid() == 0) {
            ASSERT_EQ(
                chown(scratch.path().c_str(), quorvane::testing::unprivilegedUser, quorvane::testing::unprivilegedUser),
                0);
        }
        ChildProcess child([&] {
            quorvane::testing::giveUpPrivileges();
            launch();
            work();
            platform::install(nullptr);
        });
        EXPECT_TRUE(child.succeeds());
    }

    static constexpr const char* noSuchFile = "No such file or directory";
};

TEST_F(DiskDamageTest, AFileThatIsCutAnywhereIsAnErrorAndIsReplacedByTheNextAdd) {
    launch();
    const auto disk = makeDisk();
    const std::string value = "a text with \"quotes\" and \xC3\xA9";
    disk->add(value, "k");
    const auto size = fs::file_size(disk->makeFilePath("k"));

    for (std::uintmax_t length = 0; length < size; ++length) {
        fs::resize_file(disk->makeFilePath("k"), length);
        EXPECT_THROW(static_cast<void>(disk->entry("k")), json::DecodingError) << length;
        disk->add(value, "k");
        EXPECT_EQ(disk->value("k"), value);
    }
}

TEST_F(DiskDamageTest, AFileOfAnotherTypeIsAnErrorAndIsReplacedByTheNextAdd) {
    launch();
    const auto cache = makeCache();
    const std::string path = cache->hybridCache->disk->makeFilePath("k");

    for (const std::string& content :
         {std::string(), std::string(R"({"object":7})"), std::string("[]"), std::string("\x89PNG\r\n\x1A\n\0\0", 10),
          std::string(100'000, '['), std::string(100'000, '\0'), std::string(R"({"object":"a"} and more)")}) {
        damage(path, content);
        EXPECT_THROW(static_cast<void>(cache->value("k")), json::DecodingError) << content.substr(0, 20);
    }
    cache->add("one", "k");

    EXPECT_EQ(makeDisk()->value("k"), "one");
}

TEST_F(DiskDamageTest, ADirectoryInAFilesPlaceIsAnErrorWhenReadAndStaysWhenWritten) {
    launch();
    const auto cache = makeCache();
    const std::string path = cache->hybridCache->disk->makeFilePath("k");
    fs::create_directories(path + "/below");
    EXPECT_EQ(failureOf([&] { static_cast<void>(cache->value("k")); }), "Is a directory");

    cache->add("one", "k");

    EXPECT_EQ(cache->value("k"), "one") << "memory has it";
    EXPECT_EQ(listed(path), std::vector<std::string>{"below"});
    EXPECT_EQ(listed(home + "/staging"), std::vector<std::string>());
}

TEST_F(DiskDamageTest, ADirectoryOfTheStoreThatIsRemovedFailsItsOperations) {
    launch();
    const auto disk = makeDisk();
    disk->add("one", "k");
    fs::remove_all(directory);

    EXPECT_EQ(failureOf([&] { static_cast<void>(disk->entry("k")); }), noSuchFile);
    EXPECT_EQ(failureOf([&] { disk->add("one", "k"); }), noSuchFile);
    EXPECT_FALSE(fs::exists(directory));
    makeDisk()->add("one", "k");
    EXPECT_EQ(disk->value("k"), "one");
}

TEST_F(DiskDamageTest, AnUnreadableFileIsAnErrorAndIsReplacedByTheNextAdd) {
    asOrdinaryUser([&] {
        const auto disk = makeDisk();
        disk->add("one", "k");
        fs::permissions(disk->makeFilePath("k"), fs::perms::none);
        EXPECT_EQ(failureOf([&] { static_cast<void>(disk->entry("k")); }), "Permission denied");

        disk->add("two", "k");

        EXPECT_EQ(disk->value("k"), "two");
    });
}

TEST_F(DiskDamageTest, AReadOnlyDirectoryKeepsItsFilesAndRefusesNewOnes) {
    asOrdinaryUser([&] {
        const auto disk = makeDisk();
        disk->add("one", "k");
        const platform::Date expiry = disk->entry("k")->expiry;
        fs::permissions(directory, fs::perms::owner_read | fs::perms::owner_exec);

        disk->add("two", "k");
        EXPECT_EQ(failureOf([&] { disk->add("one", "new"); }), noSuchFile);

        EXPECT_EQ(disk->value("k"), "one");
        EXPECT_EQ(disk->entry("k")->expiry, expiry);
        EXPECT_EQ(listed(directory).size(), 1U);
        EXPECT_EQ(listed(home + "/staging"), std::vector<std::string>());
        fs::permissions(directory, fs::perms::owner_all);
        disk->add("one", "new");
        EXPECT_EQ(disk->value("new"), "one");
    });
}

TEST_F(DiskDamageTest, AHomeThatCannotBeWrittenHasNoStore) {
    asOrdinaryUser([&] {
        fs::create_directories(home);
        fs::permissions(home, fs::perms::owner_read | fs::perms::owner_exec);

        EXPECT_EQ(failureOf([] { static_cast<void>(makeDisk()); }), "Permission denied");
    });
}

/// Whether a small file system in memory could be mounted at @p path, for this process alone.
bool mountSmallDisk(const std::string& path) {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    const bool isPrivileged = geteuid() == 0;
    if (unshare(isPrivileged ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0) {
        return false;
    }
    if (!isPrivileged) {
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
        std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", path.c_str(), "tmpfs", 0, "size=512k,mode=700") == 0;
}

/// Lets no file of this process grow beyond @p bytes; a write beyond is an error.
void limitFiles(rlim_t bytes) {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST_F(DiskDamageTest, AFullDiskKeepsItsFilesWholeAndRefusesNewOnesUntilThereIsRoom) {
    ChildProcess child([&] {
        fs::create_directories(home);
        const bool isMounted = mountSmallDisk(home);
        launch();
        const auto disk = makeDisk();
        disk->add("one", "known");
        const platform::Date expiry = disk->entry("known")->expiry;
        const std::string large(40'000, 'x');
        if (!isMounted) {
            // Where nothing can be mounted, a limit on the size of files stops the writing in the same way.
            limitFiles(8192);
        }
        int stored = 0;
        while (stored < 100 && failureOf([&] { disk->add(large, std::to_string(stored)); }).empty()) {
            ++stored;
        }
        EXPECT_LT(stored, 13);

        EXPECT_EQ(failureOf([&] { disk->add(large, "new"); }), noSuchFile);
        disk->add(large, "known");
        EXPECT_EQ(disk->value("known"), "one");
        EXPECT_EQ(disk->entry("known")->expiry, expiry);
        for (int i = 0; i < stored; ++i) {
            EXPECT_EQ(disk->value(std::to_string(i)), large);
        }
        EXPECT_EQ(listed(directory).size(), static_cast<std::size_t>(stored) + 1);
        EXPECT_EQ(listed(home + "/staging"), std::vector<std::string>());

        if (isMounted) {
            EXPECT_GT(stored, 5);
            EXPECT_FALSE(files().remove(disk->makeFilePath("0")));
            EXPECT_FALSE(files().remove(disk->makeFilePath("1")));
        } else {
            limitFiles(RLIM_INFINITY);
        }
        disk->add(large, "known");
        EXPECT_EQ(disk->value("known"), large);
        platform::install(nullptr);
    });
    EXPECT_TRUE(child.succeeds());
}

TEST_F(DiskDamageTest, AReadOnlyFileSystemIsReadAsEverAndRefusesWhatIsNew) {
    ChildProcess child([&] {
        fs::create_directories(home);
        const bool isMounted = mountSmallDisk(home);
        const auto relaunch = [&](bool isReadOnly) {
            platform::install(nullptr);
            if (isMounted) {
                EXPECT_EQ(mount(nullptr, home.c_str(), nullptr, MS_REMOUNT | (isReadOnly ? MS_RDONLY : 0), nullptr), 0);
            } else {
                // Where nothing can be mounted, a limit on the size of files stops the writing in the same way.
                limitFiles(isReadOnly ? 0 : RLIM_INFINITY);
            }
            launch();
        };
        launch();
        makeDisk()->add("one", "known");
        const platform::Date expiry = makeDisk()->entry("known")->expiry;

        relaunch(true);
        const auto disk = makeDisk();
        disk->add("two", "known");
        EXPECT_EQ(failureOf([&] { disk->add("one", "new"); }), noSuchFile);

        EXPECT_EQ(disk->value("known"), "one");
        EXPECT_EQ(disk->entry("known")->expiry, expiry);
        EXPECT_EQ(listed(directory).size(), 1U);
        if (isMounted) {
            QVCache::DiskConfig other = config();
            other.name = "other.cache";
            EXPECT_EQ(failureOf([&] { const Disk made(other, files(), transformer()); }), "Read-only file system");
        }

        relaunch(false);
        EXPECT_EQ(listed(home + "/staging"), std::vector<std::string>());
        makeDisk()->add("one", "new");
        EXPECT_EQ(makeDisk()->value("new"), "one");
        platform::install(nullptr);
    });
    EXPECT_TRUE(child.succeeds());
}

TEST_F(DiskDamageTest, AWriteThatStopsHalfwayLeavesTheOldFileAndNoOther) {
    ChildProcess child([&] {
        launch();
        const auto disk = makeDisk();
        disk->add("one", "k");
        limitFiles(10'000);

        disk->add(std::string(20'000, 'x'), "k");
        EXPECT_EQ(failureOf([&] { disk->add(std::string(20'000, 'x'), "new"); }), noSuchFile);

        limitFiles(RLIM_INFINITY);
        EXPECT_EQ(disk->value("k"), "one");
        EXPECT_EQ(listed(directory).size(), 1U);
        EXPECT_EQ(listed(home + "/staging"), std::vector<std::string>());
        platform::install(nullptr);
    });
    EXPECT_TRUE(child.succeeds());
}

TEST_F(DiskDamageTest, FilesAreTheirOwnersOnly) {
    launch();
    const auto disk = makeDisk();
    const mode_t before = umask(0);
    disk->add("one", "k");
    disk->add("two", "k");
    umask(before);

    struct stat status {};
    ASSERT_EQ(stat(disk->makeFilePath("k").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    ASSERT_EQ(stat(directory.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
}

TEST_F(DiskDamageTest, AConfiguredProtectionClosesADirectoryThatWasOpen) {
    launch();
    fs::create_directories(directory);
    fs::permissions(directory, fs::perms(0755));
    QVCache::DiskConfig protecting = config();
    protecting.protectionType = platform::FileProtection::ownerOnly;

    const Disk disk(protecting, files(), transformer());

    EXPECT_EQ(fs::status(directory).permissions(), fs::perms(0700));
}

TEST_F(DiskDamageTest, FilesOutliveTheProcessWithTheirExpiry) {
    launch();
    const auto disk = makeDisk();
    disk->add("one", "photo.jpg");
    const platform::Date expiry = disk->entry("photo.jpg")->expiry;
    EXPECT_GT(expiry, platform::current().clock().now() + std::chrono::hours(11));

    launch();

    EXPECT_EQ(makeDisk()->value("photo.jpg"), "one");
    EXPECT_EQ(makeDisk()->entry("photo.jpg")->expiry, expiry);
    EXPECT_EQ(listed(directory), std::vector<std::string>{Disk::makeFileName("photo.jpg")});
}

} // namespace
} // namespace quorvane
