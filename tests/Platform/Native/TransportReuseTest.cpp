#include <cstdlib>

#include "Platform/Native/TransportFixture.h"

namespace quorvane::platform {
namespace {

/// One request after the other, as what is set up for one serves the next.
class NativeTransportReuse : public NativeTransportTest {
protected:
    [[nodiscard]] std::string lastRequest() const {
        const auto requests = server.requests();
        return requests.empty() ? std::string() : requests.back();
    }
    [[nodiscard]] bool lastHas(const std::string& text) const { return lastRequest().find(text) != std::string::npos; }

    RawServer server{{{.bytes = RawServer::answer(200, "ok")}}};
};

TEST_F(NativeTransportReuse, EachRequestHasItsOwnHeaders) {
    const HTTPRequest first{.url = server.url("/"), .headers = {{"A", "1"}}};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(status(exchange(first)), 200);
        EXPECT_TRUE(lastHas("\r\nA: 1\r\n"));
    }

    EXPECT_EQ(status(exchange({.url = server.url("/"), .headers = {{"A", "2"}, {"B", "3"}}})), 200);
    EXPECT_TRUE(lastHas("\r\nA: 2\r\nB: 3\r\n"));
    EXPECT_FALSE(lastHas("A: 1"));

    EXPECT_EQ(status(get(server.url("/"))), 200);
    EXPECT_FALSE(lastHas("A: "));

    EXPECT_EQ(status(exchange(first)), 200);
    EXPECT_TRUE(lastHas("\r\nA: 1\r\n"));
}

TEST_F(NativeTransportReuse, EachRequestHasItsOwnMethodAndBody) {
    const auto line = [this] { return lastRequest().substr(0, lastRequest().find(' ')); };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(status(get(server.url("/"))), 200);
        EXPECT_EQ(line(), "GET");
        EXPECT_FALSE(lastHas("Content-Length"));

        EXPECT_EQ(status(exchange({.method = "POST", .url = server.url("/"), .body = "posted"})), 200);
        EXPECT_EQ(line(), "POST");
        EXPECT_TRUE(lastHas("posted"));

        EXPECT_EQ(status(exchange({.method = "DELETE", .url = server.url("/")})), 200);
        EXPECT_EQ(line(), "DELETE");
        EXPECT_FALSE(lastHas("posted"));

        EXPECT_EQ(status(exchange({.method = "GET", .url = server.url("/"), .body = "asked"})), 200);
        EXPECT_EQ(line(), "GET");
        EXPECT_TRUE(lastHas("asked"));
    }
}

TEST_F(NativeTransportReuse, EachRequestHasItsOwnTarget) {
    for (int i = 0; i < 2; ++i) {
        for (const auto& [address, target] :
             {std::pair("/a?b=1", "/a?b=1"), std::pair("/c#d", "/c"), std::pair("?e", "/?e"),
              std::pair("?f=/a", "/?f=/a"), std::pair("#g/a", "/"), std::pair("", "/"),
              std::pair("/?h=://i/j", "/?h=://i/j")}) {
            EXPECT_EQ(status(get(server.url(address))), 200);
            EXPECT_TRUE(lastRequest().starts_with("GET " + std::string(target) + " HTTP/1.1\r\n")) << address;
        }
    }
}

TEST_F(NativeTransportReuse, ANameAndAPasswordInAnAddressAreThatRequestsOnly) {
    const std::string host = server.url("").substr(std::string("http://").size());
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(status(get("http://rider:secret@" + host + "/a")), 200);
        EXPECT_TRUE(lastHas("\r\nAuthorization: Basic cmlkZXI6c2VjcmV0\r\n"));

        EXPECT_EQ(status(get(server.url("/a"))), 200);
        EXPECT_FALSE(lastHas("Authorization"));
    }
}

TEST_F(NativeTransportReuse, EachRequestHasItsOwnTimeout) {
    RawServer silent{{{.bytes = "", .then = Then::hangs}}};

    EXPECT_EQ(status(get(server.url("/"))), 200);
    EXPECT_TRUE(failedAs(exchange({.url = silent.url("/"), .timeout = std::chrono::milliseconds(30)}), Kind::timedOut));
    EXPECT_EQ(status(get(server.url("/"))), 200);
}

TEST_F(NativeTransportReuse, AFailureLeavesNothingForTheNextRequest) {
    RawServer faulty{{{.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nab", .then = Then::closes},
                      {.bytes = RawServer::answer(200, "whole")}}};

    EXPECT_TRUE(failedAs(get(faulty.url("/")), Kind::truncated));
    EXPECT_EQ(body(get(faulty.url("/"))), "whole");
    EXPECT_EQ(body(get(server.url("/"))), "ok");
}

TEST_F(NativeTransportReuse, TheRouteIsThatOfEachRequest) {
    RawServer proxy{{{.bytes = RawServer::answer(201, "")}}};
    setenv("http_proxy", proxy.url("").c_str(), 1);
    launch({.connectTo = {{3000, server.port()}}});

    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(status(get("http://localhost:3000/mapped")), 200);
        EXPECT_EQ(status(get("http://service.invalid/proxied")), 201);
        EXPECT_EQ(status(get(server.url("/direct"))), 200);
    }
    unsetenv("http_proxy");

    EXPECT_EQ(proxy.requests().size(), 2U);
    EXPECT_EQ(server.requests().size(), 4U);
}

TEST_F(NativeTransportReuse, AnAddressIsCheckedEachTime) {
    EXPECT_EQ(status(get(server.url("/good"))), 200);
    for (const char* const bad : {"/a b", "/a\nb", "/\x01"}) {
        EXPECT_TRUE(failedAs(get(server.url(bad)), Kind::invalidRequest));
    }
    EXPECT_TRUE(failedAs(get(server.url("") + "0000/x"), Kind::invalidRequest));
    EXPECT_EQ(status(get(server.url("/good?again"))), 200);
    EXPECT_EQ(server.requests().size(), 2U);
}

TEST_F(NativeTransportReuse, ARequestThatIsSentByACompletionIsAnswered) {
    int answers = 0;
    std::function<void(Result)> again = [&](const Result& result) {
        EXPECT_EQ(status(result), 200);
        if (++answers < 300) {
            native->transport().send({.url = server.url("/")}, again);
        }
    };
    native->transport().send({.url = server.url("/")}, again);

    EXPECT_TRUE(runUntil([&] { return answers == 300; }));
    EXPECT_EQ(server.connections(), 1U);
}

TEST_F(NativeTransportReuse, RequestsThatComeWhileOthersAreUnderWayAreAnswered) {
    int answers = 0;
    for (int i = 0; i < 200; ++i) {
        native->transport().send({.url = server.url("/")}, [&](const Result& result) {
            EXPECT_EQ(status(result), 200);
            ++answers;
        });
        if (i % 7 == 0) {
            EXPECT_TRUE(runUntil([&] { return answers > i / 2; }));
        }
    }

    EXPECT_TRUE(runUntil([&] { return answers == 200; }));
}

} // namespace
} // namespace quorvane::platform
