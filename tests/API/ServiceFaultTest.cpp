#include <filesystem>

#include "API/RealServiceFixture.h"

namespace quorvane {
namespace {

class ServiceFaultTest : public RealServiceFixture {
protected:
    [[nodiscard]] std::optional<std::string> stored(std::string_view key) { return preferences().string(key); }

    /// Starts an operation and answers its only status.
    [[nodiscard]] QVStatus statusOf(const DataOperation& operation) {
        const Calls<QVStatus> calls;
        operation.start(calls.record());
        EXPECT_TRUE(runUntil([&] { return calls.count() > 0; }));
        settle();
        EXPECT_EQ(calls.count(), 1U);
        return calls.first<0>();
    }
};

TEST_F(ServiceFaultTest, EveryFaultOfTheDataServiceEndsEveryOperationOnceWithItsStatus) {
    ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
    for (const DataOperation& operation : dataOperations(here)) {
        for (const ServiceFault& fault : serviceFaults()) {
            SCOPED_TRACE(operation.name + ", " + fault.text);
            addFault(operation.path + ":" + fault.text);

            EXPECT_EQ(statusOf(operation), fault.status);

            // The service has expired the token for good: sign in again for the next fault.
            service->clearFaults();
            if (fault.text == "expired-token") {
                ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
            }
            EXPECT_EQ(statusOf(operation), QVStatus::SUCCESS);
        }
    }
}

TEST_F(ServiceFaultTest, EveryFaultOfTheAuthorizeCallThatCostsItsAnswerIsAServerError) {
    for (const ServiceFault& fault : serviceFaults()) {
        SCOPED_TRACE(fault.text);
        QVAuthService::shared().logout();
        service->clearRequests();
        addFault("/authorize:" + fault.text);

        const bool succeeds = fault.status == QVStatus::SUCCESS;
        EXPECT_EQ(signIn(), Outcome::Call(succeeds ? QVStatus::SUCCESS : QVStatus::ERROR_SERVER, succeeds));

        EXPECT_EQ(requestCount("/token"), succeeds ? 1U : 0U);
        EXPECT_EQ(stored("quorvane_access_token").has_value(), succeeds);
        service->clearFaults();
    }
}

TEST_F(ServiceFaultTest, EveryFaultOfTheTokenCallIsTheStatusOfTheSignIn) {
    for (const ServiceFault& fault : serviceFaults()) {
        SCOPED_TRACE(fault.text);
        QVAuthService::shared().logout();
        service->clearRequests();
        addFault("/token:" + fault.text);

        EXPECT_EQ(signIn(), Outcome::Call(fault.status, fault.status == QVStatus::SUCCESS));

        EXPECT_EQ(requestCount("/token"), 1U) << "a POST is sent at most once";
        EXPECT_EQ(stored("quorvane_access_token").has_value(), fault.status == QVStatus::SUCCESS);
        service->clearFaults();
    }
}

TEST_F(ServiceFaultTest, EveryFaultOfARefreshIsTheStatusOfTheRequestAndLeavesTheTokens) {
    ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
    for (const ServiceFault& fault : serviceFaults()) {
        SCOPED_TRACE(fault.text);
        expireTokens();
        const auto access = stored("quorvane_access_token");
        const auto refresh = stored("quorvane_refresh_token");
        service->clearRequests();
        addFault("/token:" + fault.text);

        EXPECT_EQ(statusOf(dataOperations(here)[4]), fault.status);

        const bool succeeds = fault.status == QVStatus::SUCCESS;
        EXPECT_EQ(requestCount("/token"), 1U) << "a POST is sent at most once";
        EXPECT_EQ(requestCount("/locations/find"), succeeds ? 1U : 0U);
        EXPECT_EQ(stored("quorvane_access_token") == access, !succeeds);
        EXPECT_EQ(stored("quorvane_refresh_token") == refresh, !succeeds);
        EXPECT_EQ(preferences().boolean("quorvane_background_tracking"), true);
        service->clearFaults();
    }
}

TEST_F(ServiceFaultTest, AnAuthenticationThatAFaultMeetsEndsOnceAndTheNextOneSucceeds) {
    for (const ServiceFault& fault : serviceFaults()) {
        for (const std::string path : {"/authorize", "/token"}) {
            SCOPED_TRACE(path + ", " + fault.text);
            QVAuthService::shared().logout();
            addFault(path + ":" + fault.text);
            const Outcome outcome;

            QVAuthService::shared().authenticate(QuorvaneAPI::shared().auth, outcome.record());
            ASSERT_TRUE(runUntil([&] { return outcome.count() == 1; }));
            settle();

            const bool succeeds = fault.status == QVStatus::SUCCESS;
            EXPECT_EQ(outcome.count(), 1U);
            const QVStatus failure = path == "/token" ? fault.status : QVStatus::ERROR_SERVER;
            EXPECT_EQ(outcome[0], Outcome::Call(succeeds ? QVStatus::SUCCESS : failure, succeeds));
            service->clearFaults();
            EXPECT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
        }
    }
}

TEST_F(ServiceFaultTest, InitialisingAndSettingTheUserTryAgainOnceForEachFaultAndLeaveNothingRunning) {
    const auto outcomes = std::make_shared<std::vector<Outcome::Call>>();
    QVAuthService::shared().observeOutcomes([outcomes, this](QVStatus status, bool authenticated) {
        outcomes->emplace_back(status, authenticated);
        service->clearFaults();
    });
    const std::vector<std::function<void()>> operations{[] { Quorvane::initialize("LOCALKEY-fault"); },
                                                        [] { Quorvane::setUserId("rider"); }};
    for (std::size_t i = 0; i < 2 * serviceFaults().size(); ++i) {
        const ServiceFault fault = serviceFaults()[i / 2];
        SCOPED_TRACE(fault.text + (i % 2 == 0 ? ", initialising" : ", setting the user"));
        QVAuthService::shared().logout();
        // As in a first launch, in which no configuration is fetched.
        preferences().remove("quorvane_user_id");
        outcomes->clear();
        service->clearRequests();
        addFault("/authorize:" + fault.text);

        operations[i % 2]();
        ASSERT_TRUE(runUntil([&] { return !outcomes->empty() && std::get<1>(outcomes->back()); }));
        settle();

        EXPECT_EQ(outcomes->size(), fault.status == QVStatus::SUCCESS ? 1U : 2U);
        EXPECT_EQ(outcomes->front(),
                  Outcome::Call(fault.status == QVStatus::SUCCESS ? QVStatus::SUCCESS : QVStatus::ERROR_SERVER,
                                fault.status == QVStatus::SUCCESS));
        EXPECT_EQ(requestCount("/token"), 1U);
        EXPECT_TRUE(Quorvane::isAuthenticated());
    }
}

TEST_F(ServiceFaultTest, AStatusThatHasNoBodyIsASuccessWithoutResults) {
    ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
    for (const std::string status : {"204", "304"}) {
        SCOPED_TRACE(status);
        addFault("/generate/tasks:count=1:status=" + status);
        const Calls<QVStatus, std::optional<QVTaskList>> calls;
        QVSearchService::shared().tasks(CampaignId{"c1"}, calls.record());
        ASSERT_TRUE(runUntil([&] { return calls.count() > 0; }));

        EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
        EXPECT_EQ(calls.first<1>(), std::nullopt);
        EXPECT_EQ(statusOf(dataOperations(here)[4]), QVStatus::SUCCESS);
    }
}

TEST_F(ServiceFaultTest, AnswersThatTakeTooLongAreNetworkErrorsForAllOperationsAtOnce) {
    ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
    addFault("/config:delay=1000s");
    addFault("/generate/tasks:delay=1000s");
    addFault("/locations/find:delay=1000s");
    addFault("/authorize:delay=1000s");
    addFault("/token:delay=1000s");
    const Calls<QVStatus> data;
    const Outcome identity;

    for (const DataOperation& operation : dataOperations(here)) {
        operation.start(data.record());
    }
    const auto refreshToken = stored("quorvane_refresh_token").value_or("");
    QVAuthService& auth = QVAuthService::shared();
    auth.handleAuthenticateFlow("rider", "access-key", "myApp://callback", QuorvaneAPI::shared().auth,
                                identity.record());
    auth.handleRefreshFlow("access-key", refreshToken, QuorvaneAPI::shared().auth, identity.record());
    ASSERT_TRUE(runUntil([&] { return data.count() == 6 && identity.count() == 2; }));
    settle();

    ASSERT_EQ(data.count(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(std::get<0>(data[i]), QVStatus::ERROR_NETWORK);
    }
    ASSERT_EQ(identity.count(), 2U);
    EXPECT_EQ(identity[0] == Outcome::Call(QVStatus::ERROR_SERVER, false) ? identity[1] : identity[0],
              Outcome::Call(QVStatus::ERROR_NETWORK, false));
}

TEST_F(ServiceFaultTest, WhatIsUnderWayEndsWithThePlatformWithoutACompletionAndLeavesNothingOpen) {
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto threads = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                             std::filesystem::directory_iterator());
    };
    ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
    phone.reset();
    platform::install(nullptr);
    service.reset();
    const auto filesBefore = openFiles();
    const auto threadsBefore = threads();
    service = std::move(std::get<0>(sandbox::Sandbox::start()));
    startPlatform();
    const Calls<QVStatus> calls;
    addFault("*:delay=1000s");

    for (const DataOperation& operation : dataOperations(here)) {
        operation.start(calls.record());
    }
    ASSERT_TRUE(runUntil([&] { return true; }));
    phone.reset();
    platform::install(nullptr);
    service.reset();

    EXPECT_EQ(calls.count(), 0U);
    EXPECT_EQ(openFiles(), filesBefore);
    EXPECT_EQ(threads(), threadsBefore);
}

} // namespace
} // namespace quorvane
