#include <gmock/gmock.h>

#include "Facade/Quorvane.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::IsEmpty;

template <class T>
using Found = Calls<QVStatus, std::optional<platform::Location>, std::optional<std::vector<std::shared_ptr<T>>>>;

class SearchNamespaceTest : public APITest {
protected:
    using Search = Quorvane::Search;

    SearchNamespaceTest() { storeTokens(3600); }

    void forgetKey() { preferences().remove("quorvane_access_key"); }

    template <class T>
    void expectAnswers(const Found<T>& found, std::size_t count, QVStatus status,
                       const std::optional<platform::Location>& location) {
        ASSERT_EQ(found.count(), count);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(std::get<0>(found[i]), status);
            EXPECT_EQ(std::get<1>(found[i]), location);
            EXPECT_EQ(std::get<2>(found[i]), std::nullopt);
        }
        EXPECT_THAT(requestLines(), IsEmpty());
    }

    const platform::Location here{{46.0, 14.5}, 5, 3, quorvane::testing::SimulatedClock::start};
};

TEST_F(SearchNamespaceTest, WithoutAKeyASearchNearALocationHandsTheLocationBackAtOnce) {
    forgetKey();
    const Found<QVTask> tasks;
    const Found<QVPlace> places;
    const Found<QVGeofence> geofences;

    Search::tasks(here, 1000, std::nullopt, tasks.record());
    Search::places(here, 1000, std::nullopt, std::nullopt, std::nullopt, 10, places.record());
    Search::geofences(here, 1000, std::nullopt, 10, geofences.record());

    expectAnswers(tasks, 1, QVStatus::ERROR_PUBLISHABLE_KEY, here);
    expectAnswers(places, 1, QVStatus::ERROR_PUBLISHABLE_KEY, here);
    expectAnswers(geofences, 1, QVStatus::ERROR_PUBLISHABLE_KEY, here);
}

TEST_F(SearchNamespaceTest, WithoutAKeyTheOtherSearchesHaveNoLocationToHandBack) {
    forgetKey();
    const Found<QVTask> tasks;
    const Found<QVPlace> places;
    const Found<QVGeofence> geofences;

    Search::tasks(1000, std::nullopt, tasks.record());
    Search::tasks(CampaignId{"c1"}, tasks.record());
    Search::tasks(PlaceId{"p1"}, tasks.record());
    Search::places(1000, std::nullopt, std::nullopt, std::nullopt, 10, places.record());
    Search::geofences(1000, std::nullopt, 10, geofences.record());

    expectAnswers(tasks, 3, QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt);
    expectAnswers(places, 1, QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt);
    expectAnswers(geofences, 1, QVStatus::ERROR_PUBLISHABLE_KEY, std::nullopt);
}

TEST_F(SearchNamespaceTest, WithoutALocationOfTheDeviceItsStatusIsHandedOn) {
    phone->locationManagers().setAuthorization(platform::LocationAuthorization::denied);
    const Found<QVTask> tasks;
    const Found<QVPlace> places;
    const Found<QVGeofence> geofences;

    Search::tasks(1000, 50, tasks.record());
    Search::places(1000, std::nullopt, std::nullopt, std::nullopt, 10, places.record());
    Search::geofences(1000, std::nullopt, 10, geofences.record());

    expectAnswers(tasks, 1, QVStatus::ERROR_PERMISSIONS, std::nullopt);
    expectAnswers(places, 1, QVStatus::ERROR_PERMISSIONS, std::nullopt);
    expectAnswers(geofences, 1, QVStatus::ERROR_PERMISSIONS, std::nullopt);
}

TEST_F(SearchNamespaceTest, ADeviceThatGivesNoLocationForTwentySecondsFailsTheSearch) {
    const Found<QVTask> tasks;

    Search::tasks(1000, 50, tasks.record());
    phone->advance(std::chrono::seconds(19));
    EXPECT_EQ(tasks.count(), 0U);
    phone->advance(std::chrono::seconds(1));

    expectAnswers(tasks, 1, QVStatus::ERROR_LOCATION, std::nullopt);
}

TEST_F(SearchNamespaceTest, TheVariantsWithoutALocationSearchAroundTheDevice) {
    transport().answer("GET", "/generate/tasks", Answer::json(R"({"count":1,"data":[{"key":"t1"}]})"));
    transport().answer("GET", "/locations/find", Answer::json(R"({"count":0,"data":[]})"));
    preferences().setDate("quorvane_last_sent_at", phone->clock().now());
    const Found<QVTask> tasks;
    const Found<QVPlace> places;
    const Found<QVGeofence> geofences;

    Search::tasks(1000, 50, tasks.record());
    Search::places(2000, std::nullopt, std::nullopt, std::nullopt, 10, places.record());
    Search::geofences(3000, std::nullopt, 10, geofences.record());
    phone->locationManagers().receive(here);
    phone->runUntilIdle();

    ASSERT_EQ(tasks.count(), 1U);
    EXPECT_EQ(tasks.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(tasks.first<1>(), here);
    EXPECT_EQ(tasks.first<2>()->size(), 1U);
    ASSERT_EQ(places.count(), 1U);
    EXPECT_EQ(places.first<0>(), QVStatus::SUCCESS);
    ASSERT_EQ(geofences.count(), 1U);
    EXPECT_EQ(geofences.first<0>(), QVStatus::ERROR_UNIMPLEMENTED);
    EXPECT_EQ(geofences.first<1>(), here);
    EXPECT_EQ(transport().requests().at(0).request.url,
              "http://localhost:3000/generate/tasks?lat=46.0&lng=14.5&min=50&rad=1000");
    EXPECT_EQ(transport().requests().at(1).request.url,
              "http://localhost:3000/locations/find?lat=46.0&lng=14.5&rad=2000");
    EXPECT_EQ(transport().requests().size(), 2U);
}

TEST_F(SearchNamespaceTest, GeofencesNearALocationAreNotProvided) {
    const Found<QVGeofence> geofences;

    Search::geofences(here, 1000, std::vector<std::string>{"tag"}, 10, geofences.record());

    expectAnswers(geofences, 1, QVStatus::ERROR_UNIMPLEMENTED, here);
}

TEST_F(SearchNamespaceTest, AutocompletionIsNotProvided) {
    const Calls<QVStatus, std::optional<std::vector<std::shared_ptr<QVAddress>>>> calls;

    Search::autocomplete("Main St", here, 5, calls.record());
    forgetKey();
    Search::autocomplete("Main St", here, 5, calls.record());

    ASSERT_EQ(calls.count(), 2U);
    EXPECT_EQ(std::get<0>(calls[0]), QVStatus::ERROR_UNIMPLEMENTED);
    EXPECT_EQ(std::get<0>(calls[1]), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_EQ(std::get<1>(calls[0]), std::nullopt);
    EXPECT_EQ(std::get<1>(calls[1]), std::nullopt);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(SearchNamespaceTest, TasksNearALocationComeFromTheService) {
    transport().answer("GET", "/generate/tasks", Answer::json(R"({"count":1,"data":[{"key":"t1"}]})"));
    const Found<QVTask> tasks;

    Search::tasks(here, 1000, 50, tasks.record());
    EXPECT_EQ(tasks.count(), 0U);
    phone->runUntilIdle();

    EXPECT_EQ(transport().requests().at(0).request.url,
              "http://localhost:3000/generate/tasks?lat=46.0&lng=14.5&min=50&rad=1000");
    ASSERT_EQ(tasks.count(), 1U);
    EXPECT_EQ(tasks.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(tasks.first<1>(), here);
    EXPECT_EQ(tasks.first<2>()->at(0)->key, "t1");
}

TEST_F(SearchNamespaceTest, TasksOfACampaignOrAPlaceComeWithoutALocation) {
    transport().answer("GET", "/generate/tasks", Answer::json(R"({"count":1,"data":[{"key":"t1"}]})"));
    const Found<QVTask> tasks;

    Search::tasks(CampaignId{"c1"}, tasks.record());
    Search::tasks(PlaceId{"p1"}, tasks.record());
    phone->runUntilIdle();

    EXPECT_EQ(transport().requests().at(0).request.url, "http://localhost:3000/generate/tasks?cid=c1");
    EXPECT_EQ(transport().requests().at(1).request.url, "http://localhost:3000/generate/tasks?lid=p1");
    ASSERT_EQ(tasks.count(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(std::get<0>(tasks[i]), QVStatus::SUCCESS);
        EXPECT_EQ(std::get<1>(tasks[i]), std::nullopt);
        EXPECT_EQ(std::get<2>(tasks[i])->size(), 1U);
    }
}

TEST_F(SearchNamespaceTest, PlacesNearALocationComeFromTheServiceNearestFirst) {
    transport().answer("GET", "/locations/find", Answer::json(R"({"count":2,"data":[
        {"id":"far","latitude":46.003,"longitude":14.5},{"id":"near","latitude":46.001,"longitude":14.5}]})"));
    const Found<QVPlace> places;

    Search::places(here, 1000, std::nullopt, std::nullopt, std::nullopt, 10, places.record());
    phone->runUntilIdle();

    ASSERT_EQ(places.count(), 1U);
    EXPECT_EQ(places.first<1>(), here);
    ASSERT_EQ(places.first<2>()->size(), 2U);
    EXPECT_EQ(places.first<2>()->at(0)->_id, "near");
    EXPECT_EQ(places.first<2>()->at(1)->_id, "far");
}

} // namespace
} // namespace quorvane
