#include "Tracking/QVBackgroundTaskManager.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using GrantChange = observed::BackgroundGrant::Change;

class QVBackgroundTaskManagerTest : public TrackingTest {
protected:
    QVBackgroundTaskManagerTest() { setLogLevel(QVLogLevel::WARNING); }

    [[nodiscard]] static QVBackgroundTaskManager& tasks() { return QVBackgroundTaskManager::shared(); }
    [[nodiscard]] quorvane::testing::SimulatedApplication& application() { return phone->application(); }

    /// How long the first grant is held.
    [[nodiscard]] std::chrono::nanoseconds heldFor(double remaining) {
        application().setBackgroundTimeRemaining(remaining);
        tasks().startBackgroundTask();
        std::chrono::nanoseconds held{0};
        while (application().openBackgroundTaskCount() > 0 && held < 1h) {
            advance(500ms);
            held += 500ms;
        }
        return held;
    }
};

TEST_F(QVBackgroundTaskManagerTest, InTheForegroundAGrantIsHeldForAHundredAndSeventySeconds) {
    EXPECT_EQ(heldFor(platform::Application::foreground), 170s);
}

TEST(QVBackgroundTaskManagerLifeTest, APlatformThatIsTakenOutOfUseGetsItsGrantsBack) {
    const auto platform = quorvane::testing::SimulatedPlatform::make();
    platform::install(platform);
    QVBackgroundTaskManager::shared().startBackgroundTask();
    QVBackgroundTaskManager::shared().startBackgroundTask();
    ASSERT_EQ(platform->application().openBackgroundTaskCount(), 2);

    platform::install(nullptr);

    EXPECT_EQ(platform->application().openBackgroundTaskCount(), 0);
}

TEST_F(QVBackgroundTaskManagerTest, WithAHundredSecondsLeftAGrantIsHeldForNinety) {
    EXPECT_EQ(heldFor(100), 90s);
}

TEST_F(QVBackgroundTaskManagerTest, WithAHundredAndSeventySecondsLeftTenAreKeptBackAndWithMoreNone) {
    EXPECT_EQ(heldFor(170), 160s);
    EXPECT_EQ(heldFor(170.5), 170s);
}

TEST_F(QVBackgroundTaskManagerTest, TwentySecondsLeftAreJustEnough) {
    EXPECT_EQ(heldFor(20), 10s);
}

TEST_F(QVBackgroundTaskManagerTest, WithFifteenSecondsLeftNoGrantIsBegun) {
    application().setBackgroundTimeRemaining(15);

    tasks().startBackgroundTask();

    EXPECT_THAT(application().backgroundTasks(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre("Background time expiring | duration = 5.0"));
    EXPECT_THAT(tasks().backgroundTaskIds(), IsEmpty());
    EXPECT_EQ(observer.of<observed::BackgroundGrant>().at(0).change, GrantChange::expiring);
}

TEST_F(QVBackgroundTaskManagerTest, WithATenthLessThanTwentySecondsLeftNoGrantIsBegun) {
    application().setBackgroundTimeRemaining(19.9);

    tasks().startBackgroundTask();

    EXPECT_THAT(application().backgroundTasks(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre("Background time expiring | duration = 9.899999999999999"));
}

TEST_F(QVBackgroundTaskManagerTest, WithoutAnyTimeLeftTheDurationIsNegative) {
    application().setBackgroundTimeRemaining(0);

    tasks().startBackgroundTask();

    EXPECT_THAT(application().backgroundTasks(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre("Background time expiring | duration = -10.0"));
}

TEST_F(QVBackgroundTaskManagerTest, TheQueuesAndTheGrantsHaveTheirNames) {
    EXPECT_EQ(QVBackgroundTaskManager::QUEUE_LABEL, "qv-background-task-manager");
    EXPECT_EQ(QVBackgroundTaskManager::BACKGROUND_TASK_NAME, "qv-bg-task");
    EXPECT_EQ(QVLocationManager::QUEUE_LABEL, "qv-location-manager");
    EXPECT_EQ(QVLocationManager::REGION_IDENTIFIER, "qv-visit-region");
}

TEST_F(QVBackgroundTaskManagerTest, TheEndOfAGrantsTimeEndsThatGrantOnly) {
    tasks().startBackgroundTask();
    advance(60s);
    tasks().startBackgroundTask();

    advance(110s);

    EXPECT_THAT(tasks().backgroundTaskIds(), ElementsAre(2U));
    EXPECT_FALSE(application().backgroundTasks()[0].open);
    EXPECT_TRUE(application().backgroundTasks()[1].open);
}

TEST_F(QVBackgroundTaskManagerTest, AGrantHasTheLibrarysNameAndIsLogged) {
    tasks().startBackgroundTask();
    tasks().startBackgroundTask();

    ASSERT_EQ(application().backgroundTasks().size(), 2U);
    EXPECT_EQ(application().backgroundTasks()[0].name, "qv-bg-task");
    EXPECT_THAT(tasks().backgroundTaskIds(), ElementsAre(1U, 2U));
    EXPECT_THAT(messages(), ElementsAre("Started background task | tid = 1", "Started background task | tid = 2"));
}

TEST_F(QVBackgroundTaskManagerTest, AGrantThatThePlatformRefusesIsNone) {
    application().refuseBackgroundTasks(true);

    tasks().startBackgroundTask();
    advance(200s);

    EXPECT_THAT(tasks().backgroundTaskIds(), IsEmpty());
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(QVBackgroundTaskManagerTest, EndingAGrantTellsThePlatformAndTakesItOffTheList) {
    tasks().startBackgroundTask();
    tasks().startBackgroundTask();
    settle();
    application().clearOutput();

    tasks().endBackgroundTask(1);

    EXPECT_FALSE(application().backgroundTasks()[0].open);
    EXPECT_TRUE(application().backgroundTasks()[1].open);
    EXPECT_THAT(tasks().backgroundTaskIds(), ElementsAre(2U));
    EXPECT_THAT(messages(), ElementsAre("Ending background task | tid = 1"));
}

TEST_F(QVBackgroundTaskManagerTest, EndingAGrantThatIsNotOnTheListLeavesTheList) {
    tasks().startBackgroundTask();

    tasks().endBackgroundTask(77);

    EXPECT_THAT(tasks().backgroundTaskIds(), ElementsAre(1U));
}

TEST_F(QVBackgroundTaskManagerTest, AGrantThatThePlatformExpiresIsEndedOnceAndTheLaterEndFindsNothing) {
    tasks().startBackgroundTask();
    settle();
    application().clearOutput();

    application().expire(1);
    settle();
    EXPECT_THAT(tasks().backgroundTaskIds(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre("Expiring background task | tid = (identifier.rawValue)",
                                        "Ending background task | tid = 1"));

    advance(170s);
    EXPECT_THAT(tasks().backgroundTaskIds(), IsEmpty());
    std::vector<GrantChange> changes;
    for (const observed::BackgroundGrant& grant : observer.of<observed::BackgroundGrant>()) {
        changes.push_back(grant.change);
    }
    EXPECT_THAT(changes, ElementsAre(GrantChange::begun, GrantChange::expired, GrantChange::ended));
}

TEST_F(QVBackgroundTaskManagerTest, EndingAllEndsAllInTheirOrder) {
    for (int i = 0; i < 3; ++i) {
        tasks().startBackgroundTask();
    }
    tasks().endBackgroundTask(2);
    settle();
    application().clearOutput();
    observer.all.clear();

    tasks().endBackgroundTasks();

    EXPECT_EQ(application().openBackgroundTaskCount(), 0);
    EXPECT_THAT(tasks().backgroundTaskIds(), IsEmpty());
    EXPECT_THAT(messages(), ElementsAre("Ending background tasks | count = 2"));
    const auto ended = observer.of<observed::BackgroundGrant>();
    ASSERT_EQ(ended.size(), 2U);
    EXPECT_EQ(ended[0].task, 1U);
    EXPECT_EQ(ended[1].task, 3U);
}

TEST_F(QVBackgroundTaskManagerTest, AfterAllWereEndedTheScheduledEndFindsNothingToRemove) {
    tasks().startBackgroundTask();
    tasks().endBackgroundTasks();
    advance(100s);
    tasks().startBackgroundTask();
    settle();
    application().clearOutput();

    advance(70s);

    EXPECT_THAT(messages(), ElementsAre("Ending background task | tid = 1"));
    EXPECT_THAT(tasks().backgroundTaskIds(), ElementsAre(2U));
    EXPECT_TRUE(application().backgroundTasks()[1].open);
    std::vector<std::pair<GrantChange, platform::Application::BackgroundTask>> told;
    for (const observed::BackgroundGrant& grant : observer.of<observed::BackgroundGrant>()) {
        told.emplace_back(grant.change, grant.task);
    }
    EXPECT_THAT(told, ElementsAre(std::pair(GrantChange::begun, 1U), std::pair(GrantChange::ended, 1U),
                                  std::pair(GrantChange::begun, 2U)));
}

TEST_F(QVBackgroundTaskManagerTest, EndingNoneIsLoggedToo) {
    tasks().endBackgroundTasks();

    EXPECT_THAT(messages(), ElementsAre("Ending background tasks | count = 0"));
}

} // namespace
} // namespace quorvane
