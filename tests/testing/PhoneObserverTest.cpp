#include <array>
#include <cmath>

#include <gmock/gmock.h>

#include "testing/PhoneTest.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::LocationAuthorization;
using ::testing::ElementsAre;

/// Keeps what happens on a phone, as words.
class Witness : public phone::Observer {
public:
    void happened(const phone::Event& event) override {
        std::visit([this](const auto& one) { add(one); }, event);
    }

    std::vector<std::string> seen;

private:
    void add(const phone::StateChange& change) {
        static constexpr std::array<const char*, 4> names{"not running", "foreground", "background", "suspended"};
        seen.push_back(std::string(names.at(static_cast<std::size_t>(change.before))) + " -> " +
                       names.at(static_cast<std::size_t>(change.after)));
    }
    void add(const phone::SignalChange& change) { seen.emplace_back(change.hasSignal ? "signal" : "no signal"); }
    void add(const phone::AccuracyChange& change) {
        seen.push_back("accuracy " + std::to_string(std::lround(change.metres.value_or(0))));
    }
    void add(const phone::AuthorizationChange& change) {
        seen.emplace_back(change.status == LocationAuthorization::denied ? "denied" : "permitted");
    }
    void add(const phone::ClockChange& change) {
        seen.push_back("clock " + std::to_string((change.after - change.before) / 1s));
    }
    void add(const phone::Request& request) {
        seen.push_back(std::to_string(request.id) + ": " + request.method + ' ' + request.target + ", " +
                       std::to_string(request.bytes) + " bytes");
    }
    void add(const phone::Response& response) {
        seen.push_back(std::to_string(response.id) + ": " +
                       (response.status ? std::to_string(*response.status) : "no answer"));
    }
};

class PhoneObserverTest : public PhoneTest {};

TEST_F(PhoneObserverTest, WhoeverObservesHearsWhatHappensOnThePhone) {
    Witness witness;
    phone.setObservers(&witness, nullptr);
    phone.setSignal(false);
    phone.setSignal(false);
    phone.setSignal(true);
    phone.setAccuracy(70);
    phone.setAuthorization(LocationAuthorization::denied);
    phone.setAuthorization(LocationAuthorization::denied);
    phone.setAuthorization(LocationAuthorization::always);
    phone.setWallTime(SimulatedClock::start - 1h);
    phone.enterBackground();
    phone.advance(10s);
    phone.terminate();
    phone.launch();

    EXPECT_THAT(witness.seen, ElementsAre("no signal", "signal", "accuracy 70", "denied", "permitted", "clock -3600",
                                          "foreground -> background", "background -> suspended",
                                          "suspended -> not running", "not running -> foreground"));
    phone.setObservers(nullptr, nullptr);
    phone.enterBackground();
    EXPECT_EQ(witness.seen.size(), 10U);
}

TEST_F(PhoneObserverTest, RequestsAndTheirBytesAreCounted) {
    Witness witness;
    phone.setObservers(&witness, nullptr);
    phone.platform().transport().answerOnce("GET", "*", ScriptedAnswer::with(404));
    const auto send = [](platform::HTTPRequest request) {
        platform::current().transport().send(std::move(request), [](const auto&) {});
    };
    send({"GET", "http://127.0.0.1/a?b=c", {{"Accept", "text"}}, ""});
    send({"POST", "http://127.0.0.1", {}, "body"});
    phone.advance({});

    // "GET /a?b=c HTTP/1.1", "Accept: text" and a blank line, each with its line break.
    EXPECT_THAT(witness.seen, ElementsAre("1: GET /a?b=c, 37 bytes", "2: POST /, 23 bytes", "1: 404", "2: no answer"));
    EXPECT_EQ(phone.usage().requests, 2U);
    EXPECT_EQ(phone.usage().bytesSent, 60U);
}

} // namespace
} // namespace quorvane::testing
