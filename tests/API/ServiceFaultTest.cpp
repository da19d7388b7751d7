#include <filesystem>

#include "API/RealServiceFixture.h"

namespace quorvane {
namespace {

/// Faults of every kind that the service can produce, and what an operation ends with.
struct Fault {
    std::string text;
    QVStatus status;
};

std::vector<Fault> faults() {
    using enum QVStatus;
    std::vector<Fault> all{
        {"drop", ERROR_NETWORK},
        {"reset", ERROR_NETWORK},
        {"truncate-body", ERROR_NETWORK},
        {"truncate-body=0", ERROR_NETWORK},
        {"truncate-body=1", ERROR_NETWORK},
        {"truncate-headers", ERROR_NETWORK},
        {"truncate-headers=5", ERROR_NETWORK},
        {"lost-reply", ERROR_NETWORK},
        {"invalid-json", ERROR_SERIALIZATION},
        {"expired-token", ERROR_UNAUTHORIZED},
        {"delay=5ms", SUCCESS},
        {"delay=5ms:drop", ERROR_NETWORK},
        {"status=200", SUCCESS},
        {"status=201", SUCCESS},
        {"status=301", SUCCESS},
        {"status=302", SUCCESS},
        {"status=399", SUCCESS},
        {"status=400", ERROR_BAD_REQUEST},
        {"status=401", ERROR_UNAUTHORIZED},
        {"status=402", ERROR_PAYMENT_REQUIRED},
        {"status=403", ERROR_FORBIDDEN},
        {"status=404", ERROR_NOT_FOUND},
        {"status=405", ERROR_UNKNOWN},
        {"status=429", ERROR_RATE_LIMIT},
        {"status=500", ERROR_SERVER},
        {"status=503", ERROR_SERVER},
        {"status=599", ERROR_SERVER},
        {"status=600", ERROR_UNKNOWN},
        {"status=999", ERROR_UNKNOWN},
    };
    return all;
}

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
        for (const Fault& fault : faults()) {
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
    for (const Fault& fault : faults()) {
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
    for (const Fault& fault : faults()) {
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
    for (const Fault& fault : faults()) {
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
    ASSERT_TRUE(runUntil([&] { return data.count() == 5 && identity.count() == 2; }));
    settle();

    ASSERT_EQ(data.count(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
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
