#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "sandbox/RawClient.h"
#include "sandbox/Sandbox.h"

namespace quorvane::sandbox::test {

/// The example of RFC 7636, appendix B.
constexpr auto verifier = "dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk";
constexpr auto challenge = "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM";

struct Tokens {
    std::string access;
    std::string refresh;
};

/// A sandbox on free ports whose clock stands still, and the requests of a client, written out byte by byte.
class SandboxTest : public ::testing::Test {
protected:
    void startWith(SandboxOptions options) {
        options.now = [this] { return now.load(); };
        auto started = Sandbox::start(std::move(options));
        ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Sandbox>>(started)) << std::get<std::string>(started);
        sandbox = std::get<0>(std::move(started));
    }

    void SetUp() override { startWith({}); }

    void advance(std::chrono::milliseconds time) { now = now.load() + time; }

    [[nodiscard]] RawReply get(const std::string& target, const std::string& token) const {
        return ask(sandbox->dataPort(),
                   "GET " + target + " HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer " + token + "\r\n\r\n");
    }

    [[nodiscard]] RawReply authorize(const std::string& query) const {
        return ask(sandbox->identityPort(), "GET /authorize?" + query + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
    }

    [[nodiscard]] static std::string tokenRequest(const std::string& body) {
        return "POST /token HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\nContent-Length: " +
               std::to_string(body.size()) + "\r\n\r\n" + body;
    }

    [[nodiscard]] RawReply token(const std::string& body) const {
        return ask(sandbox->identityPort(), tokenRequest(body));
    }

    static std::string authorizeQuery() {
        return "client_id=key&code_challenge_method=S256&code_challenge=" + std::string(challenge) +
               "&redirect_uri=myApp%3A%2F%2Fcallback&response_type=code&scope=openid&state=1A2B3C4D&user_id=user";
    }

    [[nodiscard]] std::string newCode() const { return field(authorize(authorizeQuery()), "code"); }

    static std::string codeBody(const std::string& code, const std::string& proof = verifier,
                                const std::string& client = "key", const std::string& redirect = "myApp://callback") {
        return R"({"client_id":")" + client + R"(","code":")" + code + R"(","code_verifier":")" + proof +
               R"(","grant_type":"authorization_code","redirect_uri":")" + redirect + "\"}";
    }

    static std::string refreshBody(const std::string& refresh, const std::string& client = "key") {
        return R"({"client_id":")" + client + R"(","grant_type":"refresh_token","refresh_token":")" + refresh + "\"}";
    }

    [[nodiscard]] Tokens signIn() const { return tokensOf(token(codeBody(newCode()))); }

    static Tokens tokensOf(const RawReply& reply) {
        return {.access = field(reply, "access_token"), .refresh = field(reply, "refresh_token")};
    }

    /// A text of the answer's object; empty when there is none.
    static std::string field(const RawReply& reply, const std::string& name) {
        const auto dictionary = json::Document::parse(reply.body()).dictionary();
        const auto value = dictionary ? dictionary->value(name) : std::nullopt;
        const auto* text = value ? std::get_if<std::string>(&value->value) : nullptr;
        return text == nullptr ? "" : *text;
    }

    /// Checks that @p reply is an error in the one form that errors have.
    static void expectError(const RawReply& reply, int status, const std::string& error) {
        EXPECT_EQ(reply.status(), status) << reply.bytes;
        EXPECT_EQ(reply.header("Content-Type"), "application/json");
        ASSERT_FALSE(reply.body().empty()) << reply.bytes;
        EXPECT_EQ(field(reply, "error"), error) << reply.bytes;
        EXPECT_NE(field(reply, "error_description"), "");
    }

    static Fault fault(const std::string& text) { return std::get<Fault>(Fault::parse(text)); }

    std::atomic<std::chrono::system_clock::time_point> now{std::chrono::sys_days{std::chrono::year(2026) / 3 / 1}};
    std::unique_ptr<Sandbox> sandbox;
};

constexpr auto configTarget = "/config?deviceId=d&installId=i&userId=u";

} // namespace quorvane::sandbox::test
