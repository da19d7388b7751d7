#include <cstdlib>
#include <optional>

#include "Platform/Native/TransportFixture.h"

namespace quorvane::platform {
namespace {

class NativeTransportWire : public NativeTransportTest {
protected:
    RawServer server{{{.bytes = RawServer::answer(200, "ok")}}};
    const std::string host = "127.0.0.1:" + std::to_string(server.port());
};

TEST_F(NativeTransportWire, AGETIsItsLineItsHeadersAndNothingElse) {
    static_cast<void>(exchange({.url = server.url("/find?near=46.0%2C14.5&q=&q=%20"),
                                .headers = {{"X-Quorvane-B", "1"}, {"Authorization", "Bearer abc"}}}));

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0],
              "GET /find?near=46.0%2C14.5&q=&q=%20 HTTP/1.1\r\n"
              "Host: " +
                  host +
                  "\r\n"
                  "X-Quorvane-B: 1\r\n"
                  "Authorization: Bearer abc\r\n"
                  "Accept-Encoding: identity\r\n"
                  "\r\n");
}

TEST_F(NativeTransportWire, APOSTIsSentInOnePieceWithoutAskingForLeave) {
    static_cast<void>(exchange({.method = "POST",
                                .url = server.url("/token"),
                                .headers = {{"Content-Type", "application/json"}},
                                .body = "{\"code\":\"x\"}"}));

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0],
              "POST /token HTTP/1.1\r\n"
              "Host: " +
                  host +
                  "\r\n"
                  "Content-Type: application/json\r\n"
                  "Accept-Encoding: identity\r\n"
                  "Content-Length: 12\r\n"
                  "\r\n"
                  "{\"code\":\"x\"}");
}

TEST_F(NativeTransportWire, APOSTOfAPhotoAsksForNoLeaveEither) {
    const std::string photo(3'000'000, 'p');

    EXPECT_EQ(status(exchange({.method = "POST", .url = server.url("/photo"), .body = photo})), 200);

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0].find("Expect"), std::string::npos);
    EXPECT_TRUE(server.requests()[0].ends_with("\r\n\r\n" + photo));
}

TEST_F(NativeTransportWire, APOSTWithoutABodySaysSo) {
    static_cast<void>(exchange({.method = "POST", .url = server.url("/")}));

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0], "POST / HTTP/1.1\r\nHost: " + host +
                                        "\r\nAccept-Encoding: identity\r\n"
                                        "Content-Length: 0\r\n\r\n");
}

TEST_F(NativeTransportWire, HeadersOfTheCallersOwnReplaceTheUsualOnes) {
    static_cast<void>(
        exchange({.url = server.url("/"), .headers = {{"accept", "text/plain"}, {"Accept-Encoding", "br"}}}));

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0],
              "GET / HTTP/1.1\r\nHost: " + host + "\r\naccept: text/plain\r\nAccept-Encoding: br\r\n\r\n");
}

TEST_F(NativeTransportWire, APathIsSentAsItIsGiven) {
    for (const char* target : {"/a/../b/./c", "/%2e%2e/%2F", "//double//", "/?", "/a;b=c,d:e@f!$'()*+"}) {
        static_cast<void>(get(server.url(target)));

        EXPECT_TRUE(server.requests().back().starts_with("GET " + std::string(target) + " HTTP/1.1\r\n")) << target;
    }
}

TEST_F(NativeTransportWire, AFragmentIsNotSent) {
    static_cast<void>(get(server.url("/a?b=c#secret")));

    EXPECT_TRUE(server.requests().back().starts_with("GET /a?b=c HTTP/1.1\r\n"));
}

TEST_F(NativeTransportWire, AHeaderThatCannotBeOneIsRefused) {
    const std::vector<std::pair<std::string, std::string>> bad = {
        {"", "1"}, {"X A", "1"}, {"X-A:", "1"}, {"X-\xC3\xA9", "1"}, {"X-A", std::string("a\0b", 3)}};
    for (const auto& header : bad) {
        EXPECT_TRUE(failedAs(exchange({.url = server.url("/"), .headers = {header}}), Kind::invalidRequest));
    }

    EXPECT_TRUE(failedAs(exchange({.method = "GET / HTTP/1.1\r\nX-A: 1\r\n\r\nGET", .url = server.url("/")}),
                         Kind::invalidRequest));
    EXPECT_TRUE(failedAs(get(server.url(std::string("/a\0b", 4))), Kind::invalidRequest));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(NativeTransportWire, ABodyOfAnyLengthIsSentWhole) {
    for (const std::size_t size : {0U, 10U, 65'535U, 65'536U, 500'000U}) {
        const Result result = exchange({.method = "POST", .url = server.url("/"), .body = std::string(size, 'b')});

        ASSERT_EQ(status(result), 200);
        const std::string request = server.requests().back();
        EXPECT_EQ(request.substr(request.find("\r\n\r\n") + 4), std::string(size, 'b')) << size;
    }
}

TEST_F(NativeTransportWire, GETsShareAConnectionAndEachPOSTHasItsOwn) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(status(get(server.url("/"))), 200);
    }
    EXPECT_EQ(server.connections(), 1U);

    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(status(exchange({.method = "POST", .url = server.url("/"), .body = "x"})), 200);
    }
    EXPECT_EQ(server.connections(), 4U);

    EXPECT_EQ(status(get(server.url("/"))), 200);
    EXPECT_EQ(server.connections(), 4U);
}

TEST_F(NativeTransportWire, ClosingLeavesNoConnectionOpen) {
    EXPECT_EQ(status(get(server.url("/"))), 200);

    native->transport().close();

    EXPECT_TRUE(server.waitUntilAllAreClosed());
}

TEST_F(NativeTransportWire, ClosingGivesUpWhatIsInFlight) {
    RawServer silent{{{.bytes = "", .then = Then::hangs}}};
    native->transport().send({.url = silent.url()}, [](const Result&) { FAIL(); });
    EXPECT_TRUE(silent.waitForRequests(1));

    native->transport().close();

    EXPECT_TRUE(silent.waitUntilAllAreClosed());
}

TEST_F(NativeTransportWire, RequestsToAMappedPortOfLoopbackGoToTheOtherPort) {
    launch({.connectTo = {{3000, server.port()}, {4001, server.port()}}});

    EXPECT_EQ(status(get("http://localhost:3000/a")), 200);
    EXPECT_EQ(status(get("http://LOCALHOST:4001/b")), 200);
    EXPECT_EQ(status(get("http://127.0.0.1:3000/c")), 200);
    EXPECT_EQ(status(get("http://[::1]:3000/d")), 200);

    const std::vector<std::string> requests = server.requests();
    ASSERT_EQ(requests.size(), 4U);
    EXPECT_NE(requests[0].find("GET /a HTTP/1.1\r\nHost: localhost:3000\r\n"), std::string::npos);
    EXPECT_NE(requests[3].find("Host: [::1]:3000\r\n"), std::string::npos);
}

TEST_F(NativeTransportWire, NoOtherHostAndPortAreMapped) {
    launch({.connectTo = {{3000, server.port()}}});

    EXPECT_TRUE(failedAs(get("http://unknown.invalid:3000/"), Kind::connection));
    EXPECT_EQ(status(get(server.url("/direct"))), 200);

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_TRUE(server.requests()[0].starts_with("GET /direct "));
}

class NativeTransportProxy : public NativeTransportWire {
protected:
    NativeTransportProxy() { setenv("http_proxy", server.url("").c_str(), 1); }
    ~NativeTransportProxy() override { unsetenv("http_proxy"); }
};

TEST_F(NativeTransportProxy, AProxyOfTheEnvironmentIsUsed) {
    EXPECT_EQ(status(get("http://service.invalid/path?q=1")), 200);

    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_TRUE(server.requests()[0].starts_with("GET http://service.invalid/path?q=1 HTTP/1.1\r\n"));
}

TEST_F(NativeTransportProxy, AnotherServerOfThisMachineIsReachedWithoutTheProxy) {
    RawServer other{{{.bytes = RawServer::answer(201, "")}}};

    EXPECT_EQ(status(get(other.url("/"))), 201);
    EXPECT_EQ(status(get("http://localhost:" + std::to_string(other.port()) + "/")), 201);

    EXPECT_TRUE(server.requests().empty());
}

} // namespace
} // namespace quorvane::platform
