#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "testing/SimulatedPlatform.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::HTTPRequest;
using platform::HTTPResponse;
using platform::HTTPTransport;

/// Stands for a transport with a thread of its own: it answers each request from there, after a delay that it measures
/// in steps of the virtual clock it must not see moving.
class ThreadedTransport : public HTTPTransport {
public:
    explicit ThreadedTransport(platform::Platform& platform) : queue(platform.mainQueue()) {}

    ~ThreadedTransport() override { join(); }

    void send(HTTPRequest request, Completion completion) override {
        threads.emplace_back([this, url = std::move(request.url), completion = std::move(completion)] {
            queue.post([completion, url] { completion(HTTPResponse{200, url}); });
        });
    }

    void close() override { join(); }

private:
    void join() {
        for (std::thread& thread : threads) {
            thread.join();
        }
        threads.clear();
    }

    platform::MainQueue& queue;
    std::vector<std::thread> threads;
};

class RealTransportTest : public ::testing::Test {
protected:
    static SimulatedOptions options() {
        SimulatedOptions options;
        options.transport = [](platform::Platform& platform) { return std::make_unique<ThreadedTransport>(platform); };
        return options;
    }

    void send(const std::string& url) {
        simulated->transport().send(HTTPRequest{.url = url}, [this](const HTTPTransport::Result& result) {
            const auto* response = std::get_if<HTTPResponse>(&result);
            answers.push_back(response != nullptr ? response->body : "none");
            answeredAt = simulated->clock().monotonic();
        });
    }

    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make(options());
    std::vector<std::string> answers;
    std::chrono::nanoseconds answeredAt{-1};
};

TEST_F(RealTransportTest, TheVirtualClockStandsWhileARequestIsInFlight) {
    send("http://127.0.0.1/a");

    EXPECT_TRUE(simulated->advance(1h));

    EXPECT_EQ(answers, std::vector<std::string>{"http://127.0.0.1/a"});
    EXPECT_EQ(answeredAt, 0s);
    EXPECT_EQ(simulated->clock().monotonic(), 1h);
}

TEST_F(RealTransportTest, ARequestSentOnTheWayIsAnsweredAtTheMomentOfItsSending) {
    simulated->mainQueue().postAfter(10s, [this] { send("http://127.0.0.1/b"); });

    EXPECT_TRUE(simulated->advance(1h));

    EXPECT_EQ(answeredAt, 10s);
}

TEST_F(RealTransportTest, RunningUntilIdleWaitsForTheAnswer) {
    send("http://127.0.0.1/c");
    EXPECT_EQ(simulated->transport().realRequestsInFlight(), 1);

    EXPECT_TRUE(simulated->runUntilIdle());

    EXPECT_EQ(answers.size(), 1U);
    EXPECT_EQ(simulated->transport().realRequestsInFlight(), 0);
}

TEST_F(RealTransportTest, ARuleComesBeforeTheRealService) {
    simulated->transport().answer("GET", "/fault", ScriptedAnswer::failure(platform::TransportError::Kind::truncated));

    send("http://127.0.0.1/fault");
    send("http://127.0.0.1/real");
    simulated->runUntilIdle();

    EXPECT_EQ(answers, (std::vector<std::string>{"none", "http://127.0.0.1/real"}));
    EXPECT_EQ(simulated->transport().requests().size(), 2U);
}

TEST_F(RealTransportTest, ARealAnswerCanBeHeldWhileTimePasses) {
    simulated->transport().holdAnswers(true);
    send("http://127.0.0.1/held");

    simulated->advance(5s);
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(simulated->transport().deliver(), 1U);
    simulated->runUntilIdle();

    EXPECT_EQ(answers, std::vector<std::string>{"http://127.0.0.1/held"});
}

TEST_F(RealTransportTest, ClosingDropsWhatIsInFlight) {
    send("http://127.0.0.1/d");

    simulated->transport().close();
    simulated->advance(1s);

    EXPECT_TRUE(answers.empty());
}

} // namespace
} // namespace quorvane::testing
