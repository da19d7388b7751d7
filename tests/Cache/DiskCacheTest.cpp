#include "Cache/CacheTest.h"
#include "Cache/DiskCache.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

class DiskCacheTest : public CacheTest {
protected:
    std::shared_ptr<Disk> disk = makeDisk();
};

/// Files whose attributes lack a modification date.
class UndatedFiles : public quorvane::testing::MemoryFileManager {
public:
    using MemoryFileManager::MemoryFileManager;
    [[nodiscard]] std::optional<platform::Date> modificationDate(const std::string&,
                                                                 std::error_code& error) const override {
        error.clear();
        return std::nullopt;
    }
};

/// Files that refuse one thing.
class RefusingFiles : public quorvane::testing::MemoryFileManager {
public:
    using MemoryFileManager::MemoryFileManager;
    std::error_code setModificationDate(const std::string& path, platform::Date date) override {
        ++datings;
        return MemoryFileManager::setModificationDate(path, date);
    }
    [[nodiscard]] std::optional<platform::Date> modificationDate(const std::string&,
                                                                 std::error_code& error) const override {
        error = std::make_error_code(std::errc::io_error);
        return std::nullopt;
    }
    std::error_code protect(const std::string&, platform::FileProtection) override {
        return std::make_error_code(std::errc::operation_not_permitted);
    }

    int datings = 0;
};

TEST_F(DiskCacheTest, TheDirectoryIsMadeInTheCachesDirectoryUnderTheStoresName) {
    EXPECT_EQ(disk->path, directory);
    EXPECT_TRUE(files().exists(directory));
    EXPECT_EQ(files().contents()->entries.at(directory).protection, std::nullopt);
}

TEST_F(DiskCacheTest, AnotherParentDirectoryIsMadeWithThoseAboveIt) {
    QVCache::DiskConfig config = diskConfig();
    config.directory = "/somewhere/else/";

    const Disk other(config, files(), transformer());

    EXPECT_EQ(other.path, "/somewhere/else/notes.cache");
    EXPECT_TRUE(files().exists("/somewhere/else/notes.cache"));
}

TEST_F(DiskCacheTest, AConfiguredProtectionIsSetOnTheDirectory) {
    QVCache::DiskConfig config = diskConfig();
    config.protectionType = platform::FileProtection::ownerOnly;

    const Disk other(config, files(), transformer());

    EXPECT_EQ(files().contents()->entries.at(directory).protection, platform::FileProtection::ownerOnly);
}

TEST_F(DiskCacheTest, ADirectoryThatCannotBeMadeOrProtectedFailsTheConstruction) {
    RefusingFiles refusing(phone->clock());
    QVCache::DiskConfig config = diskConfig();
    config.protectionType = platform::FileProtection::ownerOnly;
    EXPECT_EQ(failureOf([&] { Disk(config, refusing, transformer()); }), "Operation not permitted");

    config = diskConfig();
    config.name = "another.cache";
    files().setDiskFull(true);
    EXPECT_EQ(failureOf([&] { Disk(config, files(), transformer()); }), "No space left on device");
}

TEST_F(DiskCacheTest, AFileInTheDirectorysPlaceStaysAndFailsTheOperationsInstead) {
    QVCache::DiskConfig config = diskConfig();
    config.name = "taken";
    ASSERT_FALSE(files().replace("/simulated/caches/taken", "a file"));

    Disk taken(config, files(), transformer());

    EXPECT_NE(failureOf([&] { taken.add("one", "k"); }), "");
    EXPECT_NE(failureOf([&] { static_cast<void>(taken.entry("k")); }), "");
    EXPECT_EQ(fileAt("/simulated/caches/taken"), "a file");
}

TEST_F(DiskCacheTest, TheFormThatTakesAPathTouchesNoFile) {
    const Disk bare(diskConfig(), files(), "/nowhere", transformer());

    EXPECT_EQ(bare.path, "/nowhere");
    EXPECT_FALSE(files().exists("/nowhere"));
}

TEST_F(DiskCacheTest, AValueIsOneFileOfJSONDatedWithItsExpiry) {
    disk->add("one", "photo.jpg");

    const std::string name = Disk::makeFileName("photo.jpg");
    EXPECT_EQ(listed(directory), std::vector<std::string>{name});
    EXPECT_EQ(fileAt(directory + "/" + name), R"({"object":"one"})");
    std::error_code error;
    EXPECT_EQ(files().modificationDate(directory + "/" + name, error), time() + lifetime);
}

TEST_F(DiskCacheTest, AnEntryHasItsKeyValueExpiryAndFile) {
    disk->add("one", "k");

    const auto entry = disk->entry("k");

    EXPECT_EQ(entry->key, "k");
    EXPECT_EQ(entry->value, "one");
    EXPECT_EQ(entry->expiry, time() + lifetime);
    EXPECT_EQ(entry->filePath, disk->makeFilePath("k"));
    EXPECT_EQ(disk->value("k"), "one");
}

TEST_F(DiskCacheTest, AddingAgainReplacesTheFileAndItsExpiry) {
    disk->add("one", "k");
    phone->advance(1h);

    disk->add("two", "k");

    EXPECT_EQ(disk->value("k"), "two");
    EXPECT_EQ(disk->entry("k")->expiry, time() + lifetime);
    EXPECT_EQ(listed(directory).size(), 1U);
}

TEST_F(DiskCacheTest, TheLifetimeIsTwelveHoursWhateverTheConfigurationSays) {
    QVCache::DiskConfig config = diskConfig();
    config.entryLifetime = 1;
    config.maxSize = 1;
    Disk other(config, files(), transformer());

    other.add(std::string(1000, 'x'), "k");

    EXPECT_EQ(other.entry("k")->expiry, time() + lifetime);
    EXPECT_EQ(other.value("k").size(), 1000U);
}

TEST_F(DiskCacheTest, AnExpiredFileIsStillReturnedAndStays) {
    disk->add("one", "k");

    phone->advance(100 * lifetime);

    EXPECT_EQ(disk->value("k"), "one");
    EXPECT_LT(disk->entry("k")->expiry, time());
    EXPECT_EQ(listed(directory).size(), 1U);
}

TEST_F(DiskCacheTest, ADateThatSomebodyElseSetIsTheExpiry) {
    disk->add("one", "k");
    const platform::Date another(123'456'789ns);
    ASSERT_FALSE(files().setModificationDate(disk->makeFilePath("k"), another));

    EXPECT_EQ(disk->entry("k")->expiry, another);
}

TEST_F(DiskCacheTest, AKeyThatWasNeverWrittenIsNoSuchFile) {
    try {
        static_cast<void>(disk->entry("k"));
        FAIL() << "an entry was found";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    }
}

TEST_F(DiskCacheTest, AFileWithoutADateIsMalformedOnceItsContentWasRead) {
    UndatedFiles undated(phone->clock());
    Disk store(diskConfig(), undated, transformer());
    store.add("one", "k");
    EXPECT_EQ(failureOf([&] { static_cast<void>(store.entry("k")); }), "MALFORMED_FILE_ATTRIBUTES");

    ASSERT_FALSE(undated.replace(store.makeFilePath("k"), "{}"));
    EXPECT_EQ(failureOf([&] { static_cast<void>(store.entry("k")); }), "object: expected a value, found none");
}

TEST_F(DiskCacheTest, AttributesThatCannotBeReadAreRaised) {
    RefusingFiles refusing(phone->clock());
    Disk store(diskConfig(), refusing, transformer());
    store.add("one", "k");

    EXPECT_EQ(failureOf([&] { static_cast<void>(store.entry("k")); }), "Input/output error");
}

TEST_F(DiskCacheTest, AFileThatCannotBeReadIsRaised) {
    disk->add("one", "k");
    files().setUnreadable(disk->makeFilePath("k"), true);

    EXPECT_EQ(failureOf([&] { static_cast<void>(disk->entry("k")); }), "Permission denied");
}

TEST_F(DiskCacheTest, AValueThatCannotBeEncodedIsRaisedAndNothingIsWritten) {
    const auto failing = std::make_shared<QVCache::Transformer<std::string>>(
        [](const std::string&) -> std::string { throw json::EncodingError("no form in JSON"); },
        [](std::string bytes) { return bytes; });
    Disk store(diskConfig(), files(), failing);

    EXPECT_EQ(failureOf([&] { store.add("one", "k"); }), "no form in JSON");

    EXPECT_EQ(listed(directory), std::vector<std::string>());
}

TEST_F(DiskCacheTest, AFileThatCannotBeWrittenKeepsTheOlderOneWithItsDateAndIsNoFailure) {
    disk->add("one", "k");
    const platform::Date before = disk->entry("k")->expiry;
    phone->advance(1h);
    files().setDiskFull(true);

    disk->add("two", "k");

    EXPECT_EQ(disk->value("k"), "one");
    EXPECT_EQ(disk->entry("k")->expiry, before);
}

TEST_F(DiskCacheTest, AFileThatCannotBeWrittenWhereNoneStandsIsNoSuchFile) {
    files().setDiskFull(true);

    EXPECT_EQ(failureOf([&] { disk->add("one", "k"); }), noSuchFile);

    EXPECT_EQ(listed(directory), std::vector<std::string>());
}

TEST_F(DiskCacheTest, TheDateComesWithTheFileAndNotAfterIt) {
    RefusingFiles refusing(phone->clock());
    Disk store(diskConfig(), refusing, transformer());

    store.add("one", "k");
    store.add("two", "k");

    EXPECT_EQ(refusing.datings, 0);
}

TEST_F(DiskCacheTest, TwoStoresOfOneNameShareTheirFilesAndOthersDoNot) {
    QVCache::DiskConfig config = diskConfig();
    config.name = "other.cache";
    const std::shared_ptr<Disk> same = makeDisk();
    Disk other(config, files(), transformer());

    disk->add("one", "k");

    EXPECT_EQ(same->value("k"), "one");
    EXPECT_EQ(failureOf([&] { static_cast<void>(other.value("k")); }), noSuchFile);
}

TEST_F(DiskCacheTest, FilesOutliveTheProcess) {
    disk->add("one", "k");
    disk.reset();

    phone.relaunch();

    EXPECT_EQ(makeDisk()->value("k"), "one");
}

TEST_F(DiskCacheTest, KeysOfAnyShapeAreStoredBesideEachOther) {
    const std::vector<std::string> keys{
        "",    ".",       "..",       "/",          "../escape",           "a/b", "a\\b", "a",
        "a.b", "a b.c d", "\xC3\xA9", "x.\xC3\xA9", std::string(5000, 'k')};
    for (const std::string& key : keys) {
        disk->add("value of " + key, key);
    }

    for (const std::string& key : keys) {
        EXPECT_EQ(disk->value(key), "value of " + key);
    }
    EXPECT_EQ(listed(directory).size(), keys.size());
    EXPECT_EQ(listed("/simulated/caches"), std::vector<std::string>{"notes.cache"});
}

TEST_F(DiskCacheTest, AKeyWhoseExtensionNoFileNameCanHaveIsAFailure) {
    EXPECT_NE(failureOf([&] { disk->add("one", "k." + std::string(300, 'x')); }), "");
    EXPECT_NE(failureOf([&] { disk->add("one", std::string("k.a\0b", 5)); }), "");

    EXPECT_EQ(listed(directory), std::vector<std::string>());
}

} // namespace
} // namespace quorvane
