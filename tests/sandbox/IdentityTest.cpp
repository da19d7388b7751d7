#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using namespace std::chrono_literals;

class IdentityTest : public SandboxTest {};

/// The usual authorize query with one parameter replaced, or left out when @p value is null.
std::string queryWith(const std::string& query, const std::string& name, const char* value) {
    const auto begin = ("&" + query).find("&" + name + "=");
    const auto end = std::min(query.find('&', begin), query.size());
    return query.substr(0, begin) + (value == nullptr ? "x=y" : name + "=" + value) + query.substr(end);
}

TEST_F(IdentityTest, TheExampleOfTheStandardSignsIn) {
    const RawReply authorized = ask(
        sandbox->identityPort(),
        "GET "
        "/authorize?client_id=key&code_challenge_method=S256&code_challenge=E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"
        "&redirect_uri=myApp://callback&response_type=code&scope=openid&state=1A2B3C4D&user_id=u%20%C3%A9 HTTP/1.1\r\n"
        "Host: localhost:4001\r\nAccept: application/json\r\nContent-Type: application/json\r\n\r\n");
    EXPECT_EQ(authorized.status(), 200);
    EXPECT_THAT(authorized.body(), MatchesRegex(R"(\{"code":"[-_A-Za-z0-9]{43}","state":"1A2B3C4D"\})"));

    const std::string body = R"({
  "client_id" : "key",
  "code" : ")" + field(authorized, "code") +
                             R"(",
  "code_verifier" : "dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk",
  "grant_type" : "authorization_code",
  "redirect_uri" : "myApp:\/\/callback"
})";
    const RawReply granted = ask(sandbox->identityPort(),
                                 "POST /token HTTP/1.1\r\nHost: localhost:4001\r\nContent-Type: application/json\r\n"
                                 "Content-Length: " +
                                     std::to_string(body.size()) + "\r\n\r\n" + body);

    EXPECT_EQ(granted.status(), 200);
    EXPECT_THAT(granted.body(),
                MatchesRegex(R"(\{"access_token":"[-_A-Za-z0-9]{43}","expires_in":"3600","id_token":"[^"]+",)"
                             R"("refresh_token":"[-_A-Za-z0-9]{43}","session_state":"[^"]+","token_type":"Bearer"\})"));
    EXPECT_EQ(get(configTarget, field(granted, "access_token")).status(), 200);
}

TEST_F(IdentityTest, EveryParameterOfAuthorizeIsNeeded) {
    for (const char* name : {"client_id", "code_challenge_method", "code_challenge", "redirect_uri", "response_type",
                             "scope", "state", "user_id"}) {
        const RawReply missing = authorize(queryWith(authorizeQuery(), name, nullptr));
        expectError(missing, 400, "invalid_request");
        EXPECT_THAT(missing.body(), HasSubstr("\\\"" + std::string(name) + "\\\" is missing"));
        expectError(authorize(queryWith(authorizeQuery(), name, "")), 400, "invalid_request");
        expectError(authorize(authorizeQuery() + "&" + name + "=again"), 400, "invalid_request");
    }
}

TEST_F(IdentityTest, EveryParameterOfAuthorizeHasItsForm) {
    const auto with = [&](const char* name, const char* value) {
        return authorize(queryWith(authorizeQuery(), name, value));
    };
    expectError(with("response_type", "token"), 400, "unsupported_response_type");
    expectError(with("scope", "email"), 400, "invalid_scope");
    expectError(with("code_challenge_method", "plain"), 400, "invalid_request");
    expectError(with("code_challenge", "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-c"), 400, "invalid_request");
    expectError(with("code_challenge", "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw%2FcM"), 400, "invalid_request");
    expectError(with("redirect_uri", "callback"), 400, "invalid_request");
    expectError(with("redirect_uri", "myApp%3A"), 400, "invalid_request");
    expectError(with("redirect_uri", "myApp%3A%2F%2Fcallback%23part"), 400, "invalid_request");
    expectError(with("redirect_uri", "my%20App%3A%2F%2Fcallback"), 400, "invalid_request");
    expectError(with("state", "a%0Ab"), 400, "invalid_request");
    expectError(with("user_id", std::string(1025, 'u').c_str()), 400, "invalid_request");
    EXPECT_EQ(with("user_id", std::string(1024, 'u').c_str()).status(), 200);
}

TEST_F(IdentityTest, AnotherVerifierIsRefused) {
    expectError(token(codeBody(newCode(), "dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXj")), 400, "invalid_grant");
}

TEST_F(IdentityTest, AVerifierHasFrom43To171UnreservedCharacters) {
    expectError(token(codeBody(newCode(), std::string(42, 'a'))), 400, "invalid_request");
    expectError(token(codeBody(newCode(), std::string(43, 'a'))), 400, "invalid_grant");
    expectError(token(codeBody(newCode(), std::string(171, 'a'))), 400, "invalid_grant");
    expectError(token(codeBody(newCode(), std::string(172, 'a'))), 400, "invalid_request");
    expectError(token(codeBody(newCode(), std::string(42, 'a') + "+")), 400, "invalid_request");
    expectError(token(codeBody(newCode(), std::string(42, 'a') + "~")), 400, "invalid_grant");
}

TEST_F(IdentityTest, AVerifierOf171CharactersIsVerified) {
    // The SHA-256 of 171 times "a", made with another program.
    const auto longChallenge = "R7QVMM_3tIEFlZQ4xzNTT7fQldbyaI3_bSPUZCzXlmk";
    const std::string code = field(authorize(queryWith(authorizeQuery(), "code_challenge", longChallenge)), "code");

    EXPECT_EQ(token(codeBody(code, std::string(171, 'a'))).status(), 200);
}

TEST_F(IdentityTest, ACodeWorksOnce) {
    const std::string code = newCode();
    EXPECT_EQ(token(codeBody(code)).status(), 200);
    expectError(token(codeBody(code)), 400, "invalid_grant");
}

TEST_F(IdentityTest, AFailedAttemptUsesTheCodeUp) {
    const std::string code = newCode();
    expectError(token(codeBody(code, std::string(43, 'a'))), 400, "invalid_grant");
    expectError(token(codeBody(code)), 400, "invalid_grant");
}

TEST_F(IdentityTest, ACodeIsBoundToItsClientAndRedirect) {
    expectError(token(codeBody(newCode(), verifier, "other")), 400, "invalid_grant");
    expectError(token(codeBody(newCode(), verifier, "key", "otherApp://callback")), 400, "invalid_grant");
    expectError(token(codeBody("unknown")), 400, "invalid_grant");
}

TEST_F(IdentityTest, ACodeWorksForSixtySeconds) {
    const std::string code = newCode();
    const std::string lateCode = newCode();

    advance(60s - 1ms);
    EXPECT_EQ(token(codeBody(code)).status(), 200);
    advance(1ms);
    expectError(token(codeBody(lateCode)), 400, "invalid_grant");
}

TEST_F(IdentityTest, TheTimeOfACodeCanBeSet) {
    startWith({.codeLifetime = 5s});
    const std::string code = newCode();

    advance(5s);

    expectError(token(codeBody(code)), 400, "invalid_grant");
}

TEST_F(IdentityTest, EveryFieldOfATokenRequestIsNeededAsText) {
    for (const char* name : {"client_id", "code", "code_verifier", "grant_type", "redirect_uri"}) {
        std::string body = codeBody(newCode());
        const auto key = body.find("\"" + std::string(name) + "\"");
        expectError(token(body.substr(0, key + 1) + "x" + body.substr(key + 1)), 400, "invalid_request");
        const auto colon = body.find(':', key);
        const auto value = body.find('"', colon);
        const auto end = body.find('"', value + 1) + 1;
        expectError(token(body.substr(0, value) + "17" + body.substr(end)), 400, "invalid_request");
        expectError(token(body.substr(0, value) + "\"\"" + body.substr(end)), 400, "invalid_request");
        expectError(token(body.substr(0, value) + "null" + body.substr(end)), 400, "invalid_request");
    }
    expectError(token(R"({"client_id":"key","grant_type":"refresh_token"})"), 400, "invalid_request");
    expectError(token(R"({"client_id":"key","grant_type":"password"})"), 400, "unsupported_grant_type");
}

TEST_F(IdentityTest, ABodyThatIsNoJSONObjectIsRefused) {
    for (const char* body :
         {"", "{", "[]", "17", "\"text\"", "grant_type=refresh_token", "{\"grant_type\":\"\xff\"}"}) {
        expectError(token(body), 400, "invalid_request");
    }
}

TEST_F(IdentityTest, ABodyOfAnotherTypeIsRefused) {
    expectError(ask(sandbox->identityPort(),
                    "POST /token HTTP/1.1\r\nContent-Type: application/x-www-form-urlencoded\r\n"
                    "Content-Length: 3\r\n\r\na=b"),
                415, "unsupported_media_type");
    expectError(ask(sandbox->identityPort(),
                    "POST /token HTTP/1.1\r\nContent-Type: application/json\r\nContent-Encoding: gzip\r\n"
                    "Content-Length: 2\r\n\r\n{}"),
                415, "unsupported_media_type");
    expectError(ask(sandbox->identityPort(),
                    "POST /token HTTP/1.1\r\nContent-Type: application/json; charset=utf-8\r\n"
                    "Content-Length: 2\r\n\r\n{}"),
                400, "invalid_request");
}

} // namespace
} // namespace quorvane::sandbox::test
