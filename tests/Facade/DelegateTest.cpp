#include "API/QVAuthService.h"
#include "API/QVConfigService.h"
#include "Facade/Quorvane.h"
#include "Places/QVPlaceService.h"
#include "Search/QVGeocodeService.h"
#include "Search/QVRouteService.h"
#include "Search/QVSearchService.h"
#include "Tasks/QVRewardService.h"
#include "Tasks/QVTaskService.h"
#include "Tracking/QVContextService.h"
#include "Tracking/QVEventService.h"
#include "Tracking/QVFenceService.h"
#include "Tracking/QVLocationManager.h"
#include "Tracking/QVTrackingService.h"
#include "Tracking/QVUserService.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class DelegateTest : public SimulatedTest {
protected:
    /// The delegates of the sixteen shared objects that have one.
    [[nodiscard]] static std::vector<std::weak_ptr<QuorvaneDelegate>> delegates() {
        return {
            QuorvaneAPI::shared().delegate,      QVLocationManager::shared().delegate,
            QVLogger::shared().delegate,         QVAuthService::shared().delegate,
            QVConfigService::shared().delegate,  QVTrackingService::shared().delegate,
            QVContextService::shared().delegate, QVFenceService::shared().delegate,
            QVEventService::shared().delegate,   QVUserService::shared().delegate,
            QVTaskService::shared().delegate,    QVRewardService::shared().delegate,
            QVSearchService::shared().delegate,  QVRouteService::shared().delegate,
            QVGeocodeService::shared().delegate, QVPlaceService::shared().delegate,
        };
    }

    std::shared_ptr<quorvane::testing::RecordingDelegate> delegate =
        std::make_shared<quorvane::testing::RecordingDelegate>();
};

TEST_F(DelegateTest, ReachesAllSixteenSharedObjectsWithoutAKey) {
    Quorvane::setDelegate(delegate);

    ASSERT_EQ(delegates().size(), 16U);
    for (const auto& held : delegates()) {
        EXPECT_EQ(held.lock(), delegate);
    }
}

TEST_F(DelegateTest, IsHeldWeaklyEverywhere) {
    Quorvane::setDelegate(delegate);

    EXPECT_EQ(delegate.use_count(), 1);
}

TEST_F(DelegateTest, NoneTakesTheFormerOneAway) {
    Quorvane::setDelegate(delegate);

    Quorvane::setDelegate({});

    for (const auto& held : delegates()) {
        EXPECT_EQ(held.lock(), nullptr);
    }
}

TEST_F(DelegateTest, ReceivesTheLogLinesOfTheLibrary) {
    setLogLevel(QVLogLevel::DEBUG);
    Quorvane::setDelegate(delegate);

    QVLogger::shared().log(QVLogLevel::INFO, "hello");
    phone->runUntilIdle();

    ASSERT_EQ(delegate->logLines().size(), 1U);
    EXPECT_NE(delegate->logLines()[0].find(" Quorvane hello | "), std::string::npos);
}

TEST_F(DelegateTest, MustBeSetAgainForAnotherPlatform) {
    Quorvane::setDelegate(delegate);

    phone.relaunch();

    for (const auto& held : delegates()) {
        EXPECT_EQ(held.lock(), nullptr);
    }
}

} // namespace
} // namespace quorvane
