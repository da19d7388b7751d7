
#include "sandbox/TaskFixture.h"
#include "support/ScratchDirectory.h"

namespace quorvane::sandbox::test {
namespace {

class TaskFaultTest : public TaskTest {
protected:
    void breakNext(const std::string& path, const std::string& what) {
        sandbox->addFault(fault(path + ":" + what + ":count=1"));
    }

    /// Every byte of the answer, as the fault left it.
    [[nodiscard]] std::string bytesOf(const std::string& target, const std::string& body) const {
        RawConnection connection(sandbox->dataPort());
        connection.send(post(target, body, access));
        return connection.readToEnd().bytes;
    }

    [[nodiscard]] std::string claimBytes() const { return bytesOf("/tasks", R"({"key":"task-00000"})"); }
    [[nodiscard]] std::string responseBytes() const {
        return bytesOf("/tasks/task-00000/responses", json::encode(pick(0, {0})));
    }
};

TEST_F(TaskFaultTest, AClaimThatIsDroppedIsNotCarriedOut) {
    for (const char* kind : {"drop", "reset"}) {
        breakNext("/tasks", kind);
        EXPECT_EQ(claimBytes(), "");
        EXPECT_EQ(found().state, QVTask::State::generated);
    }
}

TEST_F(TaskFaultTest, AClaimWhoseReplyIsLostIsCarriedOutAndCanBeRepeated) {
    breakNext("/tasks", "lost-reply");
    EXPECT_EQ(claimBytes(), "");
    EXPECT_EQ(found().state, QVTask::State::running);
    EXPECT_EQ(claim().status(), 200);
}

TEST_F(TaskFaultTest, AClaimWhoseReplyIsCutIsCarriedOut) {
    breakNext("/tasks", "truncate-body");
    const RawReply cut{.bytes = claimBytes()};
    EXPECT_EQ(cut.status(), 200);
    EXPECT_LT(cut.body().size(), std::stoul(cut.header("Content-Length")));
    EXPECT_EQ(found().state, QVTask::State::running);
}

TEST_F(TaskFaultTest, AnAnswerThatIsDroppedIsNotStored) {
    claimTour();
    for (const char* kind : {"drop", "reset"}) {
        breakNext("/tasks/*", kind);
        EXPECT_EQ(responseBytes(), "");
        EXPECT_EQ(found().nextQuestion, "task-00000-q1");
    }
}

TEST_F(TaskFaultTest, AnAnswerWhoseReplyIsLostIsRecognisedWhenItIsSentAgain) {
    claimTour();
    breakNext("/tasks/task-00000/responses", "lost-reply");
    EXPECT_EQ(responseBytes(), "");
    EXPECT_EQ(found().nextQuestion, "task-00000-q3");

    const QVTaskResponse again = taken(pick(0, {0}));
    EXPECT_EQ(again.key, "response-00001");
    EXPECT_EQ(taken(pick(2, {0})).key, "response-00002");
}

TEST_F(TaskFaultTest, TheLastAnswerIsRecognisedTooThoughTheTaskIsCompleted) {
    claimTour();
    ASSERT_EQ(respond(pick(0, {2})).status(), 200);
    ASSERT_EQ(respond(pick(1, {0})).status(), 200);
    breakNext("/tasks/*", "lost-reply");
    const std::string body = json::encode(photograph(jpeg));
    EXPECT_EQ(bytesOf("/tasks/task-00000/responses", body), "");
    EXPECT_EQ(found().state, QVTask::State::completed);
    EXPECT_EQ(taken(photograph(jpeg)).state, QVTask::State::completed);
}

TEST_F(TaskFaultTest, AnAnswerWhoseReplyIsCutIsStored) {
    claimTour();
    breakNext("/tasks/*", "truncate-headers");
    EXPECT_EQ(RawReply{.bytes = responseBytes()}.body(), "");
    EXPECT_EQ(found().nextQuestion, "task-00000-q3");
}

TEST_F(TaskFaultTest, AnExpiredTokenLeavesEverythingAsItWas) {
    claimTour();
    breakNext("/tasks/*", "expired-token");
    expectError(respond(pick(0, {0})), 401, "invalid_token");
    access = signIn().access;
    EXPECT_EQ(found().nextQuestion, "task-00000-q1");
    EXPECT_EQ(respond(pick(0, {0})).status(), 200);
}

TEST_F(TaskFaultTest, AFaultNamesAKeyAsItIsMeant) {
    breakNext("/tasks/a b/responses", "status=500");
    expectError(send("/tasks/a%20b/responses", "{}"), 500, "fault");
}

TEST_F(TaskFaultTest, ClaimsAndAnswersOutliveARestartInAFile) {
    const quorvane::testing::ScratchDirectory folder;
    const std::string file = folder.path() + "/store";
    startWith({.database = file});
    claimTour();
    ASSERT_EQ(respond(pick(0, {2})).status(), 200);
    ASSERT_EQ(respond(pick(1, {0})).status(), 200);
    const QVTaskResponse last = taken(photograph(png, "image/png"));
    const std::string path = last.photoUrl->substr(last.photoUrl->find("/photos/"));

    sandbox.reset();
    startWith({.database = file});

    EXPECT_EQ(found().state, QVTask::State::completed);
    EXPECT_EQ(ask(sandbox->dataPort(), "GET " + path + " HTTP/1.1\r\n\r\n").body(), png);
    EXPECT_EQ(taken(photograph(png, "image/png")).key, last.key);

    sandbox.reset();
    startWith({.database = file, .seed = 9});
    EXPECT_EQ(found().state, QVTask::State::generated) << "other data were made";
    expectError(ask(sandbox->dataPort(), "GET " + path + " HTTP/1.1\r\n\r\n"), 404, "not_found");
}

} // namespace
} // namespace quorvane::sandbox::test
