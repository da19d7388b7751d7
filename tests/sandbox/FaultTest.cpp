#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::EndsWith;

class FaultTest : public SandboxTest {
protected:
    void SetUp() override {
        SandboxTest::SetUp();
        tokens = signIn();
        sandbox->clearRequests();
        config = get(configTarget, tokens.access);
    }

    /// A request for the configuration, and everything up to the end of the connection.
    [[nodiscard]] RawReply configToEnd() const {
        RawConnection connection(sandbox->dataPort());
        connection.send("GET /config?deviceId=d&installId=i&userId=u HTTP/1.1\r\nAuthorization: Bearer " +
                        tokens.access + "\r\n\r\n");
        return connection.readToEnd();
    }

    void expectWorking() const { EXPECT_EQ(get(configTarget, tokens.access).body(), config.body()); }

    Tokens tokens;
    /// What an answer without a fault looks like.
    RawReply config;
};

TEST_F(FaultTest, ADroppedRequestGetsNoByte) {
    sandbox->addFault(fault("/config:drop:count=1"));

    const RawReply reply = configToEnd();

    EXPECT_EQ(reply.bytes, "");
    EXPECT_FALSE(reply.wasReset);
    EXPECT_EQ(sandbox->requests().back().status, 0);
    EXPECT_EQ(sandbox->requests().back().fault, "drop");
    expectWorking();
}

TEST_F(FaultTest, AResetConnectionEndsWithAReset) {
    sandbox->addFault(fault("/config:reset:count=1"));

    const RawReply reply = configToEnd();

    EXPECT_EQ(reply.bytes, "");
    EXPECT_TRUE(reply.wasReset);
    expectWorking();
}

TEST_F(FaultTest, ATruncatedBodyEndsInItsMiddle) {
    sandbox->addFault(fault("/config:truncate-body:count=1"));

    const RawReply reply = configToEnd();

    EXPECT_EQ(reply.header("Content-Length"), "22");
    EXPECT_EQ(reply.body(), config.body().substr(0, 11));
    expectWorking();
}

TEST_F(FaultTest, ABodyIsTruncatedAfterSoManyBytesButNeverWhole) {
    sandbox->addFault(fault("/config:truncate-body=0:count=1"));
    EXPECT_THAT(configToEnd().bytes, EndsWith("\r\n\r\n"));

    sandbox->addFault(fault("/config:truncate-body=1000:count=1"));
    EXPECT_EQ(configToEnd().body(), config.body().substr(0, 21));
}

TEST_F(FaultTest, TruncatedHeadersLackTheBlankLine) {
    sandbox->addFault(fault("/config:truncate-headers:count=1"));

    const RawReply reply = configToEnd();

    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.bytes, config.bytes.substr(0, config.bytes.find("\r\n\r\n") + 2));
    expectWorking();
}

TEST_F(FaultTest, HeadersAreTruncatedAfterSoManyBytes) {
    sandbox->addFault(fault("/config:truncate-headers=10:count=1"));
    EXPECT_EQ(configToEnd().bytes, "HTTP/1.1 2");
}

TEST_F(FaultTest, AnErrorStatusAnswersWithoutCarryingOut) {
    const std::string code = newCode();
    for (const int status : {400, 402, 403, 404, 405, 429, 500, 503, 599, 600, 999}) {
        sandbox->addFault(fault("/token:status=" + std::to_string(status) + ":count=1"));
        expectError(token(codeBody(code)), status, "fault");
    }
    EXPECT_EQ(token(codeBody(code)).status(), 200);
}

TEST_F(FaultTest, ASuccessStatusKeepsTheAnswer) {
    for (const int status : {201, 299, 302, 399}) {
        sandbox->addFault(fault("/config:status=" + std::to_string(status) + ":count=1"));
        const RawReply reply = get(configTarget, tokens.access);
        EXPECT_EQ(reply.status(), status);
        EXPECT_EQ(reply.body(), config.body());
    }
    sandbox->addFault(fault("/config:status=204:count=1"));
    EXPECT_EQ(get(configTarget, tokens.access).body(), "");
}

TEST_F(FaultTest, InvalidJSONComesWithItsLength) {
    sandbox->addFault(fault("/config:invalid-json:count=1"));

    const RawReply reply = get(configTarget, tokens.access);

    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.body(), R"({"apiVersion":"2.0.0")");
    EXPECT_THROW(json::Document::parse(reply.body()), json::DecodingError);
    EXPECT_EQ(reply.header("Content-Length"), "21");
    expectWorking();
}

TEST_F(FaultTest, AnExpiredTokenStaysExpired) {
    const Tokens others = signIn();
    sandbox->addFault(fault("/config:expired-token:count=1"));

    expectError(get(configTarget, tokens.access), 401, "invalid_token");

    expectError(get(configTarget, tokens.access), 401, "invalid_token");
    EXPECT_EQ(get(configTarget, others.access).status(), 200);
    EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);
}

TEST_F(FaultTest, AnExpiredCredentialIsRefusedByTheIdentityService) {
    const std::string code = newCode();
    sandbox->addFault(fault("/token:expired-token:count=1"));
    expectError(token(codeBody(code)), 401, "invalid_token");
    EXPECT_EQ(token(codeBody(code)).status(), 200);

    sandbox->addFault(fault("/authorize:expired-token:count=1"));
    expectError(authorize(authorizeQuery()), 401, "invalid_token");
    EXPECT_NE(newCode(), "");
}

TEST_F(FaultTest, ALostReplyWasCarriedOut) {
    const std::string code = newCode();
    sandbox->addFault(fault("/token:lost-reply:count=1"));
    RawConnection connection(sandbox->identityPort());

    connection.send(tokenRequest(codeBody(code)));

    EXPECT_EQ(connection.readToEnd().bytes, "");
    expectError(token(codeBody(code)), 400, "invalid_grant");
}

TEST_F(FaultTest, ADroppedRequestWasNotCarriedOut) {
    const std::string code = newCode();
    sandbox->addFault(fault("/token:drop:count=1"));
    RawConnection connection(sandbox->identityPort());

    connection.send(tokenRequest(codeBody(code)));

    EXPECT_EQ(connection.readToEnd().bytes, "");
    EXPECT_EQ(token(codeBody(code)).status(), 200);
}

TEST_F(FaultTest, ADelayComesBeforeTheAnswerAndGoesWithAnotherFault) {
    sandbox->addFault(fault("/config:delay=60ms:count=1"));
    sandbox->addFault(fault("/config:delay=60ms:status=503:count=1"));
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(get(configTarget, tokens.access).status(), 200);
    EXPECT_EQ(get(configTarget, tokens.access).status(), 503);

    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(120));
    EXPECT_GE(sandbox->requests().back().duration, std::chrono::milliseconds(60));
}

TEST_F(FaultTest, ADelayEndsWithTheSandbox) {
    sandbox->addFault(fault("/config:delay=3600s"));
    RawConnection connection(sandbox->dataPort());
    connection.send("GET /config HTTP/1.1\r\n\r\n");
    RawConnection other(sandbox->dataPort());
    other.send("GET /config HTTP/1.1\r\n\r\n");

    sandbox.reset();

    EXPECT_EQ(connection.readToEnd().bytes, "");
    EXPECT_EQ(other.readToEnd().bytes, "");
}

TEST_F(FaultTest, ARequestThatIsStillArrivingEndsWithTheSandbox) {
    RawConnection connection(sandbox->dataPort());
    connection.send("GET /config HTTP/1.1\r\n");

    sandbox.reset();

    EXPECT_EQ(connection.readToEnd().bytes, "");
}

TEST_F(FaultTest, AFaultMeetsAsManyRequestsAsItCounts) {
    sandbox->addFault(fault("/config:status=503:count=2"));
    std::vector<int> statuses;
    for (int i = 0; i < 4; ++i) {
        statuses.push_back(get(configTarget, tokens.access).status());
    }
    EXPECT_THAT(statuses, ::testing::ElementsAre(503, 503, 200, 200));
}

TEST_F(FaultTest, AFaultMeetsItsPathOnly) {
    sandbox->addFault(fault("/locations/*:status=503"));
    EXPECT_EQ(get(configTarget, tokens.access).status(), 200);
    EXPECT_EQ(get("/locations/find?lat=1&lng=1&rad=1", tokens.access).status(), 503);
    EXPECT_EQ(get("/locations/other", tokens.access).status(), 503);

    sandbox->clearFaults();
    EXPECT_EQ(get("/locations/find?lat=1&lng=1&rad=1", tokens.access).status(), 200);
}

TEST_F(FaultTest, AFaultCanMeetAPathThatIsNotServed) {
    sandbox->addFault(fault("/nowhere/k/responses:status=500:count=1"));
    const std::string request = "POST /nowhere/k/responses HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}";
    expectError(ask(sandbox->dataPort(), request), 500, "fault");
    EXPECT_EQ(sandbox->requests().back().body, "{}");
    expectError(ask(sandbox->dataPort(), request), 404, "not_found");
}

TEST_F(FaultTest, FaultsOfOptionsHappen) {
    startWith({.faults = {fault("*:status=503:skip=1:count=1")}});
    EXPECT_EQ(authorize(authorizeQuery()).status(), 200);
    EXPECT_EQ(authorize(authorizeQuery()).status(), 503);
    EXPECT_EQ(authorize(authorizeQuery()).status(), 200);
}

} // namespace
} // namespace quorvane::sandbox::test
