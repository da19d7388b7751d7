#include "Tracking/QVPermissionsHelper.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using platform::LocationAuthorization;
using Permission = QVPermissionsHelper::Permission;

/// A phone whose user has not decided yet.
class QVPermissionsHelperTest : public TrackingTest {
protected:
    QVPermissionsHelperTest() {
        services().setAuthorization(LocationAuthorization::notDetermined);
        settle();
    }

    [[nodiscard]] static QVPermissionsHelper& helper() { return *manager().permissionsHelper; }
};

TEST_F(QVPermissionsHelperTest, HasThePlatformAskTheUserAndRemembersTheAnswerWhenItComes) {
    helper().requestAuthorization(Permission::whenInUse);
    EXPECT_EQ(helper().lastAnswer(), LocationAuthorization::notDetermined);

    settle();

    EXPECT_EQ(helper().lastAnswer(), LocationAuthorization::whenInUse);
}

TEST_F(QVPermissionsHelperTest, RemembersARefusalToo) {
    services().answerPermissionWith(LocationAuthorization::denied);

    helper().requestAuthorization(Permission::always);
    settle();

    EXPECT_EQ(helper().lastAnswer(), LocationAuthorization::denied);
    EXPECT_FALSE(helper().isAuthorized());
}

TEST_F(QVPermissionsHelperTest, LearnsWhatTheUserChangesLater) {
    helper().requestAuthorization(Permission::always);
    settle();

    services().setAuthorization(LocationAuthorization::denied);
    settle();

    EXPECT_EQ(helper().lastAnswer(), LocationAuthorization::denied);
}

TEST_F(QVPermissionsHelperTest, AsksThePlatformAnewForEachDecision) {
    services().setAuthorization(LocationAuthorization::whenInUse);

    EXPECT_TRUE(helper().isAuthorized());
    EXPECT_EQ(helper().lastAnswer(), LocationAuthorization::whenInUse);
}

TEST_F(QVPermissionsHelperTest, AnAnswerThatComesAfterItsEndIsOnlyLogged) {
    manager().permissionsHelper.reset();
    manager().verbose = true;
    setLogLevel(QVLogLevel::DEBUG);

    services().setAuthorization(LocationAuthorization::always);
    settle();

    EXPECT_THAT(messages(), ::testing::ElementsAre("didChangeAuthorization | status = always"));
}

/// A helper that no platform has told or answered anything.
TEST_F(QVPermissionsHelperTest, AtFirstThereIsNoAnswer) {
    const auto own = services().make();
    QVPermissionsHelper fresh(*own);
    EXPECT_EQ(fresh.lastAnswer(), std::nullopt);

    EXPECT_FALSE(fresh.isAuthorized());
    EXPECT_EQ(fresh.lastAnswer(), LocationAuthorization::notDetermined);
}

} // namespace
} // namespace quorvane
