#include <cmath>
#include <set>
#include <thread>

#include "Facade/Quorvane.h"
#include "Places/QVPlaceService.h"
#include "support/Calls.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using PlaceList = QVPlaceService::PlaceList;

class QVPlaceServiceTest : public SimulatedTest {
protected:
    using Answers = Calls<QVStatus, std::optional<json::Dictionary>, std::optional<PlaceList>>;

    [[nodiscard]] static QVPlaceService& service() { return QVPlaceService::shared(); }
    [[nodiscard]] quorvane::testing::MemoryFileManager& files() { return phone->files(); }

    [[nodiscard]] static std::shared_ptr<QVPlace> placeAt(const std::string& identifier, double latitude) {
        auto place = std::make_shared<QVPlace>();
        place->_id = identifier;
        place->location = std::make_shared<QVAddress>();
        place->location->coordinate = platform::Coordinate{latitude, 0};
        return place;
    }

    /// Status of storing @p places, and the list that was answered.
    [[nodiscard]] static Answers create(const PlaceList& places, QVStorageType storage = QVStorageType::LOCAL) {
        Answers answers;
        service().create(places, storage, answers.record());
        EXPECT_EQ(answers.count(), 1U);
        EXPECT_FALSE(answers.first<1>().has_value());
        return answers;
    }

    [[nodiscard]] static Answers near(int radius) {
        Answers answers;
        service().all(here, radius, answers.record());
        return answers;
    }

    /// Identifiers of the stored places within @p radius metres.
    [[nodiscard]] static std::vector<std::string> identifiersNear(int radius) {
        const Answers answers = near(radius);
        std::vector<std::string> identifiers;
        for (const auto& place : answers.first<2>().value()) {
            identifiers.push_back(place->_id);
        }
        return identifiers;
    }

    [[nodiscard]] std::vector<std::string> fileNames() {
        std::error_code error;
        return files().list(directory, error).value_or(std::vector<std::string>());
    }

    static inline const platform::Location here{{0, 0}, 5, 3, quorvane::testing::SimulatedClock::start};
    const std::string directory = "/simulated/caches/qvplaces.cache";
    using Identifiers = std::vector<std::string>;
};

TEST_F(QVPlaceServiceTest, StoredPlacesAreAnsweredAsTheListThatWasGiven) {
    const PlaceList places{placeAt("b", 0), placeAt("a", 0)};

    const Answers answers = create(places);

    EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(answers.first<2>(), places);
    EXPECT_EQ(identifiersNear(0).size(), 2U);
}

TEST_F(QVPlaceServiceTest, APlaceIsOneFileUnderTheDigestOfItsIdentifier) {
    const auto place = placeAt("p1", 0.5);
    place->name = "Kiosk";
    EXPECT_EQ(create({place}).first<0>(), QVStatus::SUCCESS);

    EXPECT_EQ(fileNames(), Identifiers{"ec6ef230f1828039ee794566b9c58adc"});
    std::error_code error;
    EXPECT_EQ(files().read(directory + "/ec6ef230f1828039ee794566b9c58adc", error),
              R"({"object":{"id":"p1","categories":[],"latitude":0.5,"longitude":0.0,"name":"Kiosk"}})");
    EXPECT_EQ(files().modificationDate(directory + "/ec6ef230f1828039ee794566b9c58adc", error),
              phone->clock().now() + 12h);
}

TEST_F(QVPlaceServiceTest, AnEmptyListIsASuccessWithAnEmptyListAndNeedsNoCache) {
    files().setDiskFull(true);

    const Answers answers = create({});

    EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(answers.first<2>(), PlaceList());
}

TEST_F(QVPlaceServiceTest, PlacesAtTheServiceAreNotProvidedAndNeedNoCache) {
    files().setDiskFull(true);
    for (const PlaceList& places : {PlaceList(), PlaceList{placeAt("a", 0)}, PlaceList{nullptr}}) {
        const Answers answers = create(places, QVStorageType::REMOTE);

        EXPECT_EQ(answers.first<0>(), QVStatus::ERROR_UNIMPLEMENTED);
        EXPECT_EQ(answers.first<2>(), std::nullopt);
    }
}

TEST_F(QVPlaceServiceTest, CreatingAPlaceTwiceUnderOneIdentifierReplacesTheFirst) {
    EXPECT_EQ(create({placeAt("a", 0)}).first<0>(), QVStatus::SUCCESS);
    const auto second = placeAt("a", 0.001);

    EXPECT_EQ(create({second}).first<0>(), QVStatus::SUCCESS);

    EXPECT_EQ(near(1000).first<2>(), PlaceList{second});
    EXPECT_EQ(fileNames().size(), 1U);
    std::error_code error;
    EXPECT_NE(files().read(directory + "/" + fileNames()[0], error)->find("0.001"), std::string::npos);
}

TEST_F(QVPlaceServiceTest, TheFirstFailureEndsItAndWhatWasStoredBeforeStays) {
    const auto broken = placeAt("broken", std::nan(""));
    const Answers answers = create({placeAt("a", 0), broken, placeAt("c", 0)});

    EXPECT_EQ(answers.first<0>(), QVStatus::ERROR_UNKNOWN);
    EXPECT_EQ(answers.first<2>(), std::nullopt);
    EXPECT_EQ(fileNames().size(), 1U);
    EXPECT_EQ(identifiersNear(10), Identifiers{"a"}) << "the broken one stays in memory, and is near nothing";
}

TEST_F(QVPlaceServiceTest, AFullDiskIsAnUnknownErrorForANewPlaceAndKeepsTheFileOfAKnownOne) {
    EXPECT_EQ(create({placeAt("known", 0)}).first<0>(), QVStatus::SUCCESS);
    files().setDiskFull(true);

    EXPECT_EQ(create({placeAt("new", 0)}).first<0>(), QVStatus::ERROR_UNKNOWN);
    EXPECT_EQ(create({placeAt("known", 0.001)}).first<0>(), QVStatus::SUCCESS);

    EXPECT_EQ(fileNames().size(), 1U);
}

/// A latitude that is exactly @p metres from the equator, as far as a double can be; none for most distances.
std::optional<double> latitudeAt(double metres) {
    double low = 0;
    double high = 1;
    while (true) {
        const double middle = (low + high) / 2;
        const double distance = platform::distance({0, 0}, {middle, 0});
        if (distance == metres) {
            return middle;
        }
        if (middle <= low || middle >= high) {
            return std::nullopt;
        }
        (distance < metres ? low : high) = middle;
    }
}

TEST_F(QVPlaceServiceTest, APlaceExactlyTheRadiusAwayIsNear) {
    int radius = 1000;
    while (!latitudeAt(radius)) {
        ++radius;
        ASSERT_LT(radius, 2000) << "no point is exactly a whole number of metres away";
    }
    const double latitude = *latitudeAt(radius);
    EXPECT_EQ(create({placeAt("beyond", latitude * 1.000001), placeAt("edge", latitude)}).first<0>(),
              QVStatus::SUCCESS);

    EXPECT_EQ(identifiersNear(radius), Identifiers{"edge"});
    EXPECT_EQ(identifiersNear(radius - 1), Identifiers());
    EXPECT_EQ(identifiersNear(radius + 1), (Identifiers{"beyond", "edge"}));
}

TEST_F(QVPlaceServiceTest, PlacesWithoutALocationOrACoordinateAreNearNothing) {
    const auto nowhere = placeAt("nowhere", 0);
    nowhere->location = nullptr;
    const auto pointless = placeAt("pointless", 0);
    pointless->location->coordinate = std::nullopt;
    EXPECT_EQ(create({nowhere, pointless, placeAt("here", 0)}).first<0>(), QVStatus::SUCCESS);

    EXPECT_EQ(identifiersNear(50'000'000), Identifiers{"here"});
    EXPECT_EQ(identifiersNear(-1), Identifiers());
}

TEST_F(QVPlaceServiceTest, AllAnswersASuccessWithoutADictionaryBeforeItReturns) {
    const Answers answers = near(1000);

    ASSERT_EQ(answers.count(), 1U);
    EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
    EXPECT_FALSE(answers.first<1>().has_value());
    EXPECT_EQ(answers.first<2>(), PlaceList());
}

TEST_F(QVPlaceServiceTest, AllAfterARestartIsAnEmptyListAlthoughTheFilesAreThere) {
    EXPECT_EQ(create({placeAt("a", 0)}).first<0>(), QVStatus::SUCCESS);

    phone.relaunch();

    EXPECT_EQ(near(1000).first<2>(), PlaceList());
    EXPECT_EQ(fileNames().size(), 1U);
}

TEST_F(QVPlaceServiceTest, AllAfterAnEntryExpiredIsLoggedAndNeverAnswered) {
    setLogLevel(QVLogLevel::ERROR);
    EXPECT_EQ(create({placeAt("a", 0)}).first<0>(), QVStatus::SUCCESS);
    phone->advance(12h);

    EXPECT_EQ(near(1000).count(), 0U);

    EXPECT_EQ(messages(), std::vector<std::string>{"error: No such file or directory"});
}

TEST_F(QVPlaceServiceTest, AllAfterTheHundredAndFirstPlaceFailsOnceAndThenListsWhatIsLeft) {
    setLogLevel(QVLogLevel::ERROR);
    for (int i = 0; i < 101; ++i) {
        EXPECT_EQ(create({placeAt(std::to_string(i), 0)}).first<0>(), QVStatus::SUCCESS);
    }

    EXPECT_EQ(near(1000).count(), 0U);

    EXPECT_EQ(messages().size(), 1U);
    EXPECT_EQ(identifiersNear(1000).size(), 100U);
}

TEST_F(QVPlaceServiceTest, EachPlaceThatHasGoneFromMemoryLeavesOneListingUnanswered) {
    for (int i = 0; i < 103; ++i) {
        EXPECT_EQ(create({placeAt(std::to_string(i), 0)}).first<0>(), QVStatus::SUCCESS);
    }

    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(near(1000).count(), 0U) << i;
    }

    EXPECT_EQ(identifiersNear(1000).size(), 100U);
}

TEST_F(QVPlaceServiceTest, APlaceWithAnEmptyIdentifierIsStoredUnderIt) {
    EXPECT_EQ(create({placeAt("", 0)}).first<0>(), QVStatus::SUCCESS);

    EXPECT_EQ(fileNames(), Identifiers{"d41d8cd98f00b204e9800998ecf8427e"});
}

TEST_F(QVPlaceServiceTest, WhatSeveralThreadsStoreWhileOthersSearchIsFoundAfterwards) {
    constexpr int storing = 4;
    constexpr int placesOfEach = 20;
    std::vector<std::thread> threads;
    for (int t = 0; t < storing; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < placesOfEach; ++i) {
                const PlaceList places{placeAt(std::to_string(t) + "-" + std::to_string(i), 0)};
                const Answers answers = create(places);
                EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
                EXPECT_EQ(answers.first<2>(), places);
            }
        });
    }
    for (int t = 0; t < 2; ++t) {
        threads.emplace_back([] {
            std::size_t before = 0;
            for (int i = 0; i < 50; ++i) {
                const std::size_t found = identifiersNear(10).size();
                EXPECT_GE(found, before) << "a place that was found is gone";
                before = found;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    const Identifiers found = identifiersNear(10);
    std::set<std::string> expected;
    for (int t = 0; t < storing; ++t) {
        for (int i = 0; i < placesOfEach; ++i) {
            expected.insert(std::to_string(t) + "-" + std::to_string(i));
        }
    }
    EXPECT_EQ(found.size(), expected.size());
    EXPECT_EQ(std::set<std::string>(found.begin(), found.end()), expected);
    EXPECT_EQ(fileNames().size(), expected.size());
}

TEST_F(QVPlaceServiceTest, ACompletionMayUseTheService) {
    std::size_t seen = 0;
    service().create({placeAt("a", 0)}, QVStorageType::LOCAL,
                     [&](QVStatus, const std::optional<json::Dictionary>&, const std::optional<PlaceList>&) {
                         seen = identifiersNear(10).size();
                     });

    EXPECT_EQ(seen, 1U);
}

TEST_F(QVPlaceServiceTest, ThereIsOneServiceAndItsStoreIsGoneWithThePlatform) {
    EXPECT_FALSE(files().exists(directory)) << "it is made on first use";
    EXPECT_EQ(&service(), &service());
    EXPECT_EQ(create({placeAt("a", 0)}).first<0>(), QVStatus::SUCCESS);

    phone.relaunch();

    EXPECT_EQ(identifiersNear(1000), Identifiers());
}

using QVPlaceServiceDeathTest = QVPlaceServiceTest;

TEST_F(QVPlaceServiceDeathTest, WithoutACacheTheFirstOperationThatNeedsItStopsTheProcess) {
    files().setDiskFull(true);
    EXPECT_EQ(create({}).first<0>(), QVStatus::SUCCESS);

    EXPECT_DEATH(static_cast<void>(create({placeAt("a", 0)})), "the directory of the place store must be creatable");
    EXPECT_DEATH(static_cast<void>(near(10)), "the directory of the place store must be creatable");
}

TEST_F(QVPlaceServiceDeathTest, ANullPlaceStopsTheProcess) {
    EXPECT_DEATH(static_cast<void>(create({placeAt("a", 0), nullptr})), "a place to store must be there");
}

/// `Quorvane::Places`.
class PlacesNamespaceTest : public QVPlaceServiceTest {
protected:
    using Created = Calls<QVStatus, std::optional<PlaceList>>;
};

TEST_F(PlacesNamespaceTest, WithoutAKeyNothingIsStored) {
    const Created created;
    Quorvane::Places::create(placeAt("a", 0), QVStorageType::LOCAL, created.record());
    Quorvane::Places::create(PlaceList(), QVStorageType::LOCAL, created.record());

    ASSERT_EQ(created.count(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(std::get<0>(created[i]), QVStatus::ERROR_PUBLISHABLE_KEY);
        EXPECT_EQ(std::get<1>(created[i]), std::nullopt);
    }
    EXPECT_FALSE(files().exists(directory));
}

TEST_F(PlacesNamespaceTest, OnePlaceIsAnsweredAsAListOfIt) {
    store("quorvane_access_key", "");
    const Created created;
    const auto place = placeAt("a", 0);

    Quorvane::Places::create(place, QVStorageType::LOCAL, created.record());

    ASSERT_EQ(created.count(), 1U);
    EXPECT_EQ(created.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(created.first<1>(), PlaceList{place});
    EXPECT_EQ(identifiersNear(10), Identifiers{"a"});
}

TEST_F(PlacesNamespaceTest, PlacesAreStoredForSearchesOrRefusedWithTheServicesStatus) {
    store("quorvane_access_key", "");
    const Created created;

    Quorvane::Places::create(PlaceList{placeAt("a", 0), placeAt("b", 0)}, QVStorageType::LOCAL, created.record());
    Quorvane::Places::create(PlaceList(), QVStorageType::LOCAL, created.record());
    files().setDiskFull(true);
    Quorvane::Places::create(placeAt("c", 0), QVStorageType::LOCAL, created.record());
    Quorvane::Places::create(placeAt("d", 0), QVStorageType::REMOTE, created.record());

    ASSERT_EQ(created.count(), 4U);
    EXPECT_EQ(std::get<0>(created[0]), QVStatus::SUCCESS);
    EXPECT_EQ(std::get<1>(created[0])->size(), 2U);
    EXPECT_EQ(std::get<0>(created[1]), QVStatus::SUCCESS);
    EXPECT_EQ(std::get<1>(created[1]), PlaceList());
    EXPECT_EQ(std::get<0>(created[2]), QVStatus::ERROR_UNKNOWN);
    EXPECT_EQ(std::get<1>(created[2]), std::nullopt);
    EXPECT_EQ(std::get<0>(created[3]), QVStatus::ERROR_UNIMPLEMENTED);
    EXPECT_EQ(std::get<1>(created[3]), std::nullopt);
}

TEST_F(PlacesNamespaceTest, AStoredPlaceReadsBackFromItsFileInFull) {
    const auto place = json::decode<QVPlace>(
        R"({"id":"p1","active":true,"categories":["a","b"],"chain":{"name":"Chain","slug":"chain"},"clientKey":"k",
            "emails":["rider@example.com"],"address1":"Main St 1","city":"Town","latitude":46.05,"longitude":14.5,
            "zipCode":"1000","metadata":{"n":[1,2.5,null]},"name":"Kiosk","owners":{"client":"c"}})");
    EXPECT_EQ(create({std::make_shared<QVPlace>(place)}).first<0>(), QVStatus::SUCCESS);

    QVPlaceService::PlaceCache other(
        [] {
            QVCache::DiskConfig config;
            config.name = "qvplaces.cache";
            return config;
        }(),
        QVCache::MemoryConfig(), QVCache::TransformerFactory::forCodable<std::shared_ptr<QVPlace>>());

    const auto entry = other.entry("p1");
    EXPECT_EQ(json::encode(*entry->value), json::encode(place));
    EXPECT_EQ(json::encode(*entry).substr(0, 28), R"({"key":"p1","value":{"id":"p)");
}

} // namespace
} // namespace quorvane
