#include <gmock/gmock.h>

#include "JSON/JSON.h"
#include "Tasks/QVTaskService.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ClaimTest : public APITest {
protected:
    ClaimTest() {
        storeTokens(3600);
        task.key = "task-1";
        task.location = std::make_shared<QVAddress>();
        task.location->coordinate = place;
        transport().answer("POST", "/tasks", Answer::json(R"({"key":"task-1","state":"running"})"));
    }

    /// Puts the device that many metres north of the task's place.
    void standAway(double metres) { standAt({place.latitude + metres / metresOfOneDegree, place.longitude}); }

    void standAt(platform::Coordinate coordinate) {
        platform::Location location;
        location.coordinate = coordinate;
        location.horizontalAccuracy = 5;
        phone->locationManagers().setLastLocation(location);
    }

    void claim() { QVTaskService::shared().claim(task, claimed.record()); }

    static constexpr double metresOfOneDegree = 111'195.08;
    const platform::Coordinate place{46.0, 14.5};
    QVTask task;
    const Calls<QVStatus, std::shared_ptr<QVTask>> claimed;
};

TEST_F(ClaimTest, AClaimWithinTheDistanceIsSentWithTheTaskAndAnsweredWithTheServices) {
    standAway(150);

    claim();
    phone->runUntilIdle();

    ASSERT_EQ(claimed.count(), 1U);
    EXPECT_EQ(claimed.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(claimed.first<1>()->state, QVTask::State::running);
    ASSERT_THAT(requestLines(), ElementsAre("POST /tasks"));
    EXPECT_EQ(json::decode<QVTask>(transport().requests()[0].request.body).key, "task-1");
    EXPECT_THAT(transport().requests()[0].query, IsEmpty());
}

TEST_F(ClaimTest, TheBodyIsTheWholeTaskAndNotACharacterMore) {
    standAway(0);
    task.claimDistanceOverride = 1.0;
    task.owners = std::make_shared<QVOwners>();
    task.owners->campaign = "campaign-1";
    task.questions.push_back(std::make_shared<QVQuestion>());
    task.questions[0]->key = "question-1";
    task.questions[0]->type = QVQuestionType::date;

    claim();
    phone->runUntilIdle();

    EXPECT_EQ(transport().requests().at(0).request.body, R"({
  "associatesOnly": false,
  "claimDistanceOverride": 1.0,
  "distance": 0.0,
  "key": "task-1",
  "location": {
    "confidence": 0,
    "latitude": 46.0,
    "longitude": 14.5
  },
  "locationKey": "",
  "owners": {
    "campaign": "campaign-1"
  },
  "questions": [
    {
      "allowDecimals": false,
      "answerOrder": "",
      "answers": [],
      "criticalAnswers": [],
      "images": [],
      "key": "question-1",
      "openTextSuggestions": [],
      "question": "",
      "scoreIntervals": [],
      "showUnitsOnLeft": false,
      "thresholdAnswers": [],
      "type": "date"
    }
  ],
  "rewards": [],
  "state": "unknown",
  "taskRequirements": []
})");
}

TEST_F(ClaimTest, AClaimFromTooFarAwayIsRefusedAtOnceWithoutARequest) {
    standAway(170);

    claim();

    ASSERT_EQ(claimed.count(), 1U);
    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_TASK_OUT_OF_RANGE);
    EXPECT_EQ(claimed.first<1>(), nullptr);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(ClaimTest, WithoutALastKnownLocationNothingIsSentAndTheLocationIsMissed) {
    claim();

    ASSERT_EQ(claimed.count(), 1U);
    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_LOCATION);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(ClaimTest, WithoutAKeyTheClaimIsRefusedBeforeAnythingElse) {
    preferences().remove("quorvane_access_key");

    claim();

    ASSERT_EQ(claimed.count(), 1U);
    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_THAT(requestLines(), IsEmpty());
}

TEST_F(ClaimTest, ATaskWithoutALocationIsMeasuredFromLatitudeAndLongitudeZero) {
    standAway(0);
    task.location = nullptr;

    claim();

    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_TASK_OUT_OF_RANGE);
    EXPECT_EQ(QVTaskService::shared().getTaskLocation(task).coordinate, (platform::Coordinate{0, 0}));
}

TEST_F(ClaimTest, ATaskWithoutALocationCanBeClaimedWhereItsLimitIsLargeEnough) {
    standAway(0);
    task.location = nullptr;
    task.claimDistanceOverride = 20'000;

    claim();
    phone->runUntilIdle();

    EXPECT_EQ(claimed.first<0>(), QVStatus::SUCCESS);
}

TEST_F(ClaimTest, ALocationWithoutACoordinateIsAtLatitudeAndLongitudeZero) {
    task.location->coordinate = std::nullopt;

    const platform::Location location = QVTaskService::shared().getTaskLocation(task);

    EXPECT_EQ(location.coordinate, (platform::Coordinate{0, 0}));
}

TEST_F(ClaimTest, AnInvalidCoordinateOfATaskCountsAsNone) {
    task.location->coordinate = platform::Coordinate::invalid;
    EXPECT_EQ(QVTaskService::shared().getTaskLocation(task).coordinate, (platform::Coordinate{0, 0}));
}

TEST_F(ClaimTest, ASuccessWithoutABodyIsASuccessWithoutATask) {
    standAway(0);
    transport().answer("POST", "/tasks", Answer::with(204));

    claim();
    phone->runUntilIdle();

    ASSERT_EQ(claimed.count(), 1U);
    EXPECT_EQ(claimed.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(claimed.first<1>(), nullptr);
}

TEST_F(ClaimTest, TheServicesRefusalIsHandedOnAsItIs) {
    standAway(0);
    transport().answer("POST", "/tasks", Answer::with(403));

    claim();
    phone->runUntilIdle();

    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_FORBIDDEN);
    EXPECT_EQ(claimed.first<1>(), nullptr);
}

} // namespace
} // namespace quorvane
