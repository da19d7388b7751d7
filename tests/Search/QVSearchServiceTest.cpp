#include "Search/QVSearchService.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

class QVSearchServiceTest : public APITest {
protected:
    using NearTasks = Calls<QVStatus, std::optional<platform::Location>, std::optional<QVTaskList>>;
    using Tasks = Calls<QVStatus, std::optional<QVTaskList>>;
    using Places = Calls<QVStatus, std::optional<platform::Location>, std::optional<QVPlaceList>>;

    QVSearchServiceTest() { storeTokens(3600); }

    [[nodiscard]] static QVSearchService& service() { return QVSearchService::shared(); }

    [[nodiscard]] Places placesFound() {
        Places calls;
        service().places(here, 1000, std::nullopt, std::nullopt, std::nullopt, 10, calls.record());
        phone->runUntilIdle();
        EXPECT_EQ(calls.count(), 1U);
        return calls;
    }

    [[nodiscard]] std::string onlyURL() {
        EXPECT_EQ(transport().requests().size(), 1U);
        return transport().requests().at(0).request.url;
    }

    const platform::Location here{{46.0, 14.5}, 5, 3, quorvane::testing::SimulatedClock::start};
};

TEST_F(QVSearchServiceTest, TasksNearALocationKeepTheServicesOrder) {
    transport().answer("GET", "/generate/tasks",
                       Answer::json(R"({"count":2,"data":[{"key":"b","distance":9.5},{"key":"a","distance":1.5}]})"));
    const NearTasks calls;

    service().tasks(here, 1000, 50, calls.record());
    phone->runUntilIdle();

    EXPECT_EQ(onlyURL(), "http://localhost:3000/generate/tasks?lat=46.0&lng=14.5&min=50&rad=1000");
    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<1>(), here);
    ASSERT_EQ(calls.first<2>()->size(), 2U);
    EXPECT_EQ(calls.first<2>()->at(0)->key, "b");
    EXPECT_EQ(calls.first<2>()->at(1)->key, "a");
}

TEST_F(QVSearchServiceTest, TasksOfACampaignAreAskedForByItsIdentifierAlone) {
    transport().answer("GET", "/generate/tasks", Answer::json(R"({"count":0,"data":[]})"));
    const Tasks calls;

    service().tasks(CampaignId{"c 1"}, calls.record());
    phone->runUntilIdle();

    EXPECT_EQ(onlyURL(), "http://localhost:3000/generate/tasks?cid=c%201");
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    ASSERT_TRUE(calls.first<1>());
    EXPECT_TRUE(calls.first<1>()->empty());
}

TEST_F(QVSearchServiceTest, TasksOfAPlaceAreAskedForByItsIdentifierAlone) {
    transport().answer("GET", "/generate/tasks", Answer::json(R"({"count":1,"data":[{"key":"t"}]})"));
    const Tasks calls;

    service().tasks(PlaceId{"p&1"}, calls.record());
    phone->runUntilIdle();

    EXPECT_EQ(onlyURL(), "http://localhost:3000/generate/tasks?lid=p%261");
    EXPECT_EQ(calls.first<1>()->at(0)->key, "t");
}

TEST_F(QVSearchServiceTest, PlacesNearALocationComeNearestFirst) {
    transport().answer("GET", "/locations/find", Answer::json(R"({"count":4,"data":[
        {"id":"300m","latitude":46.0027,"longitude":14.5},
        {"id":"100m","latitude":46.0009,"longitude":14.5},
        {"id":"also 100m","latitude":46.0009,"longitude":14.5},
        {"id":"origin of the map"}]})"));

    const Places calls = placesFound();

    EXPECT_EQ(onlyURL(), "http://localhost:3000/locations/find?lat=46.0&lng=14.5&rad=1000");
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<1>(), here);
    std::vector<std::string> ids;
    for (const auto& place : *calls.first<2>()) {
        ids.push_back(place->_id);
    }
    EXPECT_EQ(ids, (std::vector<std::string>{"100m", "also 100m", "300m", "origin of the map"}));
}

TEST_F(QVSearchServiceTest, TheFiltersOfPlacesDoNotChangeTheRequest) {
    transport().answer("GET", "/locations/find", Answer::json(R"({"count":0,"data":[]})"));

    service().places(here, 1000, StringList{"a"}, StringList{"b"}, StringList{"c"}, 1, [](const auto&...) {});

    EXPECT_EQ(onlyURL(), "http://localhost:3000/locations/find?lat=46.0&lng=14.5&rad=1000");
}

TEST_F(QVSearchServiceTest, AFailureIsItsStatusWithTheLocationAndWithoutAList) {
    const std::vector<std::pair<Answer, QVStatus>> cases{
        {Answer::with(400), QVStatus::ERROR_BAD_REQUEST},
        {Answer::with(500, R"({"count":0,"data":[]})"), QVStatus::ERROR_SERVER},
        {Answer::failure(Transport::connection), QVStatus::ERROR_NETWORK},
        {Answer::json("{"), QVStatus::ERROR_SERIALIZATION},
        {Answer::json("[]"), QVStatus::ERROR_SERIALIZATION},
    };
    for (const auto& [answer, status] : cases) {
        transport().answer("GET", "/locations/find", answer);

        const Places calls = placesFound();

        EXPECT_EQ(calls.first<0>(), status);
        EXPECT_EQ(calls.first<1>(), here);
        EXPECT_EQ(calls.first<2>(), std::nullopt);
    }
}

TEST_F(QVSearchServiceTest, AnEnvelopeThatCannotBeDecodedStaysASerializationError) {
    transport().answerOtherwise(Answer::json(R"({"count":1,"data":[{"questions":"none"}]})"));
    const NearTasks near;
    const Tasks campaign;

    service().tasks(here, 1000, std::nullopt, near.record());
    service().tasks(CampaignId{"c"}, campaign.record());
    phone->runUntilIdle();

    EXPECT_EQ(near.first<0>(), QVStatus::ERROR_SERIALIZATION);
    EXPECT_EQ(near.first<1>(), here);
    EXPECT_EQ(near.first<2>(), std::nullopt);
    EXPECT_EQ(campaign.first<0>(), QVStatus::ERROR_SERIALIZATION);
    EXPECT_EQ(campaign.first<1>(), std::nullopt);
}

TEST_F(QVSearchServiceTest, AnAnswerWithoutABodyIsASuccessWithoutAList) {
    transport().answer("GET", "/locations/find", Answer::with(204));

    const Places calls = placesFound();

    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<2>(), std::nullopt);
}

TEST_F(QVSearchServiceTest, WithoutAKeyASearchFailsBeforeItReturns) {
    preferences().remove("quorvane_access_key");
    const Tasks calls;

    service().tasks(CampaignId{"c"}, calls.record());

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_TRUE(transport().requests().empty());
}

} // namespace
} // namespace quorvane
