#include "sandbox/TaskFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::StartsWith;

class ResponseTest : public TaskTest {
protected:
    void SetUp() override {
        TaskTest::SetUp();
        claimTour();
    }
};

TEST_F(ResponseTest, ATaskIsWalkedFromItsFirstQuestionToItsReward) {
    const std::vector<std::pair<QVTaskResponse, std::int64_t>> walk{
        {pick(0, {0}), 5},          {pick(2, {0, 1}), 3},  {type(3, "0.99"), 10},
        {type(4, "5"), 3},          {type(5, "4"), 2},     {type(6, "Tidy"), 0},
        {type(7, "2026-03-02"), 0}, {type(8, "18:00"), 0}, {type(9, "4006381333931"), 0}};
    const std::vector<std::size_t> next{2, 3, 4, 5, 6, 7, 8, 9, 10};
    for (std::size_t i = 0; i < walk.size(); ++i) {
        const QVTaskResponse response = taken(walk[i].first);
        EXPECT_EQ(response.nextKey, tour.questions.at(next[i])->key);
        EXPECT_EQ(response.score, walk[i].second);
        EXPECT_EQ(response.state, QVTask::State::continue_);
        EXPECT_FALSE(response.photoUrl);
        EXPECT_EQ(found().nextQuestion, response.nextKey);
    }
    const QVTaskResponse last = taken(photograph(jpeg));
    EXPECT_FALSE(last.nextKey);
    EXPECT_EQ(last.state, QVTask::State::completed);
    EXPECT_THAT(*last.photoUrl, StartsWith("http://127.0.0.1:" + std::to_string(sandbox->dataPort()) + "/photos/"));

    const QVTask done = found();
    EXPECT_EQ(done.state, QVTask::State::completed);
    EXPECT_TRUE(done.completed);
    ASSERT_EQ(done.rewards.size(), 1U);
    EXPECT_EQ(done.rewards.front()->state, "earned");
}

} // namespace
} // namespace quorvane::sandbox::test
