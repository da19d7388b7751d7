#include "JSON/NumberText.h"
#include "sandbox/TaskFixture.h"
#include "support/ClaimVectors.h"

namespace quorvane::sandbox::test {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

class SandboxClaimTest : public TaskTest {
protected:
    /// A task at the centre with these members besides.
    static std::string task(const std::string& key, AnyCodable::Dictionary members = {}) {
        members.emplace("key", key);
        members.emplace("locationKey", "own-place");
        members.emplace("location", AnyCodable::Dictionary{{"latitude", 46.05}, {"longitude", 14.5}});
        return json::writeExactly(members);
    }

    [[nodiscard]] std::int64_t milliseconds() const {
        return std::chrono::duration_cast<std::chrono::milliseconds>(now.load().time_since_epoch()).count();
    }
};

TEST_F(SandboxClaimTest, AClaimAnswersTheStoredTaskAsARunningOne) {
    const QVTask before = found();

    const RawReply reply = send("/tasks", json::encode(before, json::Style::pretty));

    ASSERT_EQ(reply.status(), 200) << reply.bytes;
    const auto task = json::decode<QVTask>(reply.body());
    EXPECT_EQ(before.state, QVTask::State::generated);
    EXPECT_EQ(task.state, QVTask::State::running);
    EXPECT_EQ(task.nextQuestion, task.questions.front()->key);
    EXPECT_EQ(task.title, before.title);
    EXPECT_EQ(task.questions.size(), 11U);
    EXPECT_EQ(task.rewards.front()->state, "offered");
    EXPECT_NEAR(task.distance, before.distance, 1e-9);
    EXPECT_EQ(found().state, QVTask::State::running);
}

TEST_F(SandboxClaimTest, AClaimThatIsRepeatedIsTheSameClaim) {
    claimTour();
    EXPECT_EQ(taken(pick(0, {0})).state, QVTask::State::continue_);

    const RawReply again = claim();

    EXPECT_EQ(again.status(), 200);
    EXPECT_EQ(json::decode<QVTask>(again.body()).nextQuestion, "task-00000-q3");
}

TEST_F(SandboxClaimTest, AClaimIsOneUsersOwn) {
    claimTour();
    access = signInAs("another");
    searchFrom(SandboxOptions::defaultCenter);

    EXPECT_EQ(found().state, QVTask::State::generated);
    EXPECT_EQ(claim().status(), 200);
}

TEST_F(SandboxClaimTest, EveryPublishedCaseIsDecidedAsItSays) {
    SandboxOptions options;
    const auto vectors = claimVectors();
    ASSERT_GE(vectors.size(), 20U);
    const auto keyOf = [](std::size_t i) { return "vector-" + std::to_string(i); };
    for (std::size_t i = 0; i < vectors.size(); ++i) {
        AnyCodable::Dictionary members = vectors[i].task;
        members["key"] = keyOf(i);
        options.tasks.push_back(json::writeExactly(members));
    }
    startWith(options);

    for (std::size_t i = 0; i < vectors.size(); ++i) {
        const ClaimVector& vector = vectors[i];
        SCOPED_TRACE(vector.name);
        ASSERT_EQ(find("/locations/find?lat=" + json::textOf(vector.user.latitude) +
                       "&lng=" + json::textOf(vector.user.longitude) + "&rad=0")
                      .status(),
                  200);
        const RawReply reply = claim(keyOf(i));
        if (vector.isAllowed) {
            ASSERT_EQ(reply.status(), 200) << reply.bytes;
            EXPECT_NEAR(json::decode<QVTask>(reply.body()).distance, vector.miles, vector.miles * 1e-9);
        } else {
            expectError(reply, 403, "out_of_range");
        }
    }
}

TEST_F(SandboxClaimTest, ARefusalTellsTheDistanceAndTheLimit) {
    searchFrom({.latitude = 46.06, .longitude = 14.5});
    EXPECT_THAT(field(claim(), "error_description"),
                AllOf(HasSubstr("0.6"), HasSubstr("can be claimed within 0.1 miles")));
}

TEST_F(SandboxClaimTest, TheStoredLimitAndPlaceCountAndNotThoseOfTheClaim) {
    searchFrom({.latitude = 46.06, .longitude = 14.5});
    expectError(
        send("/tasks", task(tourKey, {{"claimDistanceOverride", 1000.0},
                                      {"location", AnyCodable::Dictionary{{"latitude", 46.06}, {"longitude", 14.5}}}})),
        403, "out_of_range");
}

TEST_F(SandboxClaimTest, TheUserIsWhereTheLastSearchWas) {
    EXPECT_EQ(find("/generate/tasks?lat=46.06&lng=14.5&rad=10").status(), 200);
    expectError(claim(), 403, "out_of_range");
    EXPECT_EQ(find("/generate/tasks?lat=46.05&lng=14.5&rad=10").status(), 200);
    EXPECT_EQ(claim().status(), 200);
}

TEST_F(SandboxClaimTest, ASearchWithoutAPointTellsNothingOfTheUser) {
    access = signInAs("newcomer");
    EXPECT_EQ(find("/generate/tasks?cid=campaign-tour").status(), 200);
    EXPECT_EQ(find("/generate/tasks?lid=pk-00001").status(), 200);
    expectError(find("/generate/tasks?lat=46.05&lng=14.5"), 400, "invalid_request");
    expectError(claim(), 403, "location_unknown");
}

TEST_F(SandboxClaimTest, AnUnknownTaskIsNotFound) {
    expectError(claim("no such task"), 404, "not_found");
    expectError(claim("../../etc/passwd"), 404, "not_found");
    expectError(claim("task-00000'; DROP TABLE tasks; --"), 404, "not_found");
}

TEST_F(SandboxClaimTest, AClaimMustBeATaskWithAKey) {
    expectError(send("/tasks", ""), 400, "invalid_request");
    expectError(send("/tasks", "{"), 400, "invalid_request");
    expectError(send("/tasks", "[]"), 400, "invalid_request");
    expectError(send("/tasks", "{}"), 400, "invalid_request");
    expectError(send("/tasks", R"({"key":""})"), 400, "invalid_request");
    expectError(send("/tasks", R"({"key":17})"), 400, "invalid_request");
    expectError(send("/tasks", R"({"key":"task-00000","questions":"none"})"), 400, "invalid_request");
    expectError(send("/tasks", R"({"key":"task-00000","state":"paused"})"), 400, "invalid_request");
    expectError(send("/tasks", std::string(2000, '[')), 400, "invalid_request");
}

TEST_F(SandboxClaimTest, AClaimMustBePlainJSON) {
    const std::string head = "POST /tasks HTTP/1.1\r\nAuthorization: Bearer " + access + "\r\nContent-Length: 2\r\n";
    expectError(ask(sandbox->dataPort(), head + "\r\n{}"), 415, "unsupported_media_type");
    expectError(ask(sandbox->dataPort(), head + "Content-Type: text/plain\r\n\r\n{}"), 415, "unsupported_media_type");
    expectError(ask(sandbox->dataPort(), head + "Content-Type: application/json\r\nContent-Encoding: gzip\r\n\r\n{}"),
                415, "unsupported_media_type");
}

TEST_F(SandboxClaimTest, AClaimNeedsAToken) {
    expectError(ask(sandbox->dataPort(), "POST /tasks HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}"), 401, "missing_token");
    access = "unknown";
    expectError(claim(), 401, "invalid_token");
}

TEST_F(SandboxClaimTest, ABodyAboveOneMebibyteIsTooLargeForAClaim) {
    RawConnection connection(sandbox->dataPort());
    connection.send(post("/tasks", std::string((1U << 20U) + 1, ' '), access));
    expectError(connection.readAnswer(), 413, "body_too_large");
}

TEST_F(SandboxClaimTest, ACancelledTaskIsRefusedAndFoundByNoSearch) {
    startWith({.tasks = {task("own", {{"state", "cancelled"}})}});
    expectError(claim("own"), 403, "task_cancelled");
    EXPECT_EQ(find("/generate/tasks?lid=own-place").body(), R"({"count":0,"data":[]})");
}

TEST_F(SandboxClaimTest, ATaskIsRefusedOnceItsTimeIsOver) {
    startWith({.tasks = {task("own", {{"due", milliseconds()}})}});
    EXPECT_EQ(claim("own").status(), 200);
    advance(1ms);
    expectError(claim("own"), 403, "task_overdue");
}

TEST_F(SandboxClaimTest, ATaskForAssociatesIsForUsersWhoseIdentifierSaysSo) {
    startWith({.tasks = {task("own", {{"associatesOnly", true}})}});
    expectError(claim("own"), 403, "associates_only");
    access = signInAs("associate-7");
    searchFrom(SandboxOptions::defaultCenter);
    EXPECT_EQ(claim("own").status(), 200);
}

TEST_F(SandboxClaimTest, ATaskWithoutQuestionsIsCompletedByItsClaim) {
    startWith({.tasks = {task("own", {{"rewards", AnyCodable::List{AnyCodable::Dictionary{{"key", "r"}}}}})}});
    const auto claimed = json::decode<QVTask>(claim("own").body());
    EXPECT_EQ(claimed.state, QVTask::State::completed);
    EXPECT_EQ(claimed.completed, milliseconds());
    EXPECT_EQ(claimed.rewards.front()->state, "earned");
    expectError(claim("own"), 403, "task_completed");
}

TEST_F(SandboxClaimTest, AClaimBeginsAtTheFirstQuestionWhenTheTaskNamesNoneOfItsOwn) {
    const AnyCodable::List questions{AnyCodable::Dictionary{{"type", "date"}},
                                     AnyCodable::Dictionary{{"key", "q"}, {"type", "date"}}};
    startWith({.tasks = {task("own", {{"nextQuestion", "elsewhere"}, {"questions", questions}})}});
    EXPECT_EQ(json::decode<QVTask>(claim("own").body()).nextQuestion, "q");
}

} // namespace
} // namespace quorvane::sandbox::test
