#include "support/APITest.h"

namespace quorvane {
namespace {

/// Preferences of a process that is killed after so many writes.
class EndingPreferences : public quorvane::testing::MemoryPreferences {
public:
    using MemoryPreferences::MemoryPreferences;
    void setString(std::string_view key, std::string_view value) override {
        if (writesLeft-- > 0) {
            MemoryPreferences::setString(key, value);
        }
    }
    void setInteger(std::string_view key, std::int64_t value) override {
        if (writesLeft-- > 0) {
            MemoryPreferences::setInteger(key, value);
        }
    }
    int writesLeft = 0;
};

/// The phone, but for its preferences.
class PlatformThatEnds : public platform::Platform {
public:
    explicit PlatformThatEnds(quorvane::testing::SimulatedPlatform& thePhone)
        : phone(thePhone), store(thePhone.preferences().contents()) {}
    platform::Clock& clock() override { return phone.clock(); }
    platform::MainQueue& mainQueue() override { return phone.mainQueue(); }
    platform::PreferencesStore& preferences() override { return store; }
    platform::HTTPTransport& transport() override { return phone.transport(); }
    platform::Digest& digest() override { return phone.digest(); }
    platform::SecureRandom& random() override { return phone.random(); }
    platform::FileManager& files() override { return phone.files(); }
    platform::Application& application() override { return phone.application(); }
    platform::Device& device() override { return phone.device(); }
    platform::LocationManagerFactory& locationManagers() override { return phone.locationManagers(); }

    quorvane::testing::SimulatedPlatform& phone;
    EndingPreferences store;
};

using namespace std::chrono_literals;

class TokenStorageTest : public APITest {
protected:
    /// Signs in with the token answer @p body.
    void signIn(const std::string& body) {
        answerAuthorize();
        transport().answer("POST", "/token", Answer::json(body));
        auth().handleAuthenticateFlow("rider", "access-key", "myApp://callback", api().auth, [](QVStatus, bool) {});
        phone->runUntilIdle();
    }

    [[nodiscard]] std::optional<std::int64_t> number(std::string_view key) { return preferences().integer(key); }
};

TEST_F(TokenStorageTest, ATokenAnswerFillsItsFourKeys) {
    signIn(tokenAnswer("abc", "3600", "def"));

    EXPECT_EQ(stored("quorvane_access_token"), "Bearer abc");
    EXPECT_EQ(stored("quorvane_refresh_token"), "def");
    EXPECT_EQ(number("qourvane_access_token_expiry"), now() + 3600);
    EXPECT_EQ(number("quorvane_access_token_creation_time"), now());
}

TEST_F(TokenStorageTest, TheAccessTokenIsStoredBehindItsTypeWhateverThatIs) {
    signIn(R"({"access_token":"a","token_type":"DPoP"})");
    EXPECT_EQ(stored("quorvane_access_token"), "DPoP a");

    signIn(R"({"access_token":"a"})");
    EXPECT_EQ(stored("quorvane_access_token"), " a");
}

TEST_F(TokenStorageTest, ATokenThatNoHeaderCouldCarryIsNoSuccessAndLeavesWhatWasStored) {
    signIn(tokenAnswer("abc", "3600", "def"));

    for (const std::string body : {R"({"access_token":"a\nb","token_type":"Bearer","expires_in":"60"})",
                                   R"({"access_token":"a","token_type":"Bearer\r","expires_in":"60"})",
                                   R"({"access_token":"a\u0000b","token_type":"Bearer","expires_in":"60"})"}) {
        SCOPED_TRACE(body);
        transport().answer("POST", "/token", Answer::json(body));
        const Calls<QVStatus, bool> calls;
        auth().handleAuthenticateFlow("rider", "access-key", "myApp://callback", api().auth, calls.record());
        auth().handleRefreshFlow("access-key", "def", api().auth, calls.record());
        phone->runUntilIdle();

        ASSERT_EQ(calls.count(), 2U);
        EXPECT_EQ(calls[0], std::make_tuple(QVStatus::ERROR_SERIALIZATION, false));
        EXPECT_EQ(calls[1], std::make_tuple(QVStatus::ERROR_SERIALIZATION, false));
        EXPECT_EQ(stored("quorvane_access_token"), "Bearer abc");
        EXPECT_EQ(number("qourvane_access_token_expiry"), now() + 3600);
    }
}

TEST_F(TokenStorageTest, TheTimeIsRoundedAndNotCut) {
    const std::int64_t begin = now();

    phone->advance(499ms);
    signIn(tokenAnswer("abc", "60"));
    EXPECT_EQ(number("quorvane_access_token_creation_time"), begin);
    EXPECT_EQ(number("qourvane_access_token_expiry"), begin + 60);

    phone->advance(1ms);
    signIn(tokenAnswer("abc", "60"));
    EXPECT_EQ(number("quorvane_access_token_creation_time"), begin + 1);
    EXPECT_EQ(number("qourvane_access_token_expiry"), begin + 61);
}

TEST_F(TokenStorageTest, AnExpiryThatIsNoDecimalNumberCountsAsNoTime) {
    for (const char* const text :
         {"", "soon", "3600.5", "3600s", " 3600", "3600 ", "0x10", "1e3", "+-5", "+", "-", "99999999999999999999"}) {
        signIn(tokenAnswer("abc", text));
        EXPECT_EQ(number("qourvane_access_token_expiry"), now()) << '"' << text << '"';
    }
}

TEST_F(TokenStorageTest, AnExpiryMayCarryASign) {
    signIn(tokenAnswer("abc", "+60"));
    EXPECT_EQ(number("qourvane_access_token_expiry"), now() + 60);

    signIn(tokenAnswer("abc", "-60"));
    EXPECT_EQ(number("qourvane_access_token_expiry"), now() - 60);
}

TEST_F(TokenStorageTest, AnExpiryBeyondTheEndOfTimeIsTheEndOfTime) {
    signIn(tokenAnswer("abc", "9223372036854775807"));

    EXPECT_EQ(number("qourvane_access_token_expiry"), std::numeric_limits<std::int64_t>::max());
}

TEST_F(TokenStorageTest, StoredTokensAreMadeToOutlastALossOfPower) {
    signIn(tokenAnswer());

    EXPECT_EQ(preferences().synchronizeCount(), 1);
}

TEST_F(TokenStorageTest, AProcessThatEndsWhileTokensAreStoredLeavesNoneThatIsOfNoUse) {
    for (int writes = 0; writes <= 4; ++writes) {
        SCOPED_TRACE(writes);
        storeTokens(-1);
        transport().answer("POST", "/token", Answer::json(tokenAnswer("abc", "3600", "def")));
        PlatformThatEnds ending(*phone);
        ending.store.writesLeft = writes;
        QVAuthService service(ending);
        service.handleRefreshFlow("access-key", "old-refresh", api().auth, [](QVStatus, bool) {});
        phone->runUntilIdle();

        EXPECT_EQ(stored("quorvane_refresh_token"), writes == 0 ? "old-refresh" : "def");
        const AuthState state = auth().accessInfo().state();
        EXPECT_EQ(state, writes == 4 ? AuthState::AUTHENTICATED : AuthState::EXPIRED);
        EXPECT_TRUE(state == AuthState::EXPIRED || stored("quorvane_access_token") == "Bearer abc");
    }
}

TEST_F(TokenStorageTest, TokensOutlastALaunch) {
    signIn(tokenAnswer("abc", "3600", "def"));

    phone.relaunch();

    EXPECT_EQ(QuorvaneAPI::shared().getAccessInfo().accessToken, "Bearer abc");
    EXPECT_EQ(QuorvaneAPI::shared().getAccessInfo().state(), AuthState::AUTHENTICATED);
}

TEST_F(TokenStorageTest, SigningOutForgetsTheTokensAndNothingElse) {
    signIn(tokenAnswer());

    auth().logout();

    EXPECT_EQ(stored("quorvane_access_token"), std::nullopt);
    EXPECT_EQ(stored("quorvane_refresh_token"), std::nullopt);
    EXPECT_EQ(number("qourvane_access_token_expiry"), std::nullopt);
    EXPECT_EQ(number("quorvane_access_token_creation_time"), std::nullopt);
    EXPECT_EQ(stored("quorvane_access_key"), "access-key");
    EXPECT_EQ(stored("quorvane_user_id"), "rider");
    EXPECT_EQ(flag(), true);
}

} // namespace
} // namespace quorvane
