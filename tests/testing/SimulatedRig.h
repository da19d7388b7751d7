#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "Platform/contract/Rig.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::platform::contract {

/// A rig around the parts of a simulated platform, wherever that is. Time passes as the rig that derives from it says.
class SimulatedRig : public Rig {
public:
    bool runUntil(const std::function<bool()>& done) override {
        for (int passed = 0; !done() && passed < 60'000; ++passed) {
            pass(std::chrono::milliseconds(1));
        }
        return done();
    }

    std::string serve(std::vector<Answer> answers) override {
        parts().transport().answer("*", "*", [answers, next = std::size_t{0}](const testing::RecordedRequest&) mutable {
            return scripted(answers[std::min(next++, answers.size() - 1)]);
        });
        return address;
    }

    std::vector<Received> received() override {
        std::vector<Received> result;
        for (const testing::RecordedRequest& one : parts().transport().requests()) {
            const std::string target = one.request.url.substr(std::string(address).size());
            result.push_back({one.request.method, target, one.request.headers, one.request.body});
        }
        return result;
    }

    void setEnvironment(const std::string& name, const std::string& value) override {
        parts().device().setEnvironment(name, value);
    }

    std::vector<std::string> output() override { return parts().application().outputLines(); }

protected:
    [[nodiscard]] virtual testing::SimulatedPlatform& parts() = 0;

private:
    static constexpr const char* address = "http://127.0.0.1:8080";

    static testing::ScriptedAnswer scripted(const Answer& answer) {
        switch (answer.ending) {
            case Answer::Ending::whole:
                return testing::ScriptedAnswer::with(answer.status, answer.body);
            case Answer::Ending::refused:
                return testing::ScriptedAnswer::failure(TransportError::Kind::connection);
            case Answer::Ending::silent:
                return testing::ScriptedAnswer::never();
            case Answer::Ending::closedAtOnce:
            case Answer::Ending::reset:
            case Answer::Ending::cutInHeaders:
            case Answer::Ending::cutInBody:
                break;
        }
        return testing::ScriptedAnswer::failure(TransportError::Kind::truncated);
    }
};

} // namespace quorvane::platform::contract
