#include "API/QVAccessInfo.h"
#include "support/APITest.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

class QVAccessInfoTest : public APITest {
protected:
    [[nodiscard]] QVAccessInfo expiring(std::int64_t seconds) {
        QVAccessInfo info;
        info.accessToken = "Bearer a";
        info.refreshToken = "r";
        info.expiry = now() + seconds;
        return info;
    }
};

TEST_F(QVAccessInfoTest, StatesAreNumberedFromAuthenticated) {
    EXPECT_EQ(static_cast<int>(QVAuthService::AuthState::AUTHENTICATED), 0);
    EXPECT_EQ(static_cast<int>(QVAuthService::AuthState::EXPIRED), 1);
    EXPECT_EQ(static_cast<int>(QVAuthService::AuthState::UNAUTHENTICATED), 2);
}

TEST_F(QVAccessInfoTest, IsUnauthenticatedWhenOneOfTheThreeIsMissing) {
    QVAccessInfo info = expiring(100);
    info.accessToken.reset();
    EXPECT_EQ(info.state(), AuthState::UNAUTHENTICATED);

    info = expiring(100);
    info.refreshToken.reset();
    EXPECT_EQ(info.state(), AuthState::UNAUTHENTICATED);

    info = expiring(100);
    info.expiry.reset();
    EXPECT_EQ(info.state(), AuthState::UNAUTHENTICATED);
    EXPECT_EQ(QVAccessInfo().state(), AuthState::UNAUTHENTICATED);
}

TEST_F(QVAccessInfoTest, IsAuthenticatedUntilTheSecondAfterTheExpiry) {
    EXPECT_EQ(expiring(1).state(), AuthState::AUTHENTICATED);
    EXPECT_EQ(expiring(0).state(), AuthState::AUTHENTICATED);
    EXPECT_EQ(expiring(-1).state(), AuthState::EXPIRED);
}

TEST_F(QVAccessInfoTest, TheCurrentTimeIsRoundedToTheNearestSecond) {
    const QVAccessInfo info = expiring(0);

    phone->advance(499ms);
    EXPECT_EQ(info.state(), AuthState::AUTHENTICATED);

    phone->advance(1ms);
    EXPECT_EQ(info.state(), AuthState::EXPIRED);
}

TEST_F(QVAccessInfoTest, IsReadFromTheTokenKeys) {
    store("quorvane_access_token", "Bearer a");
    store("quorvane_refresh_token", "r");
    store("qourvane_access_token_expiry", 1'700'000'000);

    const QVAccessInfo info = api().getAccessInfo();

    EXPECT_EQ(info.accessToken, "Bearer a");
    EXPECT_EQ(info.refreshToken, "r");
    EXPECT_EQ(info.expiry, 1'700'000'000);
}

TEST_F(QVAccessInfoTest, AnExpiryThatIsNotStoredIsZero) {
    store("quorvane_access_token", "Bearer a");
    store("quorvane_refresh_token", "r");

    EXPECT_EQ(api().getAccessInfo().expiry, 0);
    EXPECT_EQ(api().getAccessInfo().state(), AuthState::EXPIRED);
}

TEST_F(QVAccessInfoTest, TokensThatAreNotStoredAreMissing) {
    EXPECT_EQ(api().getAccessInfo().accessToken, std::nullopt);
    EXPECT_EQ(api().getAccessInfo().refreshToken, std::nullopt);
    EXPECT_EQ(api().getAccessInfo().state(), AuthState::UNAUTHENTICATED);
}

TEST_F(QVAccessInfoTest, AtTheVerySecondOfTheExpiryARefreshIsDueAlthoughTheTokensStillCount) {
    storeTokens(0);

    EXPECT_TRUE(auth().needsRefresh());
    EXPECT_EQ(api().getAccessInfo().state(), AuthState::AUTHENTICATED);
}

TEST_F(QVAccessInfoTest, ARefreshIsDueFromTheSecondOfTheExpiryOn) {
    storeTokens(1);
    EXPECT_FALSE(auth().needsRefresh());

    phone->advance(500ms);
    EXPECT_TRUE(auth().needsRefresh());

    storeTokens(-1);
    EXPECT_TRUE(auth().needsRefresh());
}

TEST_F(QVAccessInfoTest, ARefreshIsDueWhenNoExpiryIsStored) {
    EXPECT_TRUE(auth().needsRefresh());
}

} // namespace
} // namespace quorvane
