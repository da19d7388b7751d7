#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Platform/HTTPTransport.h"
#include "Platform/MainQueue.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class HTTPTransportContract : public Contract {
protected:
    [[nodiscard]] HTTPTransport& transport() { return platform().transport(); }

    /// Sends and waits. The result of the only completion.
    HTTPTransport::Result exchange(HTTPRequest request) {
        std::vector<HTTPTransport::Result> results;
        transport().send(std::move(request),
                         [&](HTTPTransport::Result result) { results.push_back(std::move(result)); });
        EXPECT_TRUE(rig->runUntil([&] { return !results.empty(); })) << "no completion";
        rig->pass(std::chrono::milliseconds(1));
        EXPECT_EQ(results.size(), 1U) << "more than one completion";
        return results.empty() ? HTTPTransport::Result(TransportError{.message = "no completion"})
                               : std::move(results.front());
    }

    HTTPTransport::Result get(const std::string& url) { return exchange(HTTPRequest{.url = url}); }

    /// The answer to a GET from a server that answers once with @p answer.
    HTTPTransport::Result answerTo(Answer answer) { return get(rig->serve({std::move(answer)}) + "/"); }

    static void expectError(const HTTPTransport::Result& result, TransportError::Kind kind) {
        const auto* error = std::get_if<TransportError>(&result);
        ASSERT_NE(error, nullptr) << "status " << std::get<HTTPResponse>(result).status;
        EXPECT_EQ(static_cast<int>(error->kind), static_cast<int>(kind)) << error->message;
        EXPECT_FALSE(error->message.empty());
        EXPECT_EQ(error->message.find('\n'), std::string::npos);
    }

    static void expectAnswer(const HTTPTransport::Result& result, int status, const std::string& body) {
        if (const auto* error = std::get_if<TransportError>(&result)) {
            FAIL() << error->message;
        }
        EXPECT_EQ(std::get<HTTPResponse>(result).status, status);
        EXPECT_TRUE(std::get<HTTPResponse>(result).body == body)
            << std::get<HTTPResponse>(result).body.substr(0, 200) << " (" << std::get<HTTPResponse>(result).body.size()
            << " bytes)";
    }

    static std::optional<std::string> header(const Received& received, const std::string& name) {
        for (const auto& [key, value] : received.headers) {
            if (key == name) {
                return value;
            }
        }
        return std::nullopt;
    }
};

TEST_P(HTTPTransportContract, HandsBackStatusAndBody) {
    expectAnswer(answerTo({.status = 200, .body = "{\"a\":1}"}), 200, "{\"a\":1}");
}

TEST_P(HTTPTransportContract, AnyStatusOfThreeDigitsIsAnAnswer) {
    const std::vector<int> statuses = {200, 201, 204, 299, 304, 400, 401, 404, 429, 500, 503, 599, 600, 999};
    std::vector<Answer> answers;
    for (const int status : statuses) {
        answers.push_back({.status = status});
    }
    const std::string url = rig->serve(answers);

    for (const int status : statuses) {
        SCOPED_TRACE(status);
        expectAnswer(get(url + "/"), status, "");
    }
}

TEST_P(HTTPTransportContract, HandsBackARedirectInsteadOfFollowingIt) {
    const std::vector<int> statuses = {301, 302, 303, 307, 308};
    std::vector<Answer> answers;
    for (const int status : statuses) {
        answers.push_back({.status = status, .headers = {{"Location", "/elsewhere"}}, .body = "moved"});
    }
    const std::string url = rig->serve(answers);

    for (const int status : statuses) {
        expectAnswer(get(url + "/start"), status, "moved");
    }

    const std::vector<Received> all = rig->received();
    ASSERT_EQ(all.size(), statuses.size());
    for (const Received& received : all) {
        EXPECT_EQ(received.target, "/start");
    }
}

TEST_P(HTTPTransportContract, ABodyIsHandedBackByteForByte) {
    std::string body;
    for (int i = 0; i < 100'000; ++i) {
        body += static_cast<char>(i % 251);
    }

    expectAnswer(answerTo({.status = 200, .body = body}), 200, body);
}

TEST_P(HTTPTransportContract, SendReturnsBeforeTheCompletionRunsOnTheMainThread) {
    const std::string url = rig->serve({{.status = 200}});
    bool returned = false;
    bool ran = false;

    transport().send(HTTPRequest{.url = url + "/"}, [&](const HTTPTransport::Result&) {
        EXPECT_TRUE(returned);
        EXPECT_TRUE(platform().mainQueue().isMainThread());
        ran = true;
    });
    returned = true;

    EXPECT_TRUE(rig->runUntil([&] { return ran; }));
}

TEST_P(HTTPTransportContract, ARefusedRequestCompletesAfterSendReturnsToo) {
    bool returned = false;
    bool ran = false;

    transport().send(HTTPRequest{.url = "not an address"}, [&](const HTTPTransport::Result& result) {
        EXPECT_TRUE(returned);
        EXPECT_TRUE(platform().mainQueue().isMainThread());
        expectError(result, TransportError::Kind::invalidRequest);
        ran = true;
    });
    returned = true;

    EXPECT_TRUE(rig->runUntil([&] { return ran; }));
}

TEST_P(HTTPTransportContract, MethodTargetHeadersAndBodyArriveAsGiven) {
    const std::string url = rig->serve({{.status = 200}});
    const std::string target = "/a/b%2Fc/..%2F?q=caf%C3%A9%20%2B%26%25&empty=&q=2";

    const HTTPTransport::Result result = exchange({.method = "POST",
                                                   .url = url + target,
                                                   .headers = {{"Content-Type", "application/json"},
                                                               {"X-Text",
                                                                "Gr\xC3\xBC\xC3\x9F"
                                                                "e, \"quoted\"; a=b"},
                                                               {"X-Empty", ""}},
                                                   .body = std::string("{\"a\":\"\0\r\n\"}", 11)});

    expectAnswer(result, 200, "");
    ASSERT_EQ(rig->received().size(), 1U);
    const Received received = rig->received()[0];
    EXPECT_EQ(received.method, "POST");
    EXPECT_EQ(received.target, target);
    EXPECT_EQ(received.body, std::string("{\"a\":\"\0\r\n\"}", 11));
    EXPECT_EQ(header(received, "Content-Type"), "application/json");
    EXPECT_EQ(header(received, "X-Text"),
              "Gr\xC3\xBC\xC3\x9F"
              "e, \"quoted\"; a=b");
    EXPECT_EQ(header(received, "X-Empty"), "");
}

TEST_P(HTTPTransportContract, HeadersArriveInTheOrderGiven) {
    const std::string url = rig->serve({{.status = 200}});

    static_cast<void>(exchange({.url = url + "/", .headers = {{"X-B", "1"}, {"X-A", "2"}, {"X-C", "3"}}}));

    const std::vector<Received> received = rig->received();
    ASSERT_EQ(received.size(), 1U);
    std::vector<std::string> names;
    for (const auto& [name, value] : received[0].headers) {
        if (name.starts_with("X-")) {
            names.push_back(name);
        }
    }
    EXPECT_EQ(names, (std::vector<std::string>{"X-B", "X-A", "X-C"}));
}

TEST_P(HTTPTransportContract, EachMethodArrives) {
    const std::string url = rig->serve({{.status = 200}});
    const std::vector<std::string> methods = {"GET", "POST", "PUT", "DELETE"};

    for (const std::string& method : methods) {
        expectAnswer(exchange({.method = method, .url = url + "/"}), 200, "");
        expectAnswer(exchange({.method = method, .url = url + "/", .body = "content"}), 200, "");
    }

    const std::vector<Received> received = rig->received();
    ASSERT_EQ(received.size(), 8U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(received[2 * i].method, methods[i]);
        EXPECT_EQ(received[2 * i].body, "");
        EXPECT_EQ(received[2 * i + 1].method, methods[i]);
        EXPECT_EQ(received[2 * i + 1].body, "content");
    }
}

TEST_P(HTTPTransportContract, ALineBreakInAHeaderIsRefusedAndNothingIsSent) {
    const std::string url = rig->serve({{.status = 200}});
    const std::vector<std::pair<std::string, std::string>> broken = {
        {"X-A", "1\r\nX-Injected: 2"}, {"X-A", "1\n"}, {"X-A", "\r"}, {"X-A\r\nX-Injected", "1"}, {"X-A\n", ""}};

    for (const auto& header : broken) {
        expectError(exchange({.url = url + "/", .headers = {{"X-Good", "1"}, header}}),
                    TransportError::Kind::invalidRequest);
    }

    EXPECT_TRUE(rig->received().empty());
}

TEST_P(HTTPTransportContract, AnAddressThatIsNoneIsRefused) {
    for (const char* url : {"", "not an address", "/path", "ftp://127.0.0.1/", "file:///etc/passwd",
                            "http://127.0.0.1/\r\nX-Injected: 1", "http://127.0.0.1/a b"}) {
        SCOPED_TRACE(url);
        expectError(get(url), TransportError::Kind::invalidRequest);
    }
}

TEST_P(HTTPTransportContract, ARefusedConnectionIsAConnectionError) {
    expectError(answerTo({.ending = Answer::Ending::refused}), TransportError::Kind::connection);
}

TEST_P(HTTPTransportContract, AConnectionClosedWithoutAnAnswerIsATruncatedOne) {
    expectError(answerTo({.ending = Answer::Ending::closedAtOnce}), TransportError::Kind::truncated);
}

TEST_P(HTTPTransportContract, AResetConnectionIsATruncatedOne) {
    expectError(answerTo({.ending = Answer::Ending::reset}), TransportError::Kind::truncated);
}

TEST_P(HTTPTransportContract, AHeaderBlockWithoutItsBlankLineIsATruncatedAnswer) {
    expectError(answerTo({.status = 200, .body = "never sent", .ending = Answer::Ending::cutInHeaders}),
                TransportError::Kind::truncated);
}

TEST_P(HTTPTransportContract, ABodyThatEndsEarlyIsATruncatedAnswer) {
    expectError(answerTo({.status = 200, .body = "{\"a\":[1,2,3]}", .ending = Answer::Ending::cutInBody}),
                TransportError::Kind::truncated);
}

TEST_P(HTTPTransportContract, ATruncatedAnswerToAPOSTIsAnErrorToo) {
    const std::string url = rig->serve({{.body = "0123456789", .ending = Answer::Ending::cutInBody},
                                        {.body = "0123456789", .ending = Answer::Ending::cutInHeaders}});

    expectError(exchange({.method = "POST", .url = url + "/1", .body = "{}"}), TransportError::Kind::truncated);
    expectError(exchange({.method = "POST", .url = url + "/2", .body = "{}"}), TransportError::Kind::truncated);

    EXPECT_EQ(rig->received().size(), 2U);
}

TEST_P(HTTPTransportContract, APOSTWhoseConnectionIsClosedIsNotSentAgain) {
    const std::string url = rig->serve({{.status = 200}, {.ending = Answer::Ending::closedAtOnce}, {.status = 200}});
    expectAnswer(exchange({.method = "POST", .url = url + "/", .body = "1"}), 200, "");

    expectError(exchange({.method = "POST", .url = url + "/", .body = "2"}), TransportError::Kind::truncated);

    const std::vector<Received> received = rig->received();
    EXPECT_EQ(std::count_if(received.begin(), received.end(), [](const Received& one) { return one.body == "2"; }), 1);
}

TEST_P(HTTPTransportContract, AnExchangeWithoutAnAnswerEndsWithItsTimeout) {
    const std::string url = rig->serve({{.ending = Answer::Ending::silent}});

    expectError(exchange({.url = url + "/", .timeout = std::chrono::milliseconds(100)}),
                TransportError::Kind::timedOut);
}

TEST_P(HTTPTransportContract, ABodyOfTheLargestSizeIsAnAnswer) {
    const std::string body(HTTPTransport::maxBodyBytes, 'x');

    expectAnswer(answerTo({.status = 200, .body = body}), 200, body);
}

TEST_P(HTTPTransportContract, ABodyBeyondTheLargestSizeIsRefused) {
    expectError(answerTo({.status = 200, .body = std::string(HTTPTransport::maxBodyBytes + 1, 'x')}),
                TransportError::Kind::tooLarge);
}

TEST_P(HTTPTransportContract, ExchangesAtOnceEachGetTheirOwnCompletion) {
    const std::string url = rig->serve({{.status = 200, .body = "same"}});
    std::vector<int> completions(20, 0);

    for (std::size_t i = 0; i < completions.size(); ++i) {
        transport().send({.url = url + "/" + std::to_string(i)},
                         [&completions, i](const HTTPTransport::Result& result) {
                             expectAnswer(result, 200, "same");
                             ++completions[i];
                         });
    }

    EXPECT_TRUE(
        rig->runUntil([&] { return std::find(completions.begin(), completions.end(), 0) == completions.end(); }));
    rig->pass(std::chrono::milliseconds(1));
    EXPECT_EQ(completions, std::vector<int>(20, 1));
    std::vector<std::string> targets;
    const std::vector<Received> all = rig->received();
    for (const Received& received : all) {
        targets.push_back(received.target);
    }
    std::sort(targets.begin(), targets.end());
    EXPECT_EQ(std::unique(targets.begin(), targets.end()) - targets.begin(), 20);
}

TEST_P(HTTPTransportContract, ACompletionMaySendTheNextRequest) {
    const std::string url = rig->serve({{.status = 201}, {.status = 202}});
    std::vector<int> statuses;

    transport().send({.url = url + "/"}, [&](const HTTPTransport::Result& first) {
        statuses.push_back(std::get<HTTPResponse>(first).status);
        transport().send({.url = url + "/"}, [&](const HTTPTransport::Result& second) {
            statuses.push_back(std::get<HTTPResponse>(second).status);
        });
    });

    EXPECT_TRUE(rig->runUntil([&] { return statuses.size() == 2; }));
    EXPECT_EQ(statuses, (std::vector<int>{201, 202}));
}

TEST_P(HTTPTransportContract, AfterCloseNoCompletionRunsAndEachIsDestroyed) {
    const std::string url = rig->serve({{.status = 200}, {.ending = Answer::Ending::silent}});
    const auto ran = std::make_shared<int>(0);
    transport().send({.url = "not an address"}, [ran](const HTTPTransport::Result&) { ++*ran; });
    transport().send({.url = url + "/"}, [ran](const HTTPTransport::Result&) { ++*ran; });
    transport().send({.url = url + "/"}, [ran](const HTTPTransport::Result&) { ++*ran; });

    transport().close();

    transport().send({.url = url + "/"}, [ran](const HTTPTransport::Result&) { ++*ran; });
    rig->pass(std::chrono::milliseconds(20));
    EXPECT_EQ(*ran, 0);
    EXPECT_EQ(ran.use_count(), 1);
}

} // namespace quorvane::platform::contract
