#include <gmock/gmock.h>

#include "Core/QVSettings.h"
#include "Facade/Quorvane.h"
#include "Tracking/QVState.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Answers = Calls<QVStatus, std::optional<platform::Location>, std::optional<std::vector<std::shared_ptr<QVEvent>>>,
                      std::shared_ptr<QVUser>>;

class TrackingNamespaceTest : public APITest {
protected:
    using Tracking = Quorvane::Tracking;

    TrackingNamespaceTest() {
        storeTokens(3600);
        transport().answer("GET", "/locations/find", Answer::json(R"({"count":1,"data":[
            {"id":"p1","name":"Market","latitude":46.0,"longitude":14.5}]})"));
        Quorvane::setDelegate(delegate);
    }

    void forgetKey() { preferences().remove("quorvane_access_key"); }
    [[nodiscard]] bool isStopped() { return preferences().boolean("quorvane_stopped").value_or(false); }

    void receiveFix() {
        phone->locationManagers().receive(here);
        phone->runUntilIdle();
    }

    const std::shared_ptr<quorvane::testing::RecordingDelegate> delegate =
        std::make_shared<quorvane::testing::RecordingDelegate>();
    const platform::Location here{{46.0, 14.5}, 5, 3, quorvane::testing::SimulatedClock::start};
    const Answers answers{};
};

TEST_F(TrackingNamespaceTest, WithoutAKeyOnceAnswersBeforeItReturns) {
    forgetKey();

    Tracking::once(answers.record());
    Tracking::once(here, answers.record());

    ASSERT_EQ(answers.count(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(std::get<0>(answers[i]), QVStatus::ERROR_PUBLISHABLE_KEY);
        EXPECT_EQ(std::get<1>(answers[i]), std::nullopt);
        EXPECT_EQ(std::get<2>(answers[i]), std::nullopt);
        EXPECT_EQ(std::get<3>(answers[i]), nullptr);
    }
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(TrackingNamespaceTest, WithoutAKeyStartAndStopDoNothing) {
    forgetKey();
    const auto before = preferences().keys();

    Tracking::start(QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_FALSE(Tracking::isTracking());
    EXPECT_EQ(preferences().keys(), before);

    preferences().setBoolean("quorvane_background_tracking", true);
    Tracking::stop();
    EXPECT_TRUE(Tracking::isTracking());
}

TEST_F(TrackingNamespaceTest, OnceSyncsOneFixOfTheDevice) {
    Tracking::once(answers.record());
    EXPECT_EQ(phone->locationManagers().managers().at(0).desiredAccuracy, platform::DesiredAccuracy::hundredMeters);
    receiveFix();

    ASSERT_EQ(answers.count(), 1U);
    EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(answers.first<1>(), here);
    ASSERT_TRUE(answers.first<2>());
    EXPECT_EQ(answers.first<2>()->size(), 3U);
    EXPECT_EQ(answers.first<3>()->userId, "rider");
    EXPECT_THAT(requestLines(), ElementsAre("GET /locations/find"));
}

TEST_F(TrackingNamespaceTest, OnceHandsOnTheStoppedFlagThatTheFixLeft) {
    Tracking::once(answers.record());
    receiveFix();
    EXPECT_TRUE(answers.first<3>()->stopped);

    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    Tracking::once(answers.record());
    receiveFix();
    EXPECT_FALSE(std::get<3>(answers[1])->stopped);
}

TEST_F(TrackingNamespaceTest, OnceWithoutALocationHandsOnTheReasonAndSyncsNothing) {
    Tracking::once(answers.record());
    phone->advance(std::chrono::seconds(20));
    phone->locationManagers().setAuthorization(platform::LocationAuthorization::denied);
    Tracking::once(answers.record());

    ASSERT_EQ(answers.count(), 2U);
    EXPECT_EQ(std::get<0>(answers[0]), QVStatus::ERROR_LOCATION);
    EXPECT_EQ(std::get<0>(answers[1]), QVStatus::ERROR_PERMISSIONS);
    EXPECT_EQ(std::get<1>(answers[0]), std::nullopt);
    EXPECT_EQ(std::get<2>(answers[0]), std::nullopt);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(TrackingNamespaceTest, OnceWithALocationSyncsItWithoutDecidingOnIt) {
    preferences().setBoolean("quorvane_stopped", true);

    Tracking::once(here, answers.record());
    phone->runUntilIdle();

    ASSERT_EQ(answers.count(), 1U);
    EXPECT_EQ(answers.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(answers.first<1>(), here);
    EXPECT_FALSE(answers.first<3>()->stopped);
    EXPECT_TRUE(isStopped());
    EXPECT_EQ(QVState::getLastSentAt(), std::nullopt);
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);
    EXPECT_EQ(transport().requests().at(0).request.url,
              "http://localhost:3000/locations/find?lat=46.0&lng=14.5&rad=5000");
    EXPECT_EQ(delegate->calls()[0].kind, quorvane::testing::RecordingDelegate::Kind::locationUpdated);
}

TEST_F(TrackingNamespaceTest, ASyncThatFailsHandsOnItsStatusWithTheLocation) {
    transport().answer("GET", "/locations/find", Answer::with(503));

    Tracking::once(here, answers.record());
    phone->runUntilIdle();

    EXPECT_EQ(answers.first<0>(), QVStatus::ERROR_SERVER);
    EXPECT_EQ(answers.first<1>(), here);
    EXPECT_EQ(answers.first<2>(), std::nullopt);
    EXPECT_EQ(answers.first<3>(), nullptr);
}

TEST_F(TrackingNamespaceTest, AStoppedFixOfTheDeviceThatFailsIsKeptForAReplay) {
    transport().answer("GET", "/locations/find", Answer::with(503));

    Tracking::once(answers.record());
    receiveFix();

    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), here);
}

TEST_F(TrackingNamespaceTest, StartTracksUntilStop) {
    EXPECT_FALSE(Tracking::isTracking());

    Tracking::start(QuorvaneTrackingOptions::CONTINUOUS());
    phone->runUntilIdle();
    EXPECT_TRUE(Tracking::isTracking());
    EXPECT_EQ(*Quorvane::getTrackingOptions(), *QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_TRUE(phone->locationManagers().managers().at(1).updates);

    Tracking::stop();
    phone->runUntilIdle();
    EXPECT_FALSE(Tracking::isTracking());
    EXPECT_FALSE(phone->locationManagers().managers().at(1).updates);
}

TEST_F(TrackingNamespaceTest, WithoutOptionsNothingStarts) {
    Tracking::start(nullptr);

    EXPECT_FALSE(Tracking::isTracking());
}

TEST_F(TrackingNamespaceTest, WhetherItTracksIsTheStoredFlag) {
    preferences().setBoolean("quorvane_background_tracking", true);
    EXPECT_TRUE(Tracking::isTracking());
    EXPECT_TRUE(Quorvane::isAuthenticated());

    forgetKey();
    EXPECT_TRUE(Tracking::isTracking());
}

} // namespace
} // namespace quorvane
