#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Platform/FileManager.h"
#include "Platform/Native/NativePlatform.h"
#include "support/ChildProcess.h"
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

    /// A file in the caches directory, which is made for it.
    std::string cachedFile(const std::string& name = "file") {
        EXPECT_FALSE(files().createDirectory(files().cachesDirectory()));
        return files().cachesDirectory() + "/" + name;
    }

    std::string contentOf(const std::string& path) {
        std::error_code error;
        return files().read(path, error).value_or(error.message());
    }

    std::vector<std::string> staged() {
        std::error_code error;
        return files().list(native->home() + "/staging", error).value_or(std::vector<std::string>());
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

TEST_F(NativeFiles, AReplaceThatFailsLeavesNothingElseInTheHome) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "1"));
    EXPECT_FALSE(files().replace(path, "2"));

    EXPECT_TRUE(files().replace(files().cachesDirectory() + "/none/file", "3"));

    EXPECT_EQ(staged(), std::vector<std::string>());
    EXPECT_EQ(contentOf(path), "2");
}

/// An open file, or an inode that is only held so that no new file has its number.
class OpenFile {
public:
    explicit OpenFile(const std::string& path, int flags = O_RDONLY)
        : number(open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(number); }

    [[nodiscard]] std::string content() const {
        std::string text(100'000, ' ');
        const ssize_t length = pread(number, text.data(), text.size(), 0);
        return length < 0 ? "(cannot be read)" : text.substr(0, static_cast<std::size_t>(length));
    }
    [[nodiscard]] bool isAt(const std::string& path) const {
        struct stat own {};
        struct stat named {};
        return fstat(number, &own) == 0 && stat(path.c_str(), &named) == 0 && own.st_ino == named.st_ino;
    }

    const int number;
};

/// Whether the file system of @p directory grants leases.
bool grantsLeases(const std::string& directory) {
    const std::string path = directory + "/leased";
    const OpenFile file(path, O_CREAT | O_RDWR);
    EXPECT_EQ(unlink(path.c_str()), 0);
    return fcntl(file.number, F_SETLEASE, F_WRLCK) == 0;
}

TEST_F(NativeFiles, AReplacedFileIsWrittenToAgainWhereFilesCanBeLeased) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "one"));
    const OpenFile one(path, O_PATH);
    EXPECT_FALSE(files().replace(path, "two, longer"));
    EXPECT_FALSE(one.isAt(path));

    EXPECT_FALSE(files().replace(cachedFile("other"), "three"));

    EXPECT_EQ(one.isAt(cachedFile("other")), grantsLeases(scratch.path()));
    EXPECT_EQ(contentOf(path), "two, longer");
    EXPECT_EQ(contentOf(cachedFile("other")), "three");
}

TEST_F(NativeFiles, ContentsOfAnyLengthFollowEachOther) {
    const std::string path = cachedFile();
    std::error_code error;
    std::int64_t ticks = 1'700'000'000'123'456'789;

    for (const std::size_t length : {10U, 9000U, 3U, 5000U, 1U, 70'000U, 4096U, 0U, 12U, 4097U, 12U}) {
        const std::string content(length, static_cast<char>('a' + length % 26));
        EXPECT_FALSE(files().replace(path, content, Date(std::chrono::nanoseconds(++ticks))));
        EXPECT_TRUE(contentOf(path) == content) << length;
        EXPECT_TRUE(files().modificationDate(path, error) == Date(std::chrono::nanoseconds(ticks)));
        EXPECT_EQ(mode(path), 0600);
    }
}

TEST_F(NativeFiles, AContentThatHasReachedTheDiskIsReplacedAsWell) {
    const std::string path = cachedFile();
    for (int i = 0; i < 6; ++i) {
        const std::string content(static_cast<std::size_t>(9000 - 1000 * i), static_cast<char>('a' + i));
        EXPECT_FALSE(files().replace(path, content));
        EXPECT_EQ(fsync(OpenFile(path).number), 0);
        EXPECT_TRUE(contentOf(path) == content);
    }
}

TEST_F(NativeFiles, AReaderThatHasAnOldFileOpenKeepsItHoweverOftenItIsReplaced) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "old"));
    const OpenFile old(path);

    for (const char* content : {"new and longer", "3", "4", "a fifth"}) {
        EXPECT_FALSE(files().replace(path, content));
        EXPECT_EQ(contentOf(path), content);
        EXPECT_EQ(old.content(), "old");
        EXPECT_FALSE(old.isAt(path));
    }
}

TEST_F(NativeFiles, AReaderInAnotherProcessKeepsTheOldFileToo) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "old"));
    int opened[2] = {};
    int written[2] = {};
    ASSERT_EQ(pipe(opened) + pipe(written), 0);
    testing::ChildProcess reader([&] {
        close(written[1]);
        const OpenFile old(path);
        char byte = 0;
        EXPECT_EQ(write(opened[1], &byte, 1), 1);
        EXPECT_EQ(read(written[0], &byte, 1), 0) << "the writer closes its end";
        EXPECT_EQ(old.content(), "old");
    });
    char byte = 0;
    EXPECT_EQ(read(opened[0], &byte, 1), 1);

    for (const char* content : {"new and longer", "3", "4"}) {
        EXPECT_FALSE(files().replace(path, content));
    }
    close(written[1]);

    EXPECT_TRUE(reader.succeeds());
    for (const int end : {opened[0], opened[1], written[0]}) {
        close(end);
    }
}

TEST_F(NativeFiles, AMappedContentStaysAsItIs) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "old"));
    void* const mapped = mmap(nullptr, 3, PROT_READ, MAP_SHARED, OpenFile(path).number, 0);
    ASSERT_NE(mapped, MAP_FAILED);

    for (const char* content : {"new", "another", "3"}) {
        EXPECT_FALSE(files().replace(path, content));
        EXPECT_EQ(std::string(static_cast<const char*>(mapped), 3), "old");
    }
    munmap(mapped, 3);
}

TEST_F(NativeFiles, AFileWithAnotherNameKeepsItsContentThere) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "old"));
    fs::create_hard_link(path, path + ".backup");

    for (const char* content : {"new", "another", "3"}) {
        EXPECT_FALSE(files().replace(path, content));
    }

    EXPECT_EQ(contentOf(path + ".backup"), "old");
}

TEST_F(NativeFiles, OneReplacedFileIsKeptUntilSomethingIsRemovedOrThePlatformEnds) {
    const std::string path = cachedFile();
    const auto replaceTwice = [&] {
        EXPECT_FALSE(files().replace(path, "one"));
        EXPECT_FALSE(files().replace(path, "two"));
        EXPECT_FALSE(files().replace(cachedFile("other"), "three"));
        EXPECT_FALSE(files().replace(cachedFile("other"), "four"));
        EXPECT_EQ(staged().size(), 1U);
        EXPECT_EQ(mode(native->home() + "/staging/" + staged().front()), 0600);
    };
    replaceTwice();

    EXPECT_FALSE(files().remove(path));
    EXPECT_EQ(staged(), std::vector<std::string>());

    replaceTwice();
    const std::string home = native->home();
    native.reset();
    EXPECT_TRUE(fs::is_empty(home + "/staging"));
}

TEST_F(NativeFiles, ALargeReplacedFileIsNotKept) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, std::string(2'000'000, 'x')));

    EXPECT_FALSE(files().replace(path, "small"));

    EXPECT_EQ(staged(), std::vector<std::string>());
}

TEST_F(NativeFiles, WithoutLeasesEachContentHasAFileOfItsOwn) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "one"));
    const OpenFile one(path, O_PATH);
    testing::ChildProcess child([&] {
        // A file system without leases answers a request for one like this.
        sock_filter steps[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_fcntl, 0, 3),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[1])),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, F_SETLEASE, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog program = {static_cast<unsigned short>(std::size(steps)), steps};
        ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
        ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
        ASSERT_FALSE(grantsLeases(scratch.path()));

        for (const char* content : {"two", "three, longer", "4"}) {
            EXPECT_FALSE(files().replace(path, content));
            EXPECT_EQ(contentOf(path), content);
            EXPECT_FALSE(one.isAt(path));
            EXPECT_LE(staged().size(), 1U);
        }
    });
    EXPECT_TRUE(child.succeeds());
}

TEST_F(NativeFiles, WhoOpensTheFileThatIsBeingWrittenEndsNoProcessAndSpoilsNoWrite) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "first"));
    EXPECT_FALSE(files().replace(path, "second"));
    std::atomic<bool> isOver = false;
    std::thread opener([&] {
        while (!isOver) {
            for (const std::string& name : staged()) {
                for (int i = 0; i < 10; ++i) {
                    const OpenFile opened(native->home() + "/staging/" + name);
                }
            }
        }
    });

    for (int i = 0; i < 500; ++i) {
        const std::string content(static_cast<std::size_t>(i % 50 + 1), 'x');
        EXPECT_FALSE(files().replace(path, content));
        EXPECT_EQ(contentOf(path), content);
    }
    isOver = true;
    opener.join();
}

TEST_F(NativeFiles, ThreadsThatReplaceFilesAtOnceNeverShowAContentUnderAnotherName) {
    const std::string one = cachedFile("one");
    const std::string two = cachedFile("two");
    EXPECT_FALSE(files().replace(one, one));
    EXPECT_FALSE(files().replace(two, two));
    std::atomic<int> writing = 2;
    std::atomic<int> failed = 0;
    // A date tells its file as a content does.
    const Date dates[] = {Date(std::chrono::seconds(1)), Date(std::chrono::seconds(2))};
    const auto dateOf = [&](const std::string& path) { return dates[path == one ? 0 : 1]; };
    EXPECT_FALSE(files().setModificationDate(one, dateOf(one)));
    EXPECT_FALSE(files().setModificationDate(two, dateOf(two)));
    const auto write = [&](const std::string& path) {
        for (int i = 0; i < 500; ++i) {
            const std::string content = path + std::string(static_cast<std::size_t>(i % 7 * 1000), '.');
            failed += files().replace(path, content, dateOf(path)) ? 1 : 0;
        }
        --writing;
    };
    std::thread first(write, one);
    std::thread second(write, two);

    int wrong = 0;
    do {
        for (const std::string& path : {one, two}) {
            const std::string content = contentOf(path);
            wrong += content.starts_with(path) && (content.size() - path.size()) % 1000 == 0 ? 0 : 1;
            std::error_code error;
            wrong += files().modificationDate(path, error) == dateOf(path) ? 0 : 1;
        }
    } while (writing > 0);
    first.join();
    second.join();

    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(failed, 0);
    EXPECT_LE(staged().size(), 1U);
}

TEST_F(NativeFiles, AFileThatTheNameNeverStandsForIsNeitherReadNorDated) {
    const std::string path = cachedFile();
    const Date date(std::chrono::seconds(1));
    EXPECT_FALSE(files().replace(path, "content", date));
    testing::ChildProcess child([&] {
        // As if whatever was opened had lost its name at once: no name is found, while an open file can be asked.
        sock_filter steps[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_newfstatat, 0, 3),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[3])),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, 0, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOENT),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog program = {static_cast<unsigned short>(std::size(steps)), steps};
        ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
        ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
        ASSERT_EQ(mode(path), -1);

        std::error_code error;
        EXPECT_EQ(files().read(path, error), std::nullopt);
        EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
        error.clear();
        EXPECT_EQ(files().modificationDate(path, error), std::nullopt);
        EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
        EXPECT_EQ(files().setModificationDate(path, Date()), std::errc::resource_unavailable_try_again);
    });
    EXPECT_TRUE(child.succeeds());

    std::error_code error;
    EXPECT_EQ(files().modificationDate(path, error), date);
}

TEST_F(NativeFiles, APipeInTheCachesIsAnErrorAndNotWaitedFor) {
    const std::string path = cachedFile("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), S_IRUSR | S_IWUSR), 0);
    std::error_code error;

    EXPECT_EQ(files().read(path, error), std::nullopt);
    EXPECT_EQ(error, std::errc::not_supported);
    error.clear();
    EXPECT_EQ(files().modificationDate(path, error), std::nullopt);
    EXPECT_EQ(error, std::errc::not_supported);
    EXPECT_EQ(files().setModificationDate(path, Date()), std::errc::not_supported);
    EXPECT_FALSE(files().replace(path, "content"));
    EXPECT_EQ(contentOf(path), "content");
}

TEST_F(NativeFiles, AFileThatIsLeasedIsReadOnceTheLeaseHasEnded) {
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "content"));
    if (!grantsLeases(scratch.path())) {
        EXPECT_EQ(contentOf(path), "content");
        return;
    }
    static std::atomic<int> leased;
    const OpenFile holder(path, O_RDWR);
    leased = holder.number;
    struct sigaction before {};
    struct sigaction giveBack {};
    giveBack.sa_flags = SA_RESTART;
    giveBack.sa_handler = [](int) { fcntl(leased, F_SETLEASE, F_UNLCK); };
    ASSERT_EQ(sigaction(SIGURG, &giveBack, &before), 0);
    ASSERT_EQ(fcntl(holder.number, F_SETSIG, SIGURG), 0);
    ASSERT_EQ(fcntl(holder.number, F_SETLEASE, F_WRLCK), 0);

    EXPECT_EQ(contentOf(path), "content");

    EXPECT_EQ(fcntl(holder.number, F_GETLEASE), F_UNLCK);
    sigaction(SIGURG, &before, nullptr);
}

TEST_F(NativeFiles, ADateBeyondWhatCanBeToldIsAnError) {
    // Memory keeps any date, unlike some disks.
    const std::string path = "/dev/shm/quorvane-" + fs::path(scratch.path()).filename().string();
    EXPECT_FALSE(files().createDirectory(path));
    for (const Date date : {Date::min(), Date::max(), Date(std::chrono::nanoseconds(-1))}) {
        std::error_code error;
        EXPECT_FALSE(files().setModificationDate(path, date));
        EXPECT_EQ(files().modificationDate(path, error), date);
    }

    constexpr time_t year2300 = 10'413'792'000;
    for (const timespec beyond : {timespec{year2300, 0}, timespec{-year2300, 0}}) {
        const timespec times[] = {beyond, beyond};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
        std::error_code error;
        EXPECT_EQ(files().modificationDate(path, error), std::nullopt);
        EXPECT_EQ(error, std::errc::value_too_large);
    }
    EXPECT_FALSE(files().remove(path));
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
    const std::string path = cachedFile();
    EXPECT_FALSE(files().replace(path, "one"));
    EXPECT_FALSE(files().replace(path, "two"));
    ASSERT_EQ(staged().size(), 1U);
    const std::string last = native->home() + "/staging/" + staged().front();
    ASSERT_TRUE(last.ends_with("-2")) << "the second file's name";
    const std::string common = last.substr(0, last.size() - 1);
    for (const char* number : {"3", "4", "5"}) {
        std::ofstream(common + number) << "other's";
    }
    const OpenFile reader(last);

    EXPECT_FALSE(files().replace(path, "content"));

    EXPECT_EQ(contentOf(path), "content");
    for (const char* number : {"3", "4", "5"}) {
        EXPECT_EQ(contentOf(common + number), "other's");
    }
    EXPECT_FALSE(files().exists(last));
    EXPECT_TRUE(files().exists(common + "6"));
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
