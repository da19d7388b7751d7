#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "days/DayScript.h"
#include "testing/ScriptedTransport.h"

namespace quorvane::days {

/// The services of one day: they sign in whoever asks, and know the places of the day.
class DayService {
public:
    DayService(std::vector<KnownPlace> thePlaces, std::int64_t theFirstTokenSeconds)
        : places(std::move(thePlaces)), firstTokenSeconds(theFirstTokenSeconds) {}

    /// Lets @p transport answer as these services do now.
    void answer(quorvane::testing::ScriptedTransport& transport);

    /// How the data service answers from now on: "ok", "silent", or with a status.
    void setState(const std::string& newState) { state = newState; }
    /// The same for the identity service, once a token has been handed out.
    void setIdentity(const std::string& newState) { identity = newState; }

private:
    [[nodiscard]] static quorvane::testing::ScriptedAnswer broken(const std::string& state);
    [[nodiscard]] quorvane::testing::ScriptedAnswer find(const quorvane::testing::RecordedRequest& request) const;
    [[nodiscard]] quorvane::testing::ScriptedAnswer token();

    const std::vector<KnownPlace> places;
    const std::int64_t firstTokenSeconds;
    std::string state = "ok";
    std::string identity = "ok";
    int tokens = 0;
};

} // namespace quorvane::days
