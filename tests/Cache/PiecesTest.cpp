#include <set>

#include "Cache/CacheTest.h"
#include "Cache/Utils.h"

namespace quorvane {
namespace {

using QVCache::Utils;

class CachePiecesTest : public CacheTest {};

TEST_F(CachePiecesTest, TheDigestIsThirtyTwoLowerCaseHexadecimalDigits) {
    EXPECT_EQ(Utils::MD5(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(Utils::MD5("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(Utils::MD5("\xC3\xA9"), "66ddcd97cfdeabb2f6fb8a999b4bc76f");
}

TEST_F(CachePiecesTest, ThePathExtensionIsWhatStandsBehindTheLastDotOfTheLastComponent) {
    EXPECT_EQ(Utils::pathExtension("photo.jpg"), "jpg");
    EXPECT_EQ(Utils::pathExtension("archive.tar.gz"), "gz");
    EXPECT_EQ(Utils::pathExtension("a/b.c/photo.JPG/"), "JPG");
    EXPECT_EQ(Utils::pathExtension("p1"), "");
    EXPECT_EQ(Utils::pathExtension("a.b/c"), "");
    EXPECT_EQ(Utils::pathExtension("ends."), "");
    EXPECT_EQ(Utils::pathExtension(".hidden"), "");
    EXPECT_EQ(Utils::pathExtension(".hidden.txt"), "txt");
    EXPECT_EQ(Utils::pathExtension(".."), "");
    EXPECT_EQ(Utils::pathExtension("///"), "");
    EXPECT_EQ(Utils::pathExtension(""), "");
}

TEST_F(CachePiecesTest, AFileIsNamedByTheDigestOfTheWholeKeyAndTheKeysExtension) {
    EXPECT_EQ(Disk::makeFileName("p1"), "ec6ef230f1828039ee794566b9c58adc");
    EXPECT_EQ(Disk::makeFileName("photo.jpg"), Utils::MD5("photo.jpg") + ".jpg");
    EXPECT_NE(Disk::makeFileName("photo.jpg").substr(0, 32), Disk::makeFileName("photo.png").substr(0, 32));
    EXPECT_EQ(Disk::makeFileName("../../etc/passwd"), Utils::MD5("../../etc/passwd"));
}

TEST_F(CachePiecesTest, AValueIsWrappedIntoAnObject) {
    EXPECT_EQ(transformer()->to("a \"text\""), R"({"object":"a \"text\""})");
    EXPECT_EQ(transformer()->from(R"( {"other":1,"object":"a \"text\""} )"), "a \"text\"");
    const auto numbers = QVCache::TransformerFactory::forCodable<std::int64_t>();
    EXPECT_EQ(numbers->to(-7), R"({"object":-7})");
    EXPECT_EQ(numbers->from(R"({"object":-7})"), -7);
}

TEST_F(CachePiecesTest, ErrorsOfTheEncoderAndTheDecoderPassThrough) {
    EXPECT_THROW(QVCache::TransformerFactory::forCodable<double>()->to(std::numeric_limits<double>::quiet_NaN()),
                 json::EncodingError);
    for (const char* bytes : {"", "{", "[]", "7", "null", R"({"object":7})", R"({"object":null})", R"({"Object":""})",
                              "{\"object\":\"\xFF\"}", R"({"object":"a"}x)"}) {
        EXPECT_THROW(static_cast<void>(transformer()->from(bytes)), json::DecodingError) << bytes;
    }
    EXPECT_EQ(failureOf([] { static_cast<void>(transformer()->from("{}")); }), "object: expected a value, found none");
}

TEST_F(CachePiecesTest, AnEntryIsCodedWithItsFilePathWhenThereIsOne) {
    using Entry = QVCache::Entry<std::string, std::string>;
    const platform::Date expiry(std::chrono::seconds(978'307'200 + 60));

    EXPECT_EQ(json::encode(Entry("k", "v", expiry, "/a")), R"({"key":"k","value":"v","expiry":60.0,"filePath":"/a"})");
    EXPECT_EQ(json::encode(Entry("k", "v", expiry, std::nullopt)), R"({"key":"k","value":"v","expiry":60.0})");

    const auto entry = json::decode<Entry>(R"({"key":"k","value":"v","expiry":60,"filePath":null})");
    EXPECT_EQ(entry.key, "k");
    EXPECT_EQ(entry.value, "v");
    EXPECT_EQ(entry.expiry, expiry);
    EXPECT_EQ(entry.filePath, std::nullopt);
    EXPECT_EQ(json::decode<Entry>(R"({"key":"k","value":"v","expiry":60,"filePath":"/a"})").filePath, "/a");
}

TEST_F(CachePiecesTest, ConfigurationsBeginWithTwelveHoursAHundredAndTheSystemsClock) {
    const QVCache::MemoryConfig memory;
    const QVCache::DiskConfig disk;

    EXPECT_EQ(memory.countLimit, 100U);
    EXPECT_EQ(memory.totalCostLimit, 100U);
    EXPECT_EQ(memory.entryLifetime, 43'200.0);
    EXPECT_EQ(memory.dateProvider(), time());
    EXPECT_EQ(disk.entryLifetime, 43'200.0);
    EXPECT_EQ(disk.dateProvider(), time());
    EXPECT_EQ(disk.directory, std::nullopt);
    EXPECT_EQ(disk.maxSize, 0U);
    EXPECT_EQ(disk.protectionType, std::nullopt);
}

TEST_F(CachePiecesTest, EachStorageErrorHasItsName) {
    std::set<std::string> names;
    for (int i = 0; i < 7; ++i) {
        names.emplace(QVStorageException(static_cast<QVStorageError>(i)).what());
    }

    EXPECT_EQ(names,
              (std::set<std::string>{"DEALLOCATED", "DECODING_FAILED", "ENCODING_FAILED", "MALFORMED_FILE_ATTRIBUTES",
                                     "NOT_FOUND", "TRANSFORMER_FAIL", "TYPE_NOT_MATCH"}));
    EXPECT_EQ(nameOf(QVStorageError::MALFORMED_FILE_ATTRIBUTES), "MALFORMED_FILE_ATTRIBUTES");
}

TEST_F(CachePiecesTest, TwoEditsAreEqualWhenBothTheirValuesAre) {
    EXPECT_EQ(KeyChange::EDIT("a", "b"), KeyChange::EDIT("a", "b"));
    EXPECT_EQ(KeyChange::EDIT(std::nullopt, "b"), KeyChange::EDIT(std::nullopt, "b"));
    EXPECT_FALSE(KeyChange::EDIT("a", "b") == KeyChange::EDIT("x", "b"));
    EXPECT_FALSE(KeyChange::EDIT("a", "b") == KeyChange::EDIT("a", "x"));
    EXPECT_FALSE(KeyChange::EDIT("a", "b") == KeyChange::EDIT(std::nullopt, "b"));
    EXPECT_EQ(KeyChange::REMOVE(), KeyChange::REMOVE());
    EXPECT_FALSE(KeyChange::REMOVE() == KeyChange::EDIT(std::nullopt, ""));
}

TEST_F(CachePiecesTest, EditsOfPointersAreComparedByTheirObjects) {
    using PointerChange = QVCache::KeyChange<std::shared_ptr<int>>;
    const auto pointer = [](int value) { return std::make_shared<int>(value); };

    EXPECT_EQ(PointerChange::EDIT(pointer(1), pointer(2)), PointerChange::EDIT(pointer(1), pointer(2)));
    EXPECT_FALSE(PointerChange::EDIT(pointer(1), pointer(2)) == PointerChange::EDIT(pointer(1), pointer(3)));
    struct Incomparable {};
    EXPECT_TRUE(std::equality_comparable<PointerChange>);
    EXPECT_FALSE(std::equality_comparable<QVCache::KeyChange<Incomparable>>);
    EXPECT_FALSE(std::equality_comparable<QVCache::KeyChange<std::shared_ptr<Incomparable>>>);
}

TEST_F(CachePiecesTest, TwoChangesOfACacheAreEqualWhenTheirCaseAndKeyAre) {
    const std::vector<Change> changes{Change::ADD("a"),    Change::ADD("b"), Change::REMOVE("a"),
                                      Change::REMOVE("b"), Change::CLEAR(),  Change::CLEAR_EXPIRED()};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        for (std::size_t j = 0; j < changes.size(); ++j) {
            EXPECT_EQ(changes[i] == changes[j], i == j) << i << " " << j;
        }
    }
    EXPECT_EQ(Cache::CacheChange<std::string>::ADD("a"), Change::ADD("a"));
}

} // namespace
} // namespace quorvane
