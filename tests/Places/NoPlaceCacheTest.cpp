#include "Facade/Quorvane.h"
#include "Places/QVPlaceService.h"
#include "Search/QVSearchService.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

/// The directory of the place store cannot be made.
class NoPlaceCacheTest : public APITest {
protected:
    using Found = Calls<QVStatus, std::optional<platform::Location>, std::optional<QVPlaceList>>;

    NoPlaceCacheTest() {
        storeTokens(3600);
        phone->files().setDiskFull(true);
    }

    void answer(const Answer& answer) { transport().answer("GET", "/locations/find", answer); }

    [[nodiscard]] Found search() {
        Found found;
        QVSearchService::shared().places(here, 1000, std::nullopt, std::nullopt, std::nullopt, 10, found.record());
        phone->runUntilIdle();
        return found;
    }

    const platform::Location here{{46.0, 14.5}, 5, 3, quorvane::testing::SimulatedClock::start};
    static constexpr const char* lastWords = "the directory of the place store must be creatable";
};

using NoPlaceCacheDeathTest = NoPlaceCacheTest;

TEST_F(NoPlaceCacheDeathTest, APlaceThatTheHostCreatesStopsTheProcess) {
    const Calls<QVStatus, std::optional<QVPlaceService::PlaceList>> created;

    EXPECT_DEATH(Quorvane::Places::create(std::make_shared<QVPlace>(), QVStorageType::LOCAL, created.record()),
                 lastWords);
}

TEST_F(NoPlaceCacheDeathTest, ASuccessfulSearchOfPlacesStopsTheProcess) {
    for (const char* const body : {R"({"count":0,"data":[]})", R"({"count":1,"data":[{"id":"one"}]})"}) {
        answer(Answer::json(body));

        EXPECT_DEATH(static_cast<void>(search()), lastWords);
    }
}

TEST_F(NoPlaceCacheTest, ASearchOfPlacesThatFailsIsAnswered) {
    answer(Answer::with(500));

    const Found found = search();

    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.first<0>(), QVStatus::ERROR_SERVER);
    EXPECT_EQ(found.first<1>(), here);
    EXPECT_EQ(found.first<2>(), std::nullopt);
}

} // namespace
} // namespace quorvane
