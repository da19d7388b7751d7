#pragma once

#include "Models/Base64.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"
#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {

/// A user of the sandbox who has searched from where the task "task-00000" is, and requests to claim tasks and to
/// answer their questions.
class TaskTest : public SandboxTest {
protected:
    static constexpr auto tourKey = "task-00000";
    /// The smallest texts that look like photos.
    inline static const std::string jpeg = "\xFF\xD8\xFF\xE0 a photo";
    inline static const std::string png = "\x89PNG\r\n\x1A\n another";

    void startWith(SandboxOptions options) {
        SandboxTest::startWith(std::move(options));
        access = signIn().access;
        searchFrom(SandboxOptions::defaultCenter);
    }

    void SetUp() override { startWith({}); }

    /// The access token of another user.
    [[nodiscard]] std::string signInAs(const std::string& user) const {
        std::string query = authorizeQuery();
        query.replace(query.find("user_id=user"), std::string::npos, "user_id=" + user);
        return tokensOf(token(codeBody(field(authorize(query), "code")))).access;
    }

    void searchFrom(const platform::Coordinate& point) const {
        EXPECT_EQ(find("/locations/find?" + queryAt(point) + "&rad=1").status(), 200);
    }

    static std::string queryAt(const platform::Coordinate& point) {
        return "lat=" + std::to_string(point.latitude) + "&lng=" + std::to_string(point.longitude);
    }

    [[nodiscard]] RawReply find(const std::string& target) const { return get(target, access); }

    [[nodiscard]] static std::string post(const std::string& target, const std::string& body,
                                          const std::string& token) {
        return "POST " + target +
               " HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\nAuthorization: Bearer " + token +
               "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    }

    [[nodiscard]] RawReply send(const std::string& target, const std::string& body) const {
        return ask(sandbox->dataPort(), post(target, body, access));
    }

    [[nodiscard]] RawReply claim(const std::string& key = tourKey) const {
        return send("/tasks", json::writeExactly(AnyCodable::Dictionary{{"key", AnyCodable(key)}}));
    }

    /// The task as a search finds it for the user.
    [[nodiscard]] QVTask found(const std::string& key = tourKey) const {
        const auto list = json::Document::parse(find("/generate/tasks?lat=46.05&lng=14.5&rad=5000").body())
                              .dictionary()
                              ->value("data");
        for (const AnyCodable& object : std::get<AnyCodable::List>(list->value)) {
            auto task = json::decode<QVTask>(json::writeExactly(object));
            if (task.key == key) {
                return task;
            }
        }
        ADD_FAILURE() << "no search finds " << key;
        return {};
    }

    /// A response as the SDK writes it: with the whole question.
    [[nodiscard]] static QVTaskResponse responseTo(const QVTask& task, std::size_t question) {
        QVTaskResponse response;
        response.taskKey = *task.key;
        response.owners = task.owners;
        response.question = task.questions.at(question);
        return response;
    }

    [[nodiscard]] QVTaskResponse pick(std::size_t question, const std::vector<std::size_t>& choices) const {
        QVTaskResponse response = responseTo(tour, question);
        response.answers.emplace();
        for (const std::size_t choice : choices) {
            response.answers->push_back(*response.question->answers.at(choice)->key);
        }
        return response;
    }

    [[nodiscard]] QVTaskResponse type(std::size_t question, const std::string& text) const {
        QVTaskResponse response = responseTo(tour, question);
        response.userAnswer = text;
        return response;
    }

    [[nodiscard]] QVTaskResponse photograph(const std::string& bytes, const std::string& type = "image/jpeg") const {
        QVTaskResponse response = responseTo(tour, 10);
        response.base64 = "data:" + type + ";base64," + base64(bytes);
        return response;
    }

    [[nodiscard]] RawReply respond(const QVTaskResponse& response, const std::string& key = tourKey) const {
        return send("/tasks/" + key + "/responses", json::encode(response, json::Style::pretty));
    }

    /// What the service stored.
    [[nodiscard]] QVTaskResponse taken(const QVTaskResponse& response) const {
        const RawReply reply = respond(response);
        EXPECT_EQ(reply.status(), 200) << reply.bytes;
        return reply.status() == 200 ? json::decode<QVTaskResponse>(reply.body()) : QVTaskResponse();
    }

    void claimTour() {
        const RawReply reply = claim();
        ASSERT_EQ(reply.status(), 200) << reply.bytes;
        tour = json::decode<QVTask>(reply.body());
    }

    std::string access;
    /// The task "task-00000", once it is claimed.
    QVTask tour;
};

} // namespace quorvane::sandbox::test
