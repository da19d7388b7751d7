#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Core/QVStatus.h"
#include "JSON/AnyCodable.h"
#include "Platform/Location.h"
#include "testing/RecordingDelegate.h"
#include "tools/replay/ReplayListener.h"

namespace quorvane::tool {

/// What tracking did on a ride, as the observer and the delegate of the application heard it.
class TrackedRide : public ReplayListener {
public:
    /// Something that tracking found out by itself.
    struct Event {
        QVEventType type = QVEventType::UNKNOWN;
        /// Of the place or the geofence; empty where it is about neither.
        std::string name;
    };
    /// A location that was handed to the service.
    struct Sync {
        platform::Date time;
        platform::Location location;
        bool stopped = false;
        QVLocationSource source = QVLocationSource::UNKNOWN;
        QVStatus status = QVStatus::SUCCESS;
        /// What the service answered to its request; none: nothing.
        std::optional<int> answer;
        std::size_t fences = 0;
        /// Where the user was; empty: nowhere.
        std::string place;
        std::vector<Event> events;
    };
    /// A time during which the user was stopped.
    struct Stop {
        platform::Date begin;
        /// None: to the end of the ride.
        std::optional<platform::Date> end;
        platform::Coordinate coordinate;
    };

    void recorded(const platform::Location&) override {}
    void observed(platform::Date now, const observed::Observation& observation) override;
    void happened(platform::Date now, const testing::phone::Event& event) override;

    /// For the application that tracks.
    [[nodiscard]] const std::shared_ptr<testing::RecordingDelegate>& delegate() const { return recording; }
    [[nodiscard]] std::size_t calls(testing::RecordingDelegate::Kind kind) const {
        return recording->calls(kind).size();
    }

    [[nodiscard]] const std::vector<Sync>& syncs() const { return sent; }
    [[nodiscard]] const std::vector<Stop>& stops() const { return halts; }
    /// Fixes that were decided on, by what produced them.
    [[nodiscard]] const std::map<QVLocationSource, std::size_t>& fixes() const { return bySource; }
    /// Those in the background that the update timer had asked for; a significant change brought the others.
    [[nodiscard]] std::size_t timerFixCount() const { return byTimer; }
    [[nodiscard]] std::size_t fixCount() const;
    /// Fixes by the rule that let them through or kept them.
    [[nodiscard]] std::size_t decided(SyncDecision::Rule rule) const;
    /// Fixes that were let through, by why no rule was asked; `none`: all rules were.
    [[nodiscard]] std::size_t forced(SyncDecision::Force force) const;
    [[nodiscard]] std::size_t eventCount() const;

    /// How far the phone's clock went while a request was in flight.
    [[nodiscard]] platform::Date::duration timeInFlight() const { return inFlight; }

    /// {"syncs": [...], "stops": [...], "delegate": {...}, "secondsInFlight": 0}
    [[nodiscard]] AnyCodable::Dictionary document() const;

private:
    void observe(platform::Date now, const observed::Fix& fix);
    void observe(platform::Date now, const observed::Sync& sync);

    const std::shared_ptr<testing::RecordingDelegate> recording = std::make_shared<testing::RecordingDelegate>();
    std::vector<Sync> sent;
    std::vector<Stop> halts;
    std::map<QVLocationSource, std::size_t> bySource;
    std::map<SyncDecision::Rule, std::size_t> byRule;
    std::map<SyncDecision::Force, std::size_t> byForce;
    std::size_t byTimer = 0;
    bool timerWaits = false;
    std::map<std::uint64_t, platform::Date> begun;
    platform::Date::duration inFlight{0};
    /// To the last search.
    std::optional<int> lastAnswer;
    /// Where the user was at the last sync that succeeded.
    std::string lastPlace;
};

} // namespace quorvane::tool
