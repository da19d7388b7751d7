#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "Platform/Native/TransportFixture.h"

namespace quorvane::platform {
namespace {

using std::chrono::milliseconds;

class NativeTransportFaults : public NativeTransportTest {
protected:
    /// What a GET gets from a server that sends @p bytes and closes.
    Result answeredWith(const std::string& bytes) {
        RawServer server{{{.bytes = bytes, .then = Then::closes}}};
        return get(server.url());
    }
};

TEST_F(NativeTransportFaults, EveryPlaceAtWhichAnAnswerCanBeCutIsAnError) {
    const std::string whole = RawServer::answer(200, "{\"a\":1}", {{"Content-Type", "application/json"}});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_TRUE(failedAs(answeredWith(whole.substr(0, length)), Kind::truncated)) << length;
    }

    EXPECT_EQ(body(answeredWith(whole)), "{\"a\":1}");
}

TEST_F(NativeTransportFaults, EveryPlaceAtWhichAChunkedAnswerCanBeCutIsAnError) {
    const std::string whole = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n";
    for (std::size_t length = whole.find("3\r\n"); length < whole.size() - 2; ++length) {
        EXPECT_TRUE(failedAs(answeredWith(whole.substr(0, length)), Kind::truncated)) << length;
    }

    EXPECT_EQ(body(answeredWith(whole)), "abcde");
}

TEST_F(NativeTransportFaults, EveryPlaceAtWhichAPOSTsAnswerCanBeCutIsAnErrorAndSentOnce) {
    const std::string whole = RawServer::answer(200, "{}");
    std::size_t next = 0;
    RawServer server(
        [&](const std::string&) { return RawAnswer{.bytes = whole.substr(0, next++), .then = Then::closes}; });
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_TRUE(failedAs(exchange({.method = "POST", .url = server.url(), .body = "x"}), Kind::truncated))
            << length;
    }

    EXPECT_EQ(server.requests().size(), whole.size());
}

TEST_F(NativeTransportFaults, AnAnswerThatEndsWithItsConnectionIsWhole) {
    EXPECT_EQ(body(answeredWith("HTTP/1.1 200 OK\r\n\r\nto the end")), "to the end");
    EXPECT_EQ(body(answeredWith("HTTP/1.0 200\r\n\r\nold")), "old");
    EXPECT_EQ(body(answeredWith("HTTP/1.1 200 OK\nContent-Length: 2\n\nab")), "ab");
}

TEST_F(NativeTransportFaults, AResetInTheMiddleOfABodyIsATruncatedAnswer) {
    RawServer server{{{.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf", .then = Then::resets}}};

    EXPECT_TRUE(failedAs(get(server.url()), Kind::truncated));
}

TEST_F(NativeTransportFaults, AnInterimAnswerIsNotTheAnswer) {
    EXPECT_EQ(status(answeredWith("HTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\n" + RawServer::answer(404, "none"))),
              404);
    EXPECT_TRUE(failedAs(answeredWith("HTTP/1.1 103 Early Hints\r\n\r\n"), Kind::truncated));
    EXPECT_TRUE(failedAs(answeredWith("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Len"), Kind::truncated));
}

TEST_F(NativeTransportFaults, WhatIsNoHTTPIsNoAnswer) {
    for (const char* bytes :
         {"SSH-2.0-server\r\n", "\r\n\r\n", "HTTP/1.1\r\n\r\n", "HTTP/9.9 200 OK\r\n\r\n", "{\"a\":1}"}) {
        EXPECT_TRUE(failedAs(answeredWith(bytes), Kind::truncated)) << bytes;
    }
}

TEST_F(NativeTransportFaults, ALengthThatIsNoNumberIsNoAnswer) {
    EXPECT_TRUE(failedAs(answeredWith("HTTP/1.1 200 OK\r\nContent-Length: x\r\n\r\nab"), Kind::truncated));
}

TEST_F(NativeTransportFaults, HeadersWithoutEndAreRefused) {
    EXPECT_TRUE(failedAs(answeredWith("HTTP/1.1 200 OK\r\nX: " + std::string(2'000'000, 'x')), Kind::tooLarge));
    std::string many = "HTTP/1.1 200 OK\r\n";
    for (int i = 0; i < 10'000; ++i) {
        many += "X-Header: " + std::string(50, 'x') + "\r\n";
    }
    EXPECT_TRUE(failedAs(answeredWith(many), Kind::tooLarge));
}

TEST_F(NativeTransportFaults, ABodyWithoutEndIsRefusedOnceItIsTooLarge) {
    std::string chunks = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    const std::string chunk = "100000\r\n" + std::string(0x100000, 'x') + "\r\n";
    for (int i = 0; i < 65; ++i) {
        chunks += chunk;
    }

    EXPECT_TRUE(failedAs(answeredWith(chunks), Kind::tooLarge));
}

TEST_F(NativeTransportFaults, AnAnnouncedLengthThatIsNeverSentTakesNoMemory) {
    EXPECT_TRUE(failedAs(answeredWith("HTTP/1.1 200 OK\r\nContent-Length: 67108864\r\n\r\nx"), Kind::truncated));
    EXPECT_TRUE(
        failedAs(answeredWith("HTTP/1.1 200 OK\r\nContent-Length: 9000000000000000000\r\n\r\nx"), Kind::tooLarge));
}

TEST_F(NativeTransportFaults, TheTimeoutIsForTheWholeExchangeHoweverSteadilyBytesArrive) {
    RawServer server{{{.bytes = RawServer::answer(200, std::string(10'000, 'x')), .pauseAfterByte = milliseconds(5)}}};
    const auto started = std::chrono::steady_clock::now();

    EXPECT_TRUE(failedAs(exchange({.url = server.url(), .timeout = milliseconds(150)}), Kind::timedOut));

    EXPECT_GE(std::chrono::steady_clock::now() - started, milliseconds(150));
}

TEST_F(NativeTransportFaults, AnAnswerWithinTheTimeoutIsOne) {
    RawServer server{{{.bytes = RawServer::answer(200, "late"), .delay = milliseconds(50)}}};

    EXPECT_EQ(body(exchange({.url = server.url(), .timeout = std::chrono::seconds(10)})), "late");
}

TEST_F(NativeTransportFaults, NoTimeAtAllIsATimeout) {
    RawServer server{{{.bytes = "", .then = Then::hangs}}};

    EXPECT_TRUE(failedAs(exchange({.url = server.url(), .timeout = milliseconds(0)}), Kind::timedOut));
}

TEST_F(NativeTransportFaults, AnUnknownNameIsAConnectionError) {
    EXPECT_TRUE(failedAs(get("http://host.quorvane.invalid/"), Kind::connection));
}

TEST_F(NativeTransportFaults, AGETOnAConnectionThatHasDiedMeanwhileIsAnsweredOnANewOne) {
    RawServer server{
        {{.bytes = RawServer::answer(200, "1"), .then = Then::closes}, {.bytes = RawServer::answer(200, "2")}}};
    EXPECT_EQ(body(get(server.url())), "1");
    EXPECT_TRUE(server.waitUntilAllAreClosed());

    EXPECT_EQ(body(get(server.url())), "2");
}

TEST_F(NativeTransportFaults, APOSTIsNeverSentOnAConnectionThatWasUsedBefore) {
    // The connection looks alive; the server drops it as soon as the next request arrives on it.
    RawServer server([](const std::string& request) {
        return request.starts_with("GET") ? RawAnswer{.bytes = RawServer::answer(200, "")}
                                          : RawAnswer{.bytes = "", .then = Then::closes};
    });
    EXPECT_EQ(status(get(server.url())), 200);

    EXPECT_TRUE(failedAs(exchange({.method = "POST", .url = server.url(), .body = "once"}), Kind::truncated));

    EXPECT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(server.connections(), 2U);
}

TEST_F(NativeTransportFaults, ABodyIsFollowedBySpareMemoryForAParser) {
    for (const std::size_t size : {1U, 15U, 64U, 1000U, 16'384U, 70'000U, 3'000'000U}) {
        RawServer server{{{.bytes = RawServer::answer(200, std::string(size, 'x'))}}};

        const Result result = get(server.url());

        ASSERT_EQ(status(result), 200);
        const std::string& text = std::get<HTTPResponse>(result).body;
        EXPECT_EQ(text.size(), size);
        EXPECT_GE(text.capacity() - text.size(), 64U) << size;
    }
}

TEST_F(NativeTransportFaults, AHundredExchangesAtOnceWithFaultsAmongThemEachCompleteOnce) {
    RawServer server([](const std::string& request) {
        const std::size_t number = std::strtoul(request.c_str() + request.find('/') + 1, nullptr, 10);
        const std::string whole = RawServer::answer(200, std::to_string(number));
        switch (number % 4) {
            case 0:
                return RawAnswer{.bytes = whole};
            case 1:
                return RawAnswer{.bytes = whole.substr(0, whole.size() - 1), .then = Then::closes};
            case 2:
                return RawAnswer{.bytes = "", .then = Then::resets};
            default:
                return RawAnswer{.bytes = whole, .delay = milliseconds(10)};
        }
    });
    std::vector<int> completions(100, 0);
    std::size_t answers = 0;

    for (std::size_t i = 0; i < 100; ++i) {
        native->transport().send({.method = "POST", .url = server.url("/" + std::to_string(i)), .body = "x"},
                                 [&, i](const Result& result) {
                                     ++completions[i];
                                     answers += body(result) == std::to_string(i) ? 1U : 0U;
                                 });
    }

    EXPECT_TRUE(runUntil([&] { return std::count(completions.begin(), completions.end(), 1) == 100; }));
    EXPECT_EQ(answers, 50U);
    EXPECT_EQ(server.requests().size(), 100U);
}

} // namespace
} // namespace quorvane::platform
