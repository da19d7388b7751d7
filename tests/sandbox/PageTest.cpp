#include "sandbox/TaskFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class PageTest : public TaskTest {
protected:
    [[nodiscard]] std::string host() const { return "localhost:" + std::to_string(sandbox->dataPort()); }

    [[nodiscard]] RawReply askFor(const std::string& target, const std::string& headers) const {
        return ask(sandbox->dataPort(), "GET " + target + " HTTP/1.1\r\n" + headers + "\r\n");
    }

    [[nodiscard]] RawReply fetch(const std::string& target) const { return askFor(target, "Host: " + host() + "\r\n"); }

    [[nodiscard]] AnyCodable::Dictionary object(const std::string& target) const {
        const RawReply reply = fetch(target);
        EXPECT_EQ(reply.status(), 200) << reply.bytes;
        return std::get<AnyCodable::Dictionary>(json::readExactly(reply.body()).value);
    }

    static AnyCodable::List list(const AnyCodable::Dictionary& object, const char* key) {
        return std::get<AnyCodable::List>(object.at(key).value);
    }

    static std::string text(const AnyCodable& object, const char* key) {
        return std::get<std::string>(std::get<AnyCodable::Dictionary>(object.value).at(key).value);
    }

    static std::int64_t number(const AnyCodable& object, const char* key) {
        return std::get<std::int64_t>(std::get<AnyCodable::Dictionary>(object.value).at(key).value);
    }

    /// What the page asks for when a fault is switched on; @p headers besides "Host" and the body's.
    [[nodiscard]] RawReply addFault(const std::string& text, const std::string& headers) const {
        const std::string body = json::writeExactly(AnyCodable::Dictionary{{"fault", AnyCodable(text)}});
        return ask(sandbox->dataPort(), "POST /sandbox/faults HTTP/1.1\r\nHost: " + host() +
                                            "\r\nContent-Type: application/json\r\nContent-Length: " +
                                            std::to_string(body.size()) + "\r\n" + headers + "\r\n" + body);
    }

    [[nodiscard]] std::string ownOrigin() const { return "Origin: http://" + host() + "\r\n"; }

    [[nodiscard]] RawReply removeFault(const std::string& number, const std::string& headers) const {
        return ask(sandbox->dataPort(),
                   "DELETE /sandbox/faults/" + number + " HTTP/1.1\r\nHost: " + host() + "\r\n" + headers + "\r\n");
    }

    static constexpr std::array<const char*, 4> targets{"/", "/sandbox/page/page.js", "/sandbox/map",
                                                        "/sandbox/activity"};
};

TEST_F(PageTest, ItsPartsAreServedWithTheirTypesAndAStrictPolicy) {
    const std::vector<std::pair<std::string, std::string>> parts{
        {"/", "text/html; charset=utf-8"},
        {"/sandbox/page/page.css", "text/css; charset=utf-8"},
        {"/sandbox/page/page.js", "text/javascript; charset=utf-8"},
        {"/sandbox/page/icon.svg", "image/svg+xml"},
        {"/sandbox/map", "application/json"},
        {"/sandbox/activity", "application/json"}};
    for (const auto& [target, type] : parts) {
        SCOPED_TRACE(target);
        const RawReply reply = fetch(target);
        EXPECT_EQ(reply.status(), 200);
        EXPECT_EQ(reply.header("Content-Type"), type);
        EXPECT_THAT(reply.header("Content-Security-Policy"),
                    AllOf(HasSubstr("default-src 'none'"), HasSubstr("script-src 'self'"),
                          HasSubstr("frame-ancestors 'none'"), Not(HasSubstr("unsafe"))));
        EXPECT_EQ(reply.header("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(reply.header("Cross-Origin-Resource-Policy"), "same-origin");
        EXPECT_EQ(reply.header("Access-Control-Allow-Origin"), "");
        EXPECT_FALSE(reply.body().empty());
    }
}

TEST_F(PageTest, NothingInItComesFromElsewhere) {
    for (const char* name : {"index.html", "page.css", "page.js", "dom.js", "map.js", "lists.js", "faults.js"}) {
        const RawReply reply = fetch("/sandbox/page/" + std::string(name));
        EXPECT_EQ(reply.status(), 200) << name;
        std::string content = reply.body();
        const std::string nameSpace = "http://www.w3.org/2000/svg";
        if (const auto found = content.find(nameSpace); found != std::string::npos) {
            content.erase(found, nameSpace.size());
        }
        EXPECT_EQ(content.find("//www"), std::string::npos) << name;
        EXPECT_EQ(content.find("http:"), std::string::npos) << name;
        EXPECT_EQ(content.find("https:"), std::string::npos) << name;
        EXPECT_EQ(content.find("innerHTML"), std::string::npos) << name;
    }
}

TEST_F(PageTest, AnUnknownPartIsNotFound) {
    expectError(fetch("/sandbox/page/none.js"), 404, "not_found");
    expectError(fetch("/sandbox/page/..%2F..%2Fetc%2Fpasswd"), 404, "not_found");
    expectError(fetch("/sandbox/photos/none"), 404, "not_found");
    expectError(fetch("/sandbox"), 404, "not_found");
}

TEST_F(PageTest, ItIsServedUnderTheNamesOfThisMachine) {
    for (const char* name : {"localhost", "localhost:1", "127.0.0.1:65535", "127.0.0.1", "[::1]:3000", "[::1]"}) {
        EXPECT_EQ(askFor("/", "Host: " + std::string(name) + "\r\n").status(), 200) << name;
    }
}

TEST_F(PageTest, ItIsRefusedUnderAnyOtherName) {
    for (const char* target : targets) {
        for (const char* name : {"attacker.example", "localhost.attacker.example", "localhost:1@attacker.example",
                                 "127.0.0.1.attacker.example:3000", "localhost:", "localhost:123456", "127.0.0.2",
                                 "LOCALHOST.", "localhostx"}) {
            expectError(askFor(target, "Host: " + std::string(name) + "\r\n"), 403, "forbidden_host");
        }
        expectError(askFor(target, ""), 403, "forbidden_host");
        expectError(askFor(target, "Host: localhost\r\nHost: localhost\r\n"), 400, "bad_request");
    }
}

TEST_F(PageTest, OnlyThePageItselfSwitchesFaultsOnAndOff) {
    const std::string port = std::to_string(sandbox->dataPort());
    for (const std::string& headers :
         {std::string(), std::string("Origin: null\r\n"), std::string("Origin: http://attacker.example\r\n"),
          "Origin: https://localhost:" + port + "\r\n", "Origin: http://127.0.0.1:" + port + "\r\n",
          std::string("Origin: http://localhost\r\n")}) {
        SCOPED_TRACE(headers);
        expectError(addFault("*:drop", headers), 403, "forbidden_origin");
        expectError(removeFault("1", headers), 403, "forbidden_origin");
    }
    EXPECT_THAT(list(object("/sandbox/activity"), "faults"), IsEmpty());
}

TEST_F(PageTest, AFaultIsSwitchedOnAndOff) {
    const RawReply added = addFault("/config:status=503", ownOrigin());
    EXPECT_EQ(added.status(), 200) << added.bytes;
    expectError(find(configTarget), 503, "fault");
    const auto faults = list(object("/sandbox/activity"), "faults");
    ASSERT_THAT(faults, SizeIs(1));
    EXPECT_EQ(text(faults.front(), "text"), "/config:status=503");

    EXPECT_EQ(removeFault(std::to_string(number(faults.front(), "number")), ownOrigin()).status(), 200);

    EXPECT_EQ(find(configTarget).status(), 200);
    EXPECT_THAT(list(object("/sandbox/activity"), "faults"), IsEmpty());
}

TEST_F(PageTest, AFaultThatIsUsedUpIsSwitchedOffWithoutAProblem) {
    EXPECT_EQ(removeFault("17", ownOrigin()).status(), 200);
    expectError(removeFault("x", ownOrigin()), 400, "invalid_request");
    expectError(removeFault("-1", ownOrigin()), 400, "invalid_request");
}

TEST_F(PageTest, AFaultThatCannotBeReadIsRefusedWithASentence) {
    const RawReply reply = addFault("/config:explode", ownOrigin());
    expectError(reply, 400, "invalid_request");
    EXPECT_THAT(field(reply, "error_description"), HasSubstr("\"explode\" is no part of a fault"));
    const std::string head = "POST /sandbox/faults HTTP/1.1\r\nHost: " + host() + "\r\n" + ownOrigin();
    expectError(ask(sandbox->dataPort(), head + "Content-Type: application/json\r\nContent-Length: 2\r\n\r\n{}"), 400,
                "invalid_request");
    expectError(ask(sandbox->dataPort(), head + "Content-Type: text/plain\r\nContent-Length: 2\r\n\r\n{}"), 415,
                "unsupported_media_type");
}

TEST_F(PageTest, NeitherFaultsNorTheLogMeetThePage) {
    sandbox->clearRequests();
    sandbox->addFault(fault("*:drop"));
    for (const char* target : targets) {
        EXPECT_EQ(fetch(target).status(), 200) << target;
    }
    expectError(addFault("nonsense", ownOrigin()), 400, "invalid_request");
    EXPECT_THAT(sandbox->requests(), IsEmpty());
}

TEST_F(PageTest, TheMapHasEveryPlaceAndTask) {
    const auto map = object("/sandbox/map");
    EXPECT_THAT(list(map, "places"), SizeIs(60));
    EXPECT_EQ(text(list(map, "places").front(), "id"), "place-00001");
    const AnyCodable task = list(map, "tasks").front();
    EXPECT_EQ(text(task, "key"), tourKey);
    EXPECT_EQ(number(task, "questions"), 11);
    const auto& members = std::get<AnyCodable::Dictionary>(task.value);
    EXPECT_NEAR(std::get<double>(members.at("limitMetres").value), 160.934, 0.001);
    EXPECT_DOUBLE_EQ(std::get<double>(members.at("latitude").value), 46.050055);
}

TEST_F(PageTest, ActivityTellsOfClaimsAnswersPhotosAndUsers) {
    claimTour();
    ASSERT_EQ(respond(pick(0, {2})).status(), 200);
    ASSERT_EQ(respond(pick(1, {1})).status(), 200);
    QVTaskResponse last = photograph(jpeg);
    last.userAnswer = "<b>žluť</b>";
    ASSERT_EQ(respond(last).status(), 200);

    const auto activity = object("/sandbox/activity");

    const auto claims = list(activity, "claims");
    ASSERT_THAT(claims, SizeIs(1));
    EXPECT_EQ(text(claims.front(), "state"), "completed");
    EXPECT_EQ(text(claims.front(), "user"), "user");
    EXPECT_EQ(number(claims.front(), "score"), 0);
    const auto rewards = list(std::get<AnyCodable::Dictionary>(claims.front().value), "rewards");
    ASSERT_THAT(rewards, SizeIs(1));
    EXPECT_EQ(text(rewards.front(), "state"), "earned");
    const auto responses = list(activity, "responses");
    ASSERT_THAT(responses, SizeIs(3));
    EXPECT_EQ(text(responses[0], "answer"), "No");
    EXPECT_EQ(text(responses[1], "answer"), "For good");
    EXPECT_EQ(text(responses[2], "answer"), "<b>žluť</b>");
    EXPECT_EQ(text(responses[0], "photo"), "");
    EXPECT_EQ(fetch("/sandbox/photos/" + text(responses[2], "photo")).body(), jpeg);
    const auto users = list(activity, "users");
    ASSERT_THAT(users, SizeIs(1));
    EXPECT_EQ(text(users.front(), "user"), "user");
}

TEST_F(PageTest, ActivityTellsOnlyWhatIsNewerThanWhatIsAskedFor) {
    claimTour();
    ASSERT_EQ(respond(pick(0, {2})).status(), 200);
    const auto before = object("/sandbox/activity");
    const std::int64_t last = number(list(before, "requests").back(), "number");
    ASSERT_EQ(respond(pick(1, {1})).status(), 200);

    const auto after = object("/sandbox/activity?responses=1&requests=" + std::to_string(last));

    ASSERT_THAT(list(after, "responses"), SizeIs(1));
    EXPECT_EQ(number(list(after, "responses").front(), "number"), 2);
    ASSERT_THAT(list(after, "requests"), SizeIs(1));
    EXPECT_EQ(text(list(after, "requests").front(), "target"), "/tasks/task-00000/responses");
    EXPECT_EQ(after.at("run"), before.at("run"));
    EXPECT_THAT(list(object("/sandbox/activity?responses=99&requests=99999"), "requests"), IsEmpty());
    expectError(fetch("/sandbox/activity?requests=x"), 400, "invalid_request");
    expectError(fetch("/sandbox/activity?responses=-1"), 400, "invalid_request");
}

TEST_F(PageTest, ARequestIsShownAsItArrived) {
    sandbox->clearRequests();
    EXPECT_EQ(claim().status(), 200);
    const auto requests = list(object("/sandbox/activity"), "requests");
    ASSERT_THAT(requests, SizeIs(1));

    const auto details = object("/sandbox/requests/" + std::to_string(number(requests.front(), "number")));

    EXPECT_EQ(details.at("body"), AnyCodable(R"({"key":"task-00000"})"));
    EXPECT_EQ(list(details, "headers"), (AnyCodable::List{"Authorization: Bearer " + access, "Content-Length: 20",
                                                          "Content-Type: application/json", "Host: localhost"}));
    expectError(fetch("/sandbox/requests/0"), 404, "not_found");
    expectError(fetch("/sandbox/requests/99999"), 404, "not_found");
    expectError(fetch("/sandbox/requests/x"), 400, "invalid_request");
}

TEST_F(PageTest, BytesThatAreNoTextAreShownAllTheSame) {
    sandbox->clearRequests();
    const std::string body = "ab\xFF\xC5";
    std::ignore = ask(sandbox->dataPort(), "POST /x\xFFy HTTP/1.1\r\nX-Name: \xFE\r\nContent-Length: 4\r\n\r\n" + body);
    const AnyCodable request = list(object("/sandbox/activity"), "requests").front();
    EXPECT_EQ(text(request, "target"), "/x?y");

    const auto details = object("/sandbox/requests/" + std::to_string(number(request, "number")));

    EXPECT_EQ(details.at("body"), AnyCodable("ab??"));
    EXPECT_EQ(list(details, "headers").back(), AnyCodable("X-Name: ?"));
}

TEST_F(PageTest, OfALongBodyOnlyTheBeginningIsShown) {
    sandbox->clearRequests();
    std::string body;
    for (int i = 0; i < 20'000; ++i) {
        body += "ž";
    }
    std::ignore = send("/config", "x" + body);
    const AnyCodable request = list(object("/sandbox/activity"), "requests").front();

    const auto details = object("/sandbox/requests/" + std::to_string(number(request, "number")));

    EXPECT_EQ(details.at("bodyBytes"), AnyCodable(40'001));
    EXPECT_EQ(details.at("body"), AnyCodable("x" + body.substr(0, 16'382)));
}

TEST_F(PageTest, EveryRunHasAnotherName) {
    const auto first = object("/sandbox/activity").at("run");
    startWith({});
    EXPECT_NE(object("/sandbox/activity").at("run"), first);
}

} // namespace
} // namespace quorvane::sandbox::test
