#include <chrono>
#include <csignal>
#include <limits>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include "Platform/Native/PreferencesFixture.h"

namespace quorvane::platform::native {
namespace {

class NativePreferences : public NativePreferencesTest {};

TEST_F(NativePreferences, EachFileIsForItsOwnerOnlyWhateverTheUmask) {
    const mode_t before = umask(0);
    const auto store = open();
    store->setString("token", "secret");
    umask(before);

    EXPECT_EQ(mode(path), 0600);
    EXPECT_EQ(mode(path + "-wal"), 0600);
    EXPECT_EQ(mode(path + "-shm"), 0600);
    EXPECT_EQ(mode(path + ".lock"), 0600);
}

TEST_F(NativePreferences, FilesThatOthersCouldReadAreTakenAwayFromThem) {
    // Killed processes leave the log behind; here a second connection keeps it.
    const auto other = open();
    other->setString("token", "secret");
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::permissions(path + suffix, std::filesystem::perms(0666));
    }

    const auto store = open();

    EXPECT_EQ(store->string("token"), "secret");
    EXPECT_EQ(mode(path), 0600);
    EXPECT_EQ(mode(path + "-wal"), 0600);
    EXPECT_EQ(mode(path + "-shm"), 0600);
}

TEST_F(NativePreferences, TheTableKeepsEachValueUntouchedBesideItsType) {
    const auto store = open();
    store->setString("a", "42");
    store->setInteger("b", 42);
    store->setNumber("c", 42.0);
    store->setNumber("d", std::numeric_limits<double>::quiet_NaN());
    store->setString("e", "");

    EXPECT_EQ(sql("SELECT group_concat(key || ' ' || type || ' ' || typeof(value), ', ') FROM preferences"),
              "a text text, b integer integer, c double real, d double null, e text text");
}

TEST_F(NativePreferences, ASynchronizedValueStandsInTheFileItself) {
    const auto store = open();
    store->setString("token", "written ahead");
    EXPECT_EQ(content(path).find("written ahead"), std::string::npos);

    store->synchronize();

    EXPECT_NE(content(path).find("written ahead"), std::string::npos);
}

TEST_F(NativePreferences, AFileThatIsReadableTellsNothing) {
    open()->setString("k", "v");

    EXPECT_EQ(open()->string("k"), "v");

    EXPECT_TRUE(lines.empty());
    EXPECT_FALSE(std::filesystem::exists(path + ".damaged"));
}

TEST_F(NativePreferences, AnEmptyFileIsAnEmptyStore) {
    overwrite("");

    const auto store = open();
    store->setString("k", "v");

    EXPECT_EQ(open()->string("k"), "v");
    EXPECT_TRUE(lines.empty());
}

TEST_F(NativePreferences, WhatTheDiskRefusesIsKeptInMemoryAndToldOnce) {
    const auto store = open();
    store->setString("before", "on disk");
    // A log that may not grow stands for a full disk.
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    rlimit tiny = unlimited;
    tiny.rlim_cur = 1024;
    setrlimit(RLIMIT_FSIZE, &tiny);

    store->setString("one", std::string(100'000, '1'));
    store->setString("two", std::string(100'000, '2'));
    store->remove("before");

    EXPECT_EQ(store->string("one"), std::string(100'000, '1'));
    EXPECT_EQ(store->string("two"), std::string(100'000, '2'));
    EXPECT_EQ(store->string("before"), std::nullopt);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, ignored);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("memory"), std::string::npos) << lines[0];
    EXPECT_EQ(open()->string("one"), std::nullopt);
    EXPECT_EQ(open()->string("before"), "on disk");

    store->setString("two", "short");
    store->synchronize();
    EXPECT_EQ(store->string("two"), "short");
    EXPECT_EQ(open()->string("two"), "short");
    EXPECT_EQ(open()->string("one"), std::string(100'000, '1')) << "synchronizing tries again";
    EXPECT_EQ(open()->string("before"), std::nullopt);
    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(NativePreferences, APathThatCannotBeAFileMeansMemoryAndOneLine) {
    std::filesystem::create_directory(path);

    const auto store = open();
    store->setInteger("k", 1);
    store->setInteger("k", 2);
    store->synchronize();

    EXPECT_EQ(store->integer("k"), 2);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("it is no regular file"), std::string::npos) << lines[0];
    EXPECT_EQ(open()->integer("k"), std::nullopt);
}

TEST_F(NativePreferences, APipeIsNoPreferencesFileEither) {
    ASSERT_EQ(mkfifo(path.c_str(), S_IRUSR | S_IWUSR), 0);

    open()->setInteger("k", 1);

    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("it is no regular file"), std::string::npos) << lines[0];
}

TEST_F(NativePreferences, AFileThatAnotherProcessHoldsForTooLongIsRefused) {
    const int lock = ::open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    PreferencesFile file(path, std::chrono::milliseconds(5));

    EXPECT_EQ(file.open(), FileOutcome::refused);
    EXPECT_EQ(file.reason(), "another process holds it");
    EXPECT_FALSE(std::filesystem::exists(path));

    close(lock);
    EXPECT_EQ(file.open(), FileOutcome::done);
}

TEST_F(NativePreferences, TwoStoresOnOneFileSeeEachOthersWritesAtOnce) {
    const auto one = open();
    const auto two = open();

    one->setString("k", "1");
    EXPECT_EQ(two->string("k"), "1");
    two->setString("k", "2");
    EXPECT_EQ(one->string("k"), "2");
    two->remove("k");
    EXPECT_EQ(one->string("k"), std::nullopt);
}

TEST_F(NativePreferences, ARowOfAKindThatIsNotOursReadsAsAbsent) {
    const auto store = open();
    store->setString("k", "text");

    for (const char* row : {"'text', 5", "'integer', 'x'", "'double', 'x'", "'bool', 1.5", "'date', NULL",
                            "'dictionary', '{'", "'dictionary', '[1]'", "'unknown', 1", "'text', x'00'"}) {
        static_cast<void>(sql("INSERT OR REPLACE INTO preferences VALUES ('k', " + std::string(row) + ")"));
        EXPECT_EQ(store->string("k"), std::nullopt) << row;
        EXPECT_EQ(store->integer("k"), std::nullopt) << row;
        EXPECT_EQ(store->number("k"), std::nullopt) << row;
        EXPECT_EQ(store->boolean("k"), std::nullopt) << row;
        EXPECT_EQ(store->date("k"), std::nullopt) << row;
        EXPECT_EQ(store->dictionary("k"), std::nullopt) << row;
    }
    EXPECT_TRUE(lines.empty());
}

} // namespace
} // namespace quorvane::platform::native
