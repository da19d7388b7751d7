#include <cstdlib>

#include "Core/QVSettings.h"
#include "support/SimulatedTest.h"
#include "support/TimeLimit.h"

namespace quorvane {
namespace {

class UserIdTest : public SimulatedTest {
protected:
    [[nodiscard]] std::optional<std::string> stored() { return preferences().string("quorvane_user_id"); }
};

TEST_F(UserIdTest, AFirstUserIdIsStored) {
    QVSettings::setUserId("rider");

    EXPECT_EQ(stored(), "rider");
}

TEST_F(UserIdTest, TheSameUserIdIsStoredAgain) {
    QVSettings::setUserId("rider");

    QVSettings::setUserId("rider");

    EXPECT_EQ(stored(), "rider");
}

TEST_F(UserIdTest, AnEmptyUserIdIsAUserId) {
    QVSettings::setUserId("");
    QVSettings::setUserId("");

    EXPECT_EQ(stored(), "");
}

TEST_F(UserIdTest, RemovingAUserIdThatIsNotThereReturns) {
    QVSettings::setUserId(std::nullopt);

    EXPECT_EQ(stored(), std::nullopt);
}

using UserIdDeathTest = UserIdTest;

TEST_F(UserIdDeathTest, SettingAnotherUserIdNeverReturns) {
    QVSettings::setUserId("rider");

    EXPECT_EXIT(
        {
            killSoon();
            QVSettings::setUserId("walker");
            std::_Exit(0);
        },
        ::testing::KilledBySignal(SIGALRM), "");
}

TEST_F(UserIdDeathTest, RemovingAStoredUserIdNeverReturns) {
    QVSettings::setUserId("rider");

    EXPECT_EXIT(
        {
            killSoon();
            QVSettings::setUserId(std::nullopt);
            std::_Exit(0);
        },
        ::testing::KilledBySignal(SIGALRM), "");
}

} // namespace
} // namespace quorvane
