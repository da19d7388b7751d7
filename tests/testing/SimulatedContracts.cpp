#include <algorithm>

#include "Platform/contract/AllContracts.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::platform::contract {
namespace {

using testing::RecordedRequest;
using testing::ScriptedAnswer;
using testing::SimulatedPlatform;

constexpr const char* address = "http://127.0.0.1:8080";

ScriptedAnswer scripted(const Answer& answer) {
    switch (answer.ending) {
        case Answer::Ending::whole:
            return ScriptedAnswer::with(answer.status, answer.body);
        case Answer::Ending::refused:
            return ScriptedAnswer::failure(TransportError::Kind::connection);
        case Answer::Ending::silent:
            return ScriptedAnswer::never();
        case Answer::Ending::closedAtOnce:
        case Answer::Ending::reset:
        case Answer::Ending::cutInHeaders:
        case Answer::Ending::cutInBody:
            break;
    }
    return ScriptedAnswer::failure(TransportError::Kind::truncated);
}

class SimulatedRig : public Rig {
public:
    SimulatedRig() { simulated->application().setInformationDictionary(information()); }

    Platform& platform() override { return *simulated; }

    bool runUntil(const std::function<bool()>& done) override {
        for (int passed = 0; !done() && passed < 60'000; ++passed) {
            simulated->advance(std::chrono::milliseconds(1));
        }
        return done();
    }

    void pass(std::chrono::nanoseconds time) override { simulated->advance(time); }

    void relaunch() override { simulated = SimulatedPlatform::make(simulated->nextLaunch()); }

    std::string serve(std::vector<Answer> answers) override {
        simulated->transport().answer("*", "*", [answers, next = std::size_t{0}](const RecordedRequest&) mutable {
            const Answer& answer = answers[std::min(next++, answers.size() - 1)];
            return scripted(answer);
        });
        return address;
    }

    std::vector<Received> received() override {
        std::vector<Received> result;
        for (const RecordedRequest& one : simulated->transport().requests()) {
            const std::string target = one.request.url.substr(std::string(address).size());
            result.push_back({one.request.method, target, one.request.headers, one.request.body});
        }
        return result;
    }

    void setEnvironment(const std::string& name, const std::string& value) override {
        simulated->device().setEnvironment(name, value);
    }

    std::vector<std::string> output() override { return simulated->application().outputLines(); }

private:
    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
};

std::unique_ptr<Rig> makeSimulatedRig() {
    return std::make_unique<SimulatedRig>();
}

} // namespace

QUORVANE_INSTANTIATE_CONTRACTS(Simulated, makeSimulatedRig);

} // namespace quorvane::platform::contract
