#pragma once

#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "Platform/Clock.h"
#include "Platform/FileManager.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class FileManagerContract : public Contract {
protected:
    [[nodiscard]] FileManager& files() { return platform().files(); }

    /// A directory of the test's own that exists.
    std::string directory() {
        const std::string path = files().cachesDirectory() + "/own";
        EXPECT_FALSE(files().createDirectory(path));
        return path;
    }

    std::optional<std::string> read(const std::string& path) {
        std::error_code error;
        std::optional<std::string> content = files().read(path, error);
        EXPECT_EQ(content.has_value(), !error);
        return content;
    }

    std::vector<std::string> list(const std::string& path) {
        std::error_code error;
        const std::optional<std::vector<std::string>> names = files().list(path, error);
        EXPECT_EQ(names.has_value(), !error);
        return names.value_or(std::vector<std::string>{"(cannot be listed)"});
    }
};

TEST_P(FileManagerContract, TheCachesDirectoryIsAnAbsolutePathThatStaysTheSame) {
    const std::string path = files().cachesDirectory();
    EXPECT_TRUE(path.starts_with("/")) << path;
    EXPECT_FALSE(path.ends_with("/")) << path;
    EXPECT_FALSE(files().createDirectory(path));
    EXPECT_TRUE(files().exists(path));

    rig->relaunch();

    EXPECT_EQ(files().cachesDirectory(), path);
}

TEST_P(FileManagerContract, CreatesADirectoryAndThoseAboveIt) {
    const std::string path = files().cachesDirectory() + "/a/b/c d";

    EXPECT_FALSE(files().createDirectory(path));

    EXPECT_TRUE(files().exists(path));
    EXPECT_EQ(list(files().cachesDirectory() + "/a"), std::vector<std::string>{"b"});
    EXPECT_EQ(list(path), std::vector<std::string>());
    EXPECT_FALSE(files().createDirectory(path)) << "an existing one is a success";
    EXPECT_FALSE(files().createDirectory(path + "/")) << "a slash at the end changes nothing";
}

TEST_P(FileManagerContract, ADirectoryInThePlaceOfAFileCannotBeCreated) {
    const std::string path = directory() + "/file";
    EXPECT_FALSE(files().replace(path, "content"));

    EXPECT_TRUE(files().createDirectory(path));
    EXPECT_TRUE(files().createDirectory(path + "/below"));

    EXPECT_EQ(read(path), "content");
}

TEST_P(FileManagerContract, WhatIsWrittenReadsBackByteForByte) {
    const std::string base = directory();
    const std::vector<std::string> contents = {"", "text", std::string("a\0b\r\n", 5), std::string(1'000'000, 'x')};

    for (const std::string& content : contents) {
        EXPECT_FALSE(files().replace(base + "/file", content));
        EXPECT_TRUE(read(base + "/file") == content) << content.size();
    }
}

TEST_P(FileManagerContract, FilesStayAcrossARelaunch) {
    const std::string path = directory() + "/file";
    EXPECT_FALSE(files().replace(path, "content"));

    rig->relaunch();

    EXPECT_EQ(read(path), "content");
}

TEST_P(FileManagerContract, NothingButTheFilesAreListedSortedByByte) {
    const std::string base = directory();
    for (const char* name : {"b", "a", "B", ".hidden", "\xC3\xA9", "a b", "10", "9"}) {
        EXPECT_FALSE(files().replace(base + "/" + name, name));
        EXPECT_FALSE(files().replace(base + "/" + name, name));
    }
    EXPECT_FALSE(files().createDirectory(base + "/directory"));

    EXPECT_EQ(list(base),
              (std::vector<std::string>{".hidden", "10", "9", "B", "a", "a b", "b", "directory", "\xC3\xA9"}));
}

TEST_P(FileManagerContract, WritingIntoADirectoryThatIsNotThereFailsAndLeavesNothing) {
    const std::string base = directory();

    EXPECT_EQ(files().replace(base + "/none/file", "content"), std::errc::no_such_file_or_directory);

    EXPECT_EQ(list(base), std::vector<std::string>());
}

TEST_P(FileManagerContract, ADirectoryIsNotReplacedByAFile) {
    const std::string base = directory();
    EXPECT_FALSE(files().createDirectory(base + "/directory"));

    EXPECT_TRUE(files().replace(base + "/directory", "content"));

    EXPECT_EQ(list(base + "/directory"), std::vector<std::string>());
    EXPECT_EQ(list(base), std::vector<std::string>{"directory"});
}

TEST_P(FileManagerContract, WhatIsAbsentIsAnError) {
    const std::string path = directory() + "/none";
    std::error_code error;

    EXPECT_FALSE(files().exists(path));
    EXPECT_EQ(files().read(path, error), std::nullopt);
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    error.clear();
    EXPECT_EQ(files().list(path, error), std::nullopt);
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    error.clear();
    EXPECT_FALSE(files().modificationDate(path, error).has_value());
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    EXPECT_EQ(files().setModificationDate(path, Date()), std::errc::no_such_file_or_directory);
    EXPECT_EQ(files().protect(path, FileProtection::ownerOnly), std::errc::no_such_file_or_directory);
    EXPECT_EQ(files().remove(path), std::errc::no_such_file_or_directory);
}

TEST_P(FileManagerContract, ReadingADirectoryOrListingAFileIsAnError) {
    const std::string base = directory();
    EXPECT_FALSE(files().replace(base + "/file", "content"));
    std::error_code error;

    EXPECT_EQ(files().read(base, error), std::nullopt);
    EXPECT_TRUE(error);
    error.clear();
    EXPECT_EQ(files().list(base + "/file", error), std::nullopt);
    EXPECT_TRUE(error);
}

TEST_P(FileManagerContract, ASuccessClearsTheErrorOfAnEarlierCall) {
    const std::string base = directory();
    EXPECT_FALSE(files().replace(base + "/file", "content"));
    std::error_code error = std::make_error_code(std::errc::io_error);

    EXPECT_EQ(files().read(base + "/file", error), "content");
    EXPECT_FALSE(error);
    error = std::make_error_code(std::errc::io_error);
    EXPECT_TRUE(files().list(base, error).has_value());
    EXPECT_FALSE(error);
    error = std::make_error_code(std::errc::io_error);
    EXPECT_TRUE(files().modificationDate(base + "/file", error).has_value());
    EXPECT_FALSE(error);
}

TEST_P(FileManagerContract, AModificationDateReadsBackAsItWasSet) {
    using std::chrono::nanoseconds;
    const std::string path = directory() + "/file";
    EXPECT_FALSE(files().replace(path, "content"));
    std::error_code error;

    for (const std::int64_t ticks : {std::int64_t{0}, std::int64_t{1'700'000'000'123'456'789},
                                     std::int64_t{4'102'444'800'000'000'001}, std::int64_t{-1'500'000'000}}) {
        EXPECT_FALSE(files().setModificationDate(path, Date(nanoseconds(ticks))));
        EXPECT_TRUE(files().modificationDate(path, error) == Date(nanoseconds(ticks))) << ticks;
        EXPECT_FALSE(error);
    }
    EXPECT_EQ(read(path), "content");
}

TEST_P(FileManagerContract, ANewFileIsDatedNow) {
    const std::string path = directory() + "/file";
    const Date before = platform().clock().now();

    EXPECT_FALSE(files().replace(path, "content"));

    // A file system's own clock may tick a few milliseconds behind.
    std::error_code error;
    const std::optional<Date> date = files().modificationDate(path, error);
    ASSERT_TRUE(date.has_value());
    EXPECT_GE(*date, before - std::chrono::milliseconds(50));
    EXPECT_LE(*date, platform().clock().now());
}

TEST_P(FileManagerContract, AFileThatIsWrittenWithADateHasItWhetherItIsNewOrReplacesAnother) {
    using std::chrono::nanoseconds;
    const std::string path = directory() + "/file";
    std::error_code error;

    for (const std::int64_t ticks : {std::int64_t{4'102'444'800'000'000'001}, std::int64_t{1'700'000'000'123'456'789},
                                     std::int64_t{0}, std::int64_t{-1'500'000'000}}) {
        const std::string content = std::to_string(ticks);
        EXPECT_FALSE(files().replace(path, content, Date(nanoseconds(ticks))));
        EXPECT_TRUE(files().modificationDate(path, error) == Date(nanoseconds(ticks))) << ticks;
        EXPECT_EQ(read(path), content);
    }

    const Date before = platform().clock().now();
    EXPECT_FALSE(files().replace(path, "without a date"));
    EXPECT_GE(files().modificationDate(path, error).value_or(Date()), before - std::chrono::milliseconds(50));
    EXPECT_EQ(list(directory()), std::vector<std::string>{"file"});
}

TEST_P(FileManagerContract, AFailedReplaceLeavesTheDateOfWhatIsThere) {
    const std::string path = directory() + "/directory";
    EXPECT_FALSE(files().createDirectory(path));
    std::error_code error;
    const std::optional<Date> before = files().modificationDate(path, error);

    EXPECT_TRUE(files().replace(path, "content", Date()));

    EXPECT_EQ(files().modificationDate(path, error), before);
}

TEST_P(FileManagerContract, AProtectedFileOrDirectoryIsUsedAsBefore) {
    const std::string base = directory();
    EXPECT_FALSE(files().replace(base + "/file", "content"));

    EXPECT_FALSE(files().protect(base, FileProtection::ownerOnly));
    EXPECT_FALSE(files().protect(base + "/file", FileProtection::ownerOnly));

    EXPECT_EQ(read(base + "/file"), "content");
    EXPECT_FALSE(files().replace(base + "/file", "another"));
    EXPECT_EQ(list(base), std::vector<std::string>{"file"});
}

TEST_P(FileManagerContract, RemovesAFileAndADirectoryWithEverythingInIt) {
    const std::string base = directory();
    EXPECT_FALSE(files().replace(base + "/file", "content"));
    EXPECT_FALSE(files().createDirectory(base + "/a/b"));
    EXPECT_FALSE(files().replace(base + "/a/b/file", "content"));

    EXPECT_FALSE(files().remove(base + "/file"));
    EXPECT_FALSE(files().remove(base + "/a"));

    EXPECT_EQ(list(base), std::vector<std::string>());
    EXPECT_FALSE(files().exists(base + "/a/b/file"));
}

TEST_P(FileManagerContract, APathThatCannotBeIsAnErrorAndNeverAnException) {
    const std::string base = directory();
    std::error_code error;

    for (const std::string& path :
         {std::string(), base + "/" + std::string(5000, 'x'), base + std::string("/a\0b", 4)}) {
        EXPECT_TRUE(files().createDirectory(path));
        EXPECT_TRUE(files().replace(path, "content"));
        EXPECT_EQ(files().read(path, error), std::nullopt);
        EXPECT_EQ(files().list(path, error), std::nullopt);
        EXPECT_FALSE(files().exists(path));
        EXPECT_FALSE(files().modificationDate(path, error).has_value());
        EXPECT_TRUE(files().setModificationDate(path, Date()));
        EXPECT_TRUE(files().protect(path, FileProtection::ownerOnly));
        EXPECT_TRUE(files().remove(path));
    }
    EXPECT_EQ(list(base), std::vector<std::string>());
}

TEST_P(FileManagerContract, AReaderSeesAWholeContentWhileItIsReplaced) {
    const std::string path = directory() + "/file";
    const std::string one(20'000, '1');
    const std::string two(30'000, '2');
    const Date first(std::chrono::hours(1));
    const Date second(std::chrono::hours(2));
    EXPECT_FALSE(files().replace(path, one, first));
    int failed = 0;
    std::thread writer([&] {
        for (int i = 0; i < 100; ++i) {
            failed += files().replace(path, i % 2 == 0 ? two : one, i % 2 == 0 ? second : first) ? 1 : 0;
        }
    });

    int torn = 0;
    int misdated = 0;
    for (int i = 0; i < 100; ++i) {
        const std::optional<std::string> content = read(path);
        torn += content == one || content == two ? 0 : 1;
        std::error_code error;
        const std::optional<Date> date = files().modificationDate(path, error);
        misdated += date == first || date == second ? 0 : 1;
    }
    writer.join();

    EXPECT_EQ(torn, 0);
    EXPECT_EQ(misdated, 0);
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(list(directory()), std::vector<std::string>{"file"});
}

} // namespace quorvane::platform::contract
