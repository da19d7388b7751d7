#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {
namespace {

using namespace std::chrono_literals;

class TokenTest : public SandboxTest {};

TEST_F(TokenTest, ARefreshTokenGivesNewTokens) {
    const Tokens first = signIn();

    const RawReply reply = token(refreshBody(first.refresh));

    EXPECT_EQ(reply.status(), 200);
    const Tokens second = tokensOf(reply);
    EXPECT_NE(second.access, first.access);
    EXPECT_NE(second.refresh, first.refresh);
    EXPECT_EQ(get(configTarget, second.access).status(), 200);
    EXPECT_EQ(get(configTarget, first.access).status(), 200);
}

TEST_F(TokenTest, TwoRefreshesAtOnceBothWork) {
    const Tokens first = signIn();
    const std::string request = tokenRequest(refreshBody(first.refresh));
    RawConnection one(sandbox->identityPort());
    RawConnection other(sandbox->identityPort());

    one.send(request);
    other.send(request);

    const Tokens second = tokensOf(one.readAnswer());
    const Tokens third = tokensOf(other.readAnswer());
    EXPECT_NE(second.refresh, third.refresh);
    for (const Tokens& tokens : {second, third}) {
        EXPECT_EQ(get(configTarget, tokens.access).status(), 200);
        EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);
    }
}

TEST_F(TokenTest, ARefreshTokenThatWasUsedWorksForThirtySecondsMore) {
    const Tokens tokens = signIn();
    EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);

    advance(30s - 1ms);
    EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);

    // The grace runs from the first use.
    advance(1ms);
    expectError(token(refreshBody(tokens.refresh)), 400, "invalid_grant");
}

TEST_F(TokenTest, ARefreshTokenIsBoundToItsClient) {
    const Tokens tokens = signIn();
    expectError(token(refreshBody(tokens.refresh, "other")), 400, "invalid_grant");
    EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);
}

TEST_F(TokenTest, AnUnknownRefreshTokenIsRefused) {
    expectError(token(refreshBody("unknown")), 400, "invalid_grant");
    expectError(token(refreshBody(signIn().access)), 400, "invalid_grant");
}

TEST_F(TokenTest, ARefreshTokenExpiresWhenItsTimeIsOver) {
    startWith({.refreshTokenLifetime = 100s});
    const Tokens tokens = signIn();

    advance(100s);

    expectError(token(refreshBody(tokens.refresh)), 400, "invalid_grant");
}

TEST_F(TokenTest, AnAccessTokenWorksForItsTimeAndNoLonger) {
    startWith({.accessTokenLifetime = 20s});
    const RawReply granted = token(codeBody(newCode()));
    const Tokens tokens = tokensOf(granted);
    EXPECT_EQ(field(granted, "expires_in"), "20");

    advance(20s - 1ms);
    EXPECT_EQ(get(configTarget, tokens.access).status(), 200);
    advance(1ms);
    expectError(get(configTarget, tokens.access), 401, "invalid_token");
    EXPECT_EQ(get(configTarget, tokensOf(token(refreshBody(tokens.refresh))).access).status(), 200);
}

TEST_F(TokenTest, TokensCanBeExpiredAtOnce) {
    const Tokens tokens = signIn();

    sandbox->expireTokens();

    expectError(get(configTarget, tokens.access), 401, "invalid_token");
    EXPECT_EQ(token(refreshBody(tokens.refresh)).status(), 200);
}

TEST_F(TokenTest, DataNeedAnAccessToken) {
    const Tokens tokens = signIn();
    const auto with = [&](const std::string& headers) {
        return ask(sandbox->dataPort(), "GET /config?deviceId=d&installId=i&userId=u HTTP/1.1\r\n" + headers + "\r\n");
    };
    expectError(with(""), 401, "missing_token");
    EXPECT_EQ(with("").header("WWW-Authenticate"), "Bearer error=\"missing_token\"");
    expectError(with("Authorization: " + tokens.access + "\r\n"), 401, "invalid_token");
    expectError(with("Authorization: Basic " + tokens.access + "\r\n"), 401, "invalid_token");
    expectError(with("Authorization: Bearer \r\n"), 401, "invalid_token");
    expectError(with("Authorization: Bearer " + tokens.refresh + "\r\n"), 401, "invalid_token");
    const std::string good = "Authorization: Bearer " + tokens.access + "\r\n";
    expectError(with(good + good), 400, "bad_request");
    EXPECT_EQ(with(good).status(), 200);
}

} // namespace
} // namespace quorvane::sandbox::test
