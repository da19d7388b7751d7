#include <array>
#include <future>
#include <set>
#include <string>
#include <vector>

#include "API/URL.h"
#include "sandbox/TaskFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class ResponseTest : public TaskTest {
protected:
    void SetUp() override {
        TaskTest::SetUp();
        claimTour();
    }

    /// Answers the first questions of the tour rightly, so that the one at @p index is due.
    void walkTo(std::size_t index) {
        const std::vector<QVTaskResponse> answers{pick(0, {0}),          pick(2, {0, 1}),  type(3, "2.50"),
                                                  type(4, "5"),          type(5, "4"),     type(6, "Tidy"),
                                                  type(7, "2026-03-02"), type(8, "18:00"), type(9, "4006381333931")};
        const std::vector<std::size_t> positions{0, 2, 3, 4, 5, 6, 7, 8, 9};
        for (std::size_t i = 0; i < answers.size() && positions[i] < index; ++i) {
            ASSERT_EQ(respond(answers[i]).status(), 200);
        }
    }

    void expectRefused(const QVTaskResponse& response, const std::string& message) const {
        const RawReply reply = respond(response);
        expectError(reply, 400, "invalid_answer");
        EXPECT_EQ(field(reply, "error_description"), message);
    }
};

TEST_F(ResponseTest, APickThatIsNoChoiceIsRefusedForAQuestionWithoutChoicesToo) {
    walkTo(6);
    QVTaskResponse response = type(6, "Tidy");
    response.answers = {"ghost"};

    expectRefused(response, QVTaskSubmitError::INVALID_VALUE().message());
    EXPECT_EQ(respond(type(6, "Tidy")).status(), 200);
}

TEST_F(ResponseTest, ATaskIsWalkedFromItsFirstQuestionToItsReward) {
    const std::vector<std::pair<QVTaskResponse, std::int64_t>> walk{
        {pick(0, {0}), 5},          {pick(2, {0, 1}), 3},  {type(3, "0.99"), 10},
        {type(4, "5"), 3},          {type(5, "4"), 2},     {type(6, "Tidy"), 0},
        {type(7, "2026-03-02"), 0}, {type(8, "18:00"), 0}, {type(9, "4006381333931"), 0}};
    const std::vector<std::size_t> next{2, 3, 4, 5, 6, 7, 8, 9, 10};
    std::set<std::string> keys;
    for (std::size_t i = 0; i < walk.size(); ++i) {
        const QVTaskResponse response = taken(walk[i].first);
        EXPECT_EQ(response.nextKey, tour.questions.at(next[i])->key);
        EXPECT_EQ(response.score, walk[i].second);
        EXPECT_EQ(response.state, QVTask::State::continue_);
        EXPECT_FALSE(response.photoUrl);
        EXPECT_EQ(response.taskKey, tourKey);
        EXPECT_EQ(response.question->key, walk[i].first.question->key);
        EXPECT_EQ(response.userAnswer, walk[i].first.userAnswer);
        EXPECT_EQ(response.answers, walk[i].first.answers);
        EXPECT_EQ(response.owners->user, "user");
        EXPECT_EQ(response.owners->campaign, "campaign-tour");
        EXPECT_TRUE(response.created && response.modified && response.version);
        EXPECT_TRUE(keys.insert(*response.key).second);
        EXPECT_EQ(found().nextQuestion, response.nextKey);
        EXPECT_EQ(found().rewards.front()->state, "offered");
    }
    const QVTaskResponse last = taken(photograph(jpeg));
    EXPECT_FALSE(last.nextKey);
    EXPECT_FALSE(last.base64);
    EXPECT_EQ(last.state, QVTask::State::completed);
    EXPECT_THAT(*last.photoUrl, StartsWith("http://127.0.0.1:" + std::to_string(sandbox->dataPort()) + "/photos/"));

    const QVTask done = found();
    EXPECT_EQ(done.state, QVTask::State::completed);
    EXPECT_EQ(done.completed, last.created);
    EXPECT_FALSE(done.nextQuestion);
    ASSERT_EQ(done.rewards.size(), 1U);
    EXPECT_EQ(done.rewards.front()->state, "earned");
    expectError(claim(), 403, "task_completed");
}

TEST_F(ResponseTest, ThePickedChoiceDecidesTheNextQuestion) {
    EXPECT_EQ(taken(pick(0, {2})).nextKey, "task-00000-q2");
    EXPECT_EQ(taken(pick(1, {0})).nextKey, "task-00000-q11");
    EXPECT_EQ(taken(photograph(png, "image/png")).state, QVTask::State::completed);
}

TEST_F(ResponseTest, ARightAnswerNeedsOnePickForASingleChoice) {
    expectRefused(pick(0, {}), "Selected answers must be between 1 and 1.");
    expectRefused(pick(0, {0, 1}), "Selected answers must be between 1 and 1.");
    QVTaskResponse unknown = pick(0, {0});
    unknown.answers = {"another question's choice"};
    expectRefused(unknown, "Unable to determine value.");
    EXPECT_EQ(respond(pick(0, {0})).status(), 200);
}

TEST_F(ResponseTest, MultiplePicksAreCounted) {
    walkTo(2);
    expectRefused(pick(2, {}), "Selected answers must be between 1 and 3.");
    expectRefused(pick(2, {0, 1, 2, 3}), "Selected answers must be between 1 and 3.");
    const QVTaskResponse all = taken(pick(2, {0, 1, 2}));
    EXPECT_EQ(all.score, 3) << "the question's own maximum";
}

TEST_F(ResponseTest, ANumberMustBeOneWithinItsBounds) {
    walkTo(3);
    expectRefused(responseTo(tour, 3), "Unable to determine value.");
    expectRefused(type(3, "cheap"), "Unable to convert to numeric format.");
    expectRefused(type(3, "20.01"), "Answer must be between 0 and 20.");
    expectRefused(type(3, "-1"), "Answer must be between 0 and 20.");
    EXPECT_EQ(taken(type(3, " 2.5 ")).score, 5);
}

TEST_F(ResponseTest, ARatingMustBeOneOfItsStars) {
    walkTo(4);
    expectRefused(type(4, ""), "A rating is required for this question.");
    expectRefused(type(4, "6"), "Answer must be between 1 and 5.");
    EXPECT_EQ(taken(type(4, "3")).score, 1);
    expectRefused(type(5, "0"), "Answer must be between 1 and 5.");
    EXPECT_EQ(taken(type(5, "1")).score, 0);
}

TEST_F(ResponseTest, ATextMustBeAsLongAsTheQuestionAsks) {
    walkTo(6);
    expectRefused(type(6, ""), "Unable to determine value.");
    expectRefused(type(6, "žž"), "Answer must be between 3 and 200 characters.");
    EXPECT_EQ(respond(type(6, "žžž")).status(), 200);
}

TEST_F(ResponseTest, ADateATimeAndABarcodeMustBeThere) {
    walkTo(7);
    expectRefused(type(7, " "), "An date must be provided!");
    EXPECT_EQ(respond(type(7, "2026-03-02")).status(), 200);
    expectRefused(type(8, ""), "A time is required for this question.");
    EXPECT_EQ(respond(type(8, "18:00")).status(), 200);
    expectRefused(type(9, ""), "An barcode must be provided!");
    EXPECT_EQ(respond(type(9, "4006381333931")).status(), 200);
}

TEST_F(ResponseTest, APhotoThatIsRequiredMustBeThere) {
    walkTo(10);
    expectRefused(type(10, "No photo"), "A photo is required for this question.");
    EXPECT_EQ(respond(photograph(jpeg)).status(), 200);
}

TEST_F(ResponseTest, AnAnswerThatIsRefusedIsNotStored) {
    expectRefused(pick(0, {}), "Selected answers must be between 1 and 1.");
    EXPECT_EQ(found().nextQuestion, "task-00000-q1");
    QVTaskResponse response = pick(0, {0});
    response.base64 = "no photo";
    expectError(respond(response), 400, "invalid_photo");
    EXPECT_EQ(found().nextQuestion, "task-00000-q1");
}

TEST_F(ResponseTest, TheSameAnswerSentAgainIsAnsweredTheSameAndStoredOnce) {
    walkTo(10);
    const RawReply first = respond(photograph(jpeg));
    advance(std::chrono::seconds(5));
    const RawReply again = respond(photograph(jpeg));

    EXPECT_EQ(again.status(), 200);
    EXPECT_EQ(again.body(), first.body());
    EXPECT_EQ(found().state, QVTask::State::completed);
}

TEST_F(ResponseTest, TheSameAnswerSentOnManyConnectionsAtOnceIsStoredOnceAndAnsweredTheSame) {
    const QVTaskResponse answer = pick(0, {0});
    std::vector<std::future<RawReply>> replies;
    for (int i = 0; i < 8; ++i) {
        replies.push_back(std::async(std::launch::async, [&] { return respond(answer); }));
    }

    std::set<std::string> bodies;
    for (auto& reply : replies) {
        const RawReply came = reply.get();
        EXPECT_EQ(came.status(), 200) << came.bytes;
        bodies.insert(came.body());
    }
    EXPECT_EQ(bodies.size(), 1U);
}

TEST_F(ResponseTest, OfDifferentAnswersSentAtOnceOneIsTaken) {
    std::vector<std::future<RawReply>> replies;
    for (std::size_t i = 0; i < 8; ++i) {
        replies.push_back(std::async(std::launch::async, [this, i] { return respond(pick(0, {i % 2})); }));
    }

    std::array<int, 2> taken{};
    for (std::size_t i = 0; i < replies.size(); ++i) {
        const RawReply came = replies[i].get();
        EXPECT_TRUE(came.status() == 200 || came.status() == 409) << came.bytes;
        taken.at(i % 2) += came.status() == 200 ? 1 : 0;
    }
    EXPECT_TRUE(taken == (std::array<int, 2>{4, 0}) || taken == (std::array<int, 2>{0, 4}))
        << taken[0] << " and " << taken[1];
}

TEST_F(ResponseTest, AnotherAnswerToTheSameQuestionIsRefused) {
    EXPECT_EQ(respond(pick(0, {0})).status(), 200);
    expectError(respond(pick(0, {1})), 409, "already_answered");
    QVTaskResponse typed = pick(0, {0});
    typed.userAnswer = "Yes";
    expectError(respond(typed), 409, "already_answered");
    QVTaskResponse withPhoto = pick(0, {0});
    withPhoto.base64 = photograph(jpeg).base64;
    expectError(respond(withPhoto), 409, "already_answered");
    EXPECT_EQ(respond(pick(0, {0})).status(), 200);
}

TEST_F(ResponseTest, OnlyTheQuestionThatIsDueTakesAnAnswer) {
    const RawReply reply = respond(type(3, "1"));
    expectError(reply, 409, "unexpected_question");
    EXPECT_THAT(field(reply, "error_description"), HasSubstr("\"task-00000-q1\""));
}

TEST_F(ResponseTest, ACompletedTaskTakesNoFurtherAnswer) {
    walkTo(10);
    EXPECT_EQ(respond(photograph(jpeg)).status(), 200);
    expectError(respond(pick(1, {0})), 409, "task_completed");
}

TEST_F(ResponseTest, OnlyAClaimedTaskTakesAnAnswer) {
    access = signInAs("another");
    expectError(respond(pick(0, {0})), 409, "task_not_claimed");
}

TEST_F(ResponseTest, TheTaskOfTheBodyMustBeTheOneOfThePath) {
    expectError(respond(pick(0, {0}), "task-00001"), 400, "invalid_request");
    QVTaskResponse response = pick(0, {0});
    response.taskKey = "none";
    expectError(respond(response, "none"), 404, "not_found");
    response.taskKey.clear();
    expectError(respond(response), 400, "invalid_request");
}

TEST_F(ResponseTest, TheQuestionMustBeOneOfTheTask) {
    QVTaskResponse response = pick(0, {0});
    response.question->key = "task-00001-q1";
    expectError(respond(response), 400, "unknown_question");
    response.question->key.reset();
    expectError(respond(response), 400, "unknown_question");
    response.question.reset();
    expectError(respond(response), 400, "unknown_question");
}

TEST_F(ResponseTest, TheStoredQuestionCountsAndNotTheOneThatWasSent) {
    walkTo(10);
    QVTaskResponse response = type(10, "No photo");
    response.question->photoCaptureOptions.reset();
    expectRefused(response, "A photo is required for this question.");
}

TEST_F(ResponseTest, ABodyMustBeAResponse) {
    for (const char* body : {"", "{", "[]", "null", "{}", R"({"taskKey":1})", R"({"taskKey":"task-00000","score":"x"})",
                             R"({"taskKey":"task-00000","answers":"a"})"}) {
        expectError(send("/tasks/task-00000/responses", body), 400, "invalid_request");
    }
    expectError(ask(sandbox->dataPort(), "POST /tasks/task-00000/responses HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}"),
                401, "missing_token");
}

TEST_F(ResponseTest, APhotoOfMegabytesIsTaken) {
    walkTo(10);
    const std::string bytes = jpeg + std::string(std::size_t{20} << 20U, 'x');
    const QVTaskResponse response = taken(photograph(bytes));
    const std::string path = response.photoUrl->substr(response.photoUrl->find("/photos/"));
    EXPECT_EQ(ask(sandbox->dataPort(), "GET " + path + " HTTP/1.1\r\n\r\n").body(), bytes);
}

TEST_F(ResponseTest, ABodyAboveTheLimitIsTooLarge) {
    RawConnection connection(sandbox->dataPort());
    connection.send(post("/tasks/task-00000/responses", std::string((32U << 20U) + 1, ' '), access));
    const RawReply reply = connection.readAnswer();
    expectError(reply, 413, "body_too_large");
    EXPECT_THAT(field(reply, "error_description"), HasSubstr("32 MiB"));

    expectError(send("/tasks/task-00000/responses", std::string(32U << 20U, ' ')), 400, "invalid_request");
}

TEST_F(ResponseTest, TextsComeBackAsTheyWereSent) {
    walkTo(6);
    const std::string text = "<script>alert(\"1\")</script> & 'ž' \\ \n \x01 \xF0\x9F\x9A\xB2";
    EXPECT_EQ(taken(type(6, text)).userAnswer, text);
}

TEST_F(ResponseTest, OtherPathsAreNotThere) {
    expectError(send("/tasks//responses", "{}"), 404, "not_found");
    expectError(send("/tasks/a/b/responses", "{}"), 404, "not_found");
    expectError(send("/tasks/a/responses/", "{}"), 404, "not_found");
    expectError(send("/tasks/%zz/responses", "{}"), 400, "invalid_request");
    expectError(send("/tasks/%ff/responses", "{}"), 400, "invalid_request");
    expectError(find("/tasks/task-00000/responses"), 405, "method_not_allowed");
    expectError(find("/tasks"), 405, "method_not_allowed");
}

TEST_F(ResponseTest, AnyKeyCanBeClaimedAndAnswered) {
    const std::vector<std::string> keys{"a/b", "a?b=c", "..", ".", "a b", "žluť/ü", "%2F", "a+b", "#;&\"'<b>", "\n"};
    SandboxOptions options;
    for (const std::string& key : keys) {
        options.tasks.push_back(json::writeExactly(AnyCodable::Dictionary{
            {"key", key},
            {"location", AnyCodable::Dictionary{{"latitude", 46.05}, {"longitude", 14.5}}},
            {"questions", AnyCodable::List{AnyCodable::Dictionary{{"key", key + "/q"}, {"type", "date"}}}}}));
    }
    startWith(options);
    for (const std::string& key : keys) {
        SCOPED_TRACE(key);
        const RawReply claimed = claim(key);
        ASSERT_EQ(claimed.status(), 200) << claimed.bytes;
        QVTaskResponse response = responseTo(json::decode<QVTask>(claimed.body()), 0);
        response.userAnswer = "today";

        const RawReply reply = respond(response, pathComponent(key));

        ASSERT_EQ(reply.status(), 200) << reply.bytes;
        EXPECT_EQ(json::decode<QVTaskResponse>(reply.body()).taskKey, key);
    }
}

} // namespace
} // namespace quorvane::sandbox::test
