#include <gtest/gtest.h>

#include "Tasks/ClaimRule.h"
#include "Tasks/QVTaskService.h"
#include "support/APITest.h"
#include "support/ClaimVectors.h"

namespace quorvane {
namespace {

class ClaimVectorsTest : public APITest {};

TEST_F(ClaimVectorsTest, EveryPublishedCaseIsDecidedAsItSays) {
    storeTokens(3600);
    transport().answer("POST", "/tasks", Answer::json(R"({"key":"task-1","state":"running"})"));
    const auto vectors = claimVectors();
    ASSERT_GE(vectors.size(), 20U);

    for (const ClaimVector& vector : vectors) {
        SCOPED_TRACE(vector.name);
        const auto task = json::decode<QVTask>(json::writeExactly(vector.task));
        platform::Location location;
        location.coordinate = vector.user;
        phone->locationManagers().setLastLocation(location);
        const Calls<QVStatus, std::shared_ptr<QVTask>> claimed;

        QVTaskService::shared().claim(task, claimed.record());
        phone->runUntilIdle();

        ASSERT_EQ(claimed.count(), 1U);
        EXPECT_EQ(claimed.first<0>(), vector.isAllowed ? QVStatus::SUCCESS : QVStatus::ERROR_TASK_OUT_OF_RANGE);
        const double metres = location.distance(QVTaskService::shared().getTaskLocation(task));
        EXPECT_NEAR(ClaimRule::miles(metres), vector.miles, vector.miles * 1e-9);
    }
}

} // namespace
} // namespace quorvane
