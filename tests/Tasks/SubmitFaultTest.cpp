#include "Tasks/TaskSandboxFixture.h"

namespace quorvane {
namespace {

/// A claimed task whose first answer meets trouble on its way.
class SubmitFaultTest : public TaskSandboxFixture {
protected:
    void SetUp() override {
        TaskSandboxFixture::SetUp();
        ASSERT_EQ(claim().first, QVStatus::SUCCESS);
        service->clearRequests();
    }

    [[nodiscard]] std::size_t sent() const { return requestCount(responsesPath); }
};

TEST_F(SubmitFaultTest, WithoutAServiceItFailsOnce) {
    service.reset();

    expectFailed(answer());
}

TEST_F(SubmitFaultTest, WhenTheConnectionIsBackTheSameAnswerIsAccepted) {
    addFault("*:drop:count=1");
    expectFailed(answer());

    expectSubmitted(answer());
    EXPECT_EQ(sent(), 2U);
}

TEST_F(SubmitFaultTest, AnAnswerWhoseReplyIsLostIsSentOnceAndStoredOnceWhenItIsSentAgain) {
    addFault(std::string(responsesPath) + ":lost-reply:count=1");
    expectFailed(answer());
    EXPECT_EQ(sent(), 1U) << "a POST is never sent again by itself";
    EXPECT_EQ(found(key)->nextQuestion, "task-00000-q3") << "the service has it";

    const Submission again = answer();

    expectSubmitted(again);
    EXPECT_EQ(again.first<1>()->key, answer().first<1>()->key) << "the same response each time";
    EXPECT_EQ(found(key)->nextQuestion, "task-00000-q3");
}

TEST_F(SubmitFaultTest, EveryFaultOnTheWayBackEndsInOneFailureAndLeavesTheAnswerToBeSentAgain) {
    for (const std::string fault : {"drop", "reset", "truncate-body", "truncate-headers", "lost-reply", "invalid-json",
                                    "status=400", "status=401", "status=403", "status=404", "status=409", "status=413",
                                    "status=429", "status=500", "status=503"}) {
        SCOPED_TRACE(fault);
        addFault(std::string(responsesPath) + ":count=1:" + fault);

        expectFailed(answer());
        settle();
        expectSubmitted(answer());
    }
}

TEST_F(SubmitFaultTest, EveryFaultOfAClaimEndsItOnceWithItsStatusAndItCanBeClaimedAgain) {
    for (const ServiceFault& fault : serviceFaults()) {
        SCOPED_TRACE(fault.text);
        addFault("/tasks:count=1:" + fault.text);

        EXPECT_EQ(claim().first, fault.status);

        service->clearFaults();
        if (fault.text == "expired-token") {
            ASSERT_EQ(signIn(), Outcome::Call(QVStatus::SUCCESS, true));
        }
        EXPECT_EQ(claim().first, QVStatus::SUCCESS);
    }
}

TEST_F(SubmitFaultTest, AnExpiredTokenIsRefreshedBeforeTheAnswerIsSentOnce) {
    expireTokens();

    expectSubmitted(answer());

    EXPECT_EQ(requestCount("/token"), 1U);
    EXPECT_EQ(sent(), 1U);
}

TEST_F(SubmitFaultTest, ATokenThatOnlyTheServiceKnowsToHaveExpiredIsAFailureUntilItIsRefreshed) {
    service->expireTokens();
    expectFailed(answer());
    EXPECT_EQ(sent(), 1U);

    preferences().setInteger("qourvane_access_token_expiry", 1);

    expectSubmitted(answer());
    EXPECT_EQ(sent(), 2U);
}

TEST_F(SubmitFaultTest, ARefreshThatFailsIsASubmitFailureAndNoAnswerIsSent) {
    expireTokens();
    addFault("/token:status=503");

    expectFailed(answer());

    EXPECT_EQ(sent(), 0U);
    service->clearFaults();
    expectSubmitted(answer());
}

TEST_F(SubmitFaultTest, AnAnswerDuringARefreshWaitsForItsOwnAndIsSentOnce) {
    expireTokens();
    addFault("/token:delay=20ms");
    const Calls<QVStatus> search;
    const Submission submission;

    dataOperations(here)[4].start(search.record());
    startAnswer(submission);
    ASSERT_TRUE(runUntil([&] { return search.count() == 1 && submission.count() == 1; }));
    settle();

    EXPECT_EQ(search.first<0>(), QVStatus::SUCCESS);
    expectSubmitted(submission);
    EXPECT_EQ(sent(), 1U);
    EXPECT_EQ(requestCount("/locations/find"), 1U);
}

} // namespace
} // namespace quorvane
