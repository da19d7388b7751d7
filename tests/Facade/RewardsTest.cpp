#include "Facade/Quorvane.h"
#include "support/Calls.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

using RewardList = std::optional<std::vector<std::shared_ptr<QVReward>>>;

class HostRewards : public QVRewardsProtocol {
public:
    void claim(const std::shared_ptr<QVTask>&, const std::shared_ptr<QVReward>& reward,
               const ClaimCallback& callback) override {
        callback(QVStatus::SUCCESS, reward);
    }
    void list(const ListCallback& callback) override {
        callback(QVStatus::SUCCESS, std::vector{std::make_shared<QVReward>()});
    }
};

/// Takes itself out of use while it answers.
class LeavingRewards : public HostRewards {
public:
    void list(const ListCallback& callback) override {
        Quorvane::Rewards = nullptr;
        callback(status, std::nullopt);
    }
    QVStatus status = QVStatus::ERROR_NOT_FOUND;
};

class RewardsTest : public SimulatedTest {
protected:
    [[nodiscard]] static QVStatus listed(bool expectList = false) {
        const Calls<QVStatus, RewardList> calls;
        Quorvane::Rewards.list(calls.record());
        EXPECT_EQ(calls.count(), 1U);
        EXPECT_EQ(calls.first<1>().has_value(), expectList);
        return calls.first<0>();
    }
};

TEST_F(RewardsTest, WithoutAKeyBothOperationsSaySo) {
    const Calls<QVStatus, std::shared_ptr<QVReward>> claimed;
    Quorvane::Rewards.claim(std::make_shared<QVTask>(), std::make_shared<QVReward>(), claimed.record());

    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_PUBLISHABLE_KEY);
    EXPECT_EQ(claimed.first<1>(), nullptr);
    EXPECT_EQ(listed(), QVStatus::ERROR_PUBLISHABLE_KEY);
}

TEST_F(RewardsTest, WithAKeyBothOperationsAreUnimplementedWithoutResultsOrRequests) {
    store("quorvane_access_key", "");
    const Calls<QVStatus, std::shared_ptr<QVReward>> claimed;
    Quorvane::Rewards.claim(std::make_shared<QVTask>(), std::make_shared<QVReward>(), claimed.record());

    EXPECT_EQ(claimed.first<0>(), QVStatus::ERROR_UNIMPLEMENTED);
    EXPECT_EQ(claimed.first<1>(), nullptr);
    EXPECT_EQ(listed(), QVStatus::ERROR_UNIMPLEMENTED);
    EXPECT_TRUE(transport().requests().empty());
}

TEST_F(RewardsTest, AHostMayPutItsOwnInTheirPlace) {
    const auto reward = std::make_shared<QVReward>();
    Quorvane::Rewards = std::make_shared<HostRewards>();

    const Calls<QVStatus, std::shared_ptr<QVReward>> claimed;
    Quorvane::Rewards.claim(nullptr, reward, claimed.record());

    EXPECT_EQ(claimed.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(claimed.first<1>(), reward);
    EXPECT_EQ(listed(true), QVStatus::SUCCESS);
}

TEST_F(RewardsTest, AssigningNoneRestoresTheLibrarysOwn) {
    Quorvane::Rewards = std::make_shared<HostRewards>();

    Quorvane::Rewards = nullptr;

    EXPECT_EQ(listed(), QVStatus::ERROR_PUBLISHABLE_KEY);
}

TEST_F(RewardsTest, AnImplementationMayTakeItselfOutOfUseWhileItAnswers) {
    Quorvane::Rewards = std::make_shared<LeavingRewards>();

    EXPECT_EQ(listed(), QVStatus::ERROR_NOT_FOUND);
    EXPECT_EQ(listed(), QVStatus::ERROR_PUBLISHABLE_KEY);
}

TEST_F(RewardsTest, AnotherPlatformBeginsWithTheLibrarysOwn) {
    Quorvane::Rewards = std::make_shared<HostRewards>();

    phone.relaunch();

    EXPECT_EQ(listed(), QVStatus::ERROR_PUBLISHABLE_KEY);
}

} // namespace
} // namespace quorvane
