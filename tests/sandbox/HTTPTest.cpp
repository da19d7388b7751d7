#include <cstdio>
#include <fstream>

#include "sandbox/HTTPService.h"
#include "sandbox/SandboxFixture.h"

namespace quorvane::sandbox::test {
namespace {

using namespace std::chrono_literals;

class HTTPTest : public SandboxTest {
protected:
    /// Sends bytes that are no proper request; the answer must be an error and the end of the connection.
    void expectRefused(const std::string& bytes, int status, const std::string& error) const {
        RawConnection connection(sandbox->dataPort());
        connection.send(bytes);
        const RawReply reply = connection.readAnswer();
        expectError(reply, status, error);
        EXPECT_EQ(connection.readToEnd().bytes, "") << bytes;
        EXPECT_EQ(sandbox->requests().back().status, status);
        EXPECT_EQ(ask(sandbox->dataPort(), "GET /nowhere HTTP/1.1\r\n\r\n").status(), 404);
    }
};

TEST_F(HTTPTest, SeveralRequestsUseOneConnection) {
    RawConnection connection(sandbox->dataPort());
    for (int i = 0; i < 20; ++i) {
        connection.send("GET /nowhere HTTP/1.1\r\n\r\n");
        EXPECT_EQ(connection.readAnswer().status(), 404);
    }
    connection.send("GET /a HTTP/1.1\r\n\r\nPOST /b HTTP/1.1\r\nContent-Length: 3\r\n\r\nabcGET /c HTTP/1.1\r\n\r\n");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(connection.readAnswer().status(), 404);
    }
    EXPECT_EQ(sandbox->requests().back().target, "/c");
}

TEST_F(HTTPTest, NobodyElseOnTheNetworkCanConnect) {
    for (const int port : {sandbox->dataPort(), sandbox->identityPort()}) {
        char ending[8];
        static_cast<void>(std::snprintf(ending, sizeof ending, ":%04X", static_cast<unsigned>(port)));
        std::vector<std::string> listening;
        for (const char* const table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
            std::ifstream lines(table);
            std::string number;
            std::string local;
            std::string remote;
            std::string state;
            for (std::string rest; lines >> number >> local >> remote >> state; std::getline(lines, rest)) {
                if (local.ends_with(ending) && state == "0A") {
                    listening.push_back(local);
                }
            }
        }
        EXPECT_THAT(listening, ::testing::ElementsAre("0100007F" + std::string(ending)));
    }
}

TEST_F(HTTPTest, AConnectionEndsWhenTheClientAsksForIt) {
    RawConnection connection(sandbox->dataPort());
    connection.send("GET /nowhere HTTP/1.1\r\nConnection: close\r\n\r\n");
    const RawReply reply = connection.readToEnd();
    EXPECT_EQ(reply.status(), 404);
    EXPECT_EQ(reply.header("Connection"), "close");

    RawConnection old(sandbox->dataPort());
    old.send("GET /nowhere HTTP/1.0\r\n\r\n");
    EXPECT_EQ(old.readToEnd().status(), 404);
}

TEST_F(HTTPTest, BytesThatAreNoRequestAreRefused) {
    expectRefused("\x16\x03\x01\x02garbage\r\n\r\n", 400, "bad_request");
    expectRefused("GET\r\n\r\n", 400, "bad_request");
    expectRefused("GET /config\r\n\r\n", 400, "bad_request");
    expectRefused("GET /config HTTP/2.0\r\n\r\n", 400, "bad_request");
    expectRefused("FETCH /config HTTP/1.1\r\n\r\n", 400, "bad_request");
    expectRefused("GET config HTTP/1.1\r\n\r\n", 400, "bad_request");
    expectRefused("GET /config HTTP/1.1\r\nno colon\r\n\r\n", 400, "bad_request");
    expectRefused("GET /config HTTP/1.1\r\n: no name\r\n\r\n", 400, "bad_request");
    expectRefused("GET /config HTTP/1.1\r\nA b: c\r\n\r\n", 400, "bad_request");
    expectRefused(std::string("GET /config HTTP/1.1\r\nA: b\0c\r\n\r\n", 32), 400, "bad_request");
}

TEST_F(HTTPTest, ARequestThatEndsTooEarlyIsRefused) {
    for (const char* bytes : {"GET", "GET /config HTTP/1.1\r\n", "GET /config HTTP/1.1\r\nA: b\r\n",
                              "POST /x HTTP/1.1\r\nContent-Length: 5\r\n\r\nabc"}) {
        RawConnection connection(sandbox->dataPort());
        connection.send(bytes);
        connection.finishSending();
        expectError(connection.readToEnd(), 400, "bad_request");
    }
}

TEST_F(HTTPTest, AConnectionWithoutARequestEndsWithoutAnAnswer) {
    RawConnection connection(sandbox->dataPort());
    connection.finishSending();
    EXPECT_EQ(connection.readToEnd().bytes, "");
    EXPECT_TRUE(sandbox->requests().empty());
}

TEST_F(HTTPTest, ATooLongTargetIsRefused) {
    expectRefused("GET /" + std::string(9000, 'a') + " HTTP/1.1\r\n\r\n", 414, "bad_request");
}

TEST_F(HTTPTest, TooLongOrTooManyHeadersAreRefused) {
    expectRefused("GET /" + std::string(100'000, 'a') + " HTTP/1.1\r\n\r\n", 431, "head_too_large");
    expectRefused("GET /config HTTP/1.1\r\nA: " + std::string(100'000, 'a') + "\r\n\r\n", 431, "head_too_large");
    std::string many = "GET /config HTTP/1.1\r\n";
    for (int i = 0; i < 5000; ++i) {
        many += "A: b\r\nB: " + std::to_string(i) + "\r\n";
    }
    expectRefused(many + "\r\n", 431, "head_too_large");
}

TEST_F(HTTPTest, ATooLargeBodyIsRefusedBeforeItIsRead) {
    expectRefused("POST /config HTTP/1.1\r\nContent-Length: 1048577\r\n\r\n" + std::string(1048577, 'a'), 413,
                  "body_too_large");
    expectRefused("POST /config HTTP/1.1\r\nContent-Length: 99999999999999999999999\r\n\r\n", 413, "body_too_large");
    expectError(
        ask(sandbox->dataPort(), "POST /x HTTP/1.1\r\nContent-Length: 1048576\r\n\r\n" + std::string(1048576, 'a')),
        404, "not_found");
}

TEST_F(HTTPTest, ALengthMustBeANumberAndStandThereOnce) {
    expectRefused("POST /config HTTP/1.1\r\nContent-Length: -1\r\n\r\n", 400, "bad_request");
    expectRefused("POST /config HTTP/1.1\r\nContent-Length: 2x\r\n\r\n{}", 400, "bad_request");
    expectRefused("POST /config HTTP/1.1\r\nContent-Length: 2\r\nContent-Length: 2\r\n\r\n{}", 400, "bad_request");
    expectRefused("POST /config HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n", 411,
                  "length_required");
}

TEST_F(HTTPTest, RangesAndCompressionAreNotServed) {
    const RawReply reply =
        ask(sandbox->dataPort(), "GET /nowhere HTTP/1.1\r\nRange: bytes=0-5\r\nAccept-Encoding: gzip, br\r\n\r\n");
    expectError(reply, 404, "not_found");
    EXPECT_EQ(reply.header("Content-Encoding"), "");
}

TEST_F(HTTPTest, AClientThatAsksBeforeItSendsABodyIsToldToContinue) {
    RawConnection connection(sandbox->identityPort());
    connection.send(
        "POST /token HTTP/1.1\r\nContent-Type: application/json\r\nContent-Length: 2\r\n"
        "Expect: 100-continue\r\n\r\n");
    EXPECT_EQ(connection.readAnswer().bytes, "HTTP/1.1 100 Continue\r\n\r\n");
    connection.send("{}");
    expectError(connection.readAnswer(), 400, "invalid_request");
}

TEST_F(HTTPTest, ARequestRecordTellsWhatArrivedAndWhatWasAnswered) {
    std::vector<std::string> lines;
    startWith({.onRequest = [&](const RequestRecord& record) { lines.push_back(record.line()); }});
    const RawReply reply = ask(sandbox->identityPort(),
                               "POST /token?a=%20b HTTP/1.1\r\nX-Test: one, two\r\n"
                               "Content-Type: application/json\r\nContent-Length: 2\r\n\r\n{}");

    ASSERT_EQ(sandbox->requests().size(), 1U);
    const RequestRecord record = sandbox->requests().front();
    EXPECT_EQ(record.service, "identity");
    EXPECT_EQ(record.method, "POST");
    EXPECT_EQ(record.target, "/token?a=%20b");
    EXPECT_EQ(record.path(), "/token");
    EXPECT_EQ(record.header("x-test"), "one, two");
    EXPECT_EQ(record.header("x"), "");
    EXPECT_THAT(record.headers, ::testing::SizeIs(3));
    EXPECT_EQ(record.body, "{}");
    EXPECT_EQ(record.status, 400);
    EXPECT_EQ(record.bytes, reply.bytes.size());
    EXPECT_EQ(record.fault, "");
    EXPECT_EQ(lines, std::vector{"identity POST /token?a=%20b 400 " + std::to_string(reply.bytes.size()) + " bytes " +
                                 std::to_string(record.duration.count()) + " ms"});
}

TEST_F(HTTPTest, NobodyListensAfterTheEnd) {
    const int dataPort = sandbox->dataPort();
    const int identityPort = sandbox->identityPort();
    EXPECT_TRUE(isListening(dataPort) && isListening(identityPort));

    sandbox.reset();

    EXPECT_FALSE(isListening(dataPort));
    EXPECT_FALSE(isListening(identityPort));
}

std::unique_ptr<HTTPService> serving(HTTPService::Setup setup) {
    auto service = std::get<0>(HTTPService::open(std::move(setup)));
    service->serve();
    return service;
}

/// A service without operations, which would wait for hours.
std::unique_ptr<HTTPService> patientService() {
    return serving({.name = "patient",
                    .faults = std::make_shared<FaultList>(),
                    .record = [](const RequestRecord&) {},
                    .requestTime = 1h,
                    .idleTime = 1h});
}

TEST(HTTPService, WhoeverConnectsBeforeItServesIsAnsweredThen) {
    const auto service = std::get<0>(HTTPService::open(
        {.name = "early", .faults = std::make_shared<FaultList>(), .record = [](const RequestRecord&) {}}));
    RawConnection early(service->port());
    early.send("GET /nowhere HTTP/1.1\r\n\r\n");

    service->serve();

    EXPECT_EQ(early.readAnswer().status(), 404);
}

TEST(HTTPService, APortThatWasTakenAndNeverServedIsFreeAtTheEnd) {
    auto service = std::get<0>(HTTPService::open({.name = "unused"}));
    const int port = service->port();
    EXPECT_TRUE(isListening(port));

    service.reset();

    EXPECT_FALSE(isListening(port));
}

TEST(HTTPService, AnIdleConnectionEndsForOneThatWaits) {
    const auto service = patientService();
    std::vector<std::unique_ptr<RawConnection>> connections;
    for (int i = 0; i < 40; ++i) {
        connections.push_back(std::make_unique<RawConnection>(service->port()));
        connections.back()->send("GET /nowhere HTTP/1.1\r\n\r\n");
    }
    for (const auto& connection : connections) {
        EXPECT_EQ(connection->readAnswer().status(), 404);
    }
    EXPECT_EQ(ask(service->port(), "GET /nowhere HTTP/1.1\r\n\r\n").status(), 404);
}

TEST(HTTPService, NeitherAnIdleConnectionNorHalfARequestHoldsUpTheEnd) {
    auto service = patientService();
    RawConnection idle(service->port());
    RawConnection half(service->port());
    idle.send("GET /nowhere HTTP/1.1\r\n\r\n");
    EXPECT_EQ(idle.readAnswer().status(), 404);
    half.send("GET /nowh");

    service.reset();

    EXPECT_EQ(idle.readToEnd().bytes, "");
}

TEST(HTTPService, ARequestThatArrivesTooSlowlyIsRefused) {
    const auto service = serving({.name = "slow",
                                  .faults = std::make_shared<FaultList>(),
                                  .record = [](const RequestRecord&) {},
                                  .requestTime = 30ms});
    RawConnection connection(service->port());

    connection.send("GET /config HTT");

    EXPECT_EQ(connection.readToEnd().status(), 408);
}

TEST(HTTPService, AnOperationThatFailsIsAServerError) {
    const auto fail = [](const Request&) -> Answer { throw std::runtime_error("the disk is full"); };
    const auto service = serving({.name = "failing",
                                  .routes = {{"GET", "/a", fail}},
                                  .faults = std::make_shared<FaultList>(),
                                  .record = [](const RequestRecord&) {}});

    const RawReply reply = ask(service->port(), "GET /a HTTP/1.1\r\n\r\n");

    EXPECT_EQ(reply.status(), 500);
    EXPECT_EQ(reply.body(), R"({"error":"server_error","error_description":"the disk is full"})");
}

} // namespace
} // namespace quorvane::sandbox::test
