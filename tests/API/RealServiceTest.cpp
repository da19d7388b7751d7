#include "API/RealServiceFixture.h"
#include "Core/QVSettings.h"
#include "Facade/Quorvane.h"

namespace quorvane {
namespace {

class RealServiceTest : public RealServiceFixture {
protected:
    static constexpr std::pair<QVStatus, bool> signedIn{QVStatus::SUCCESS, true};

    [[nodiscard]] std::optional<std::string> token() { return preferences().string("quorvane_access_token"); }
};

TEST_F(RealServiceTest, ASignInGivesTokensThatTheDataServiceAccepts) {
    EXPECT_EQ(signIn(), Outcome::Call(signedIn));
    EXPECT_TRUE(token().value_or("").starts_with("Bearer "));

    const Calls<QVStatus, std::optional<platform::Location>, std::optional<QVPlaceList>> places;
    QVSearchService::shared().places(here, 5000, std::nullopt, std::nullopt, std::nullopt, 10, places.record());
    ASSERT_TRUE(runUntil([&] { return places.count() > 0; }));

    EXPECT_EQ(places.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(places.first<1>(), here);
    ASSERT_TRUE(places.first<2>());
    ASSERT_GT(places.first<2>()->size(), 1U);
    double former = 0;
    for (const auto& place : *places.first<2>()) {
        const double distance = platform::distance(here.coordinate, *place->location->coordinate);
        EXPECT_GE(distance, former);
        EXPECT_LE(distance, 5000);
        former = distance;
    }
}

TEST_F(RealServiceTest, TasksAreFoundNearALocationAndThenOfTheirPlaceAndCampaign) {
    const Calls<QVStatus, std::optional<platform::Location>, std::optional<QVTaskList>> near;
    QVSearchService::shared().tasks(here, 20'000, std::nullopt, near.record());
    ASSERT_TRUE(runUntil([&] { return near.count() > 0; }));
    EXPECT_EQ(near.first<0>(), QVStatus::SUCCESS);
    ASSERT_TRUE(near.first<2>());
    ASSERT_FALSE(near.first<2>()->empty());
    const QVTask& task = *near.first<2>()->at(0);
    EXPECT_FALSE(task.questions.empty());
    ASSERT_NE(task.owners, nullptr);

    const Calls<QVStatus, std::optional<QVTaskList>> found;
    QVSearchService::shared().tasks(PlaceId{task.locationKey}, found.record());
    ASSERT_TRUE(runUntil([&] { return found.count() == 1; }));
    QVSearchService::shared().tasks(CampaignId{task.owners->campaign.value_or("")}, found.record());
    ASSERT_TRUE(runUntil([&] { return found.count() == 2; }));

    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(std::get<0>(found[i]), QVStatus::SUCCESS);
        const auto tasks = std::get<1>(found[i]).value_or(QVTaskList());
        EXPECT_TRUE(std::any_of(tasks.begin(), tasks.end(), [&](const auto& one) { return one->key == task.key; }));
    }
}

TEST_F(RealServiceTest, AnExpiredTokenIsRefreshedBeforeTheRequest) {
    ASSERT_EQ(signIn(), Outcome::Call(signedIn));
    const auto before = token();
    expireTokens();

    QVStatus status = QVStatus::ERROR_UNKNOWN;
    bool answered = false;
    dataOperations(here)[4].start([&](QVStatus reported) {
        status = reported;
        answered = true;
    });
    ASSERT_TRUE(runUntil([&] { return answered; }));

    EXPECT_EQ(status, QVStatus::SUCCESS);
    EXPECT_NE(token(), before);
    EXPECT_EQ(requestCount("/authorize"), 1U);
    EXPECT_EQ(requestCount("/token"), 2U);
}

TEST_F(RealServiceTest, TwoRequestsAtOnceRefreshEachForItselfAndBothSucceed) {
    ASSERT_EQ(signIn(), Outcome::Call(signedIn));
    expireTokens();

    std::vector<QVStatus> statuses;
    for (int i = 0; i < 2; ++i) {
        dataOperations(here)[4].start([&](QVStatus status) { statuses.push_back(status); });
    }
    ASSERT_TRUE(runUntil([&] { return statuses.size() == 2; }));

    EXPECT_EQ(statuses, (std::vector{QVStatus::SUCCESS, QVStatus::SUCCESS}));
    EXPECT_EQ(requestCount("/token"), 3U);
    EXPECT_EQ(preferences().boolean("quorvane_background_tracking"), true);
}

TEST_F(RealServiceTest, TokensAndTheFlagOutlastALaunch) {
    ASSERT_EQ(signIn(), Outcome::Call(signedIn));

    startPlatform();
    bool answered = false;
    dataOperations(here)[1].start([&](QVStatus status) { answered = status == QVStatus::SUCCESS; });

    ASSERT_TRUE(runUntil([&] { return answered; }));
    EXPECT_EQ(requestCount("/token"), 1U);
    EXPECT_TRUE(Quorvane::isAuthenticated());
}

TEST_F(RealServiceTest, TheConfigurationOfTheServiceIsStored) {
    preferences().setString("quorvane_device_id", "device");

    QVConfigService::shared().retrieve();

    ASSERT_TRUE(runUntil([&] { return QVSettings::getConfig().has_value(); }));
    EXPECT_TRUE(QVSettings::getConfig()->apiVersion);
}

TEST_F(RealServiceTest, AHostInitializesAndIsSignedIn) {
    preferences().remove("quorvane_user_id");

    Quorvane::initialize("UVZMT0NM-access-key");

    ASSERT_TRUE(runUntil([&] { return Quorvane::isAuthenticated(); }));
    EXPECT_EQ(requestCount("/authorize"), 1U);
    EXPECT_EQ(requestCount("/config"), 0U);
}

TEST_F(RealServiceTest, TheRetryOfASignInEndsWithThePlatform) {
    addFault("/authorize:status=503");
    Quorvane::setUserId("rider");
    ASSERT_TRUE(runUntil([&] { return requestCount("/authorize") >= 20; }));

    startPlatform();
    settle();
    const std::size_t count = requestCount("/authorize");
    settle();

    EXPECT_EQ(requestCount("/authorize"), count);
}

} // namespace
} // namespace quorvane
