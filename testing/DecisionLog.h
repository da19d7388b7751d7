#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "Platform/Clock.h"
#include "Tracking/TrackingObserver.h"
#include "testing/PhoneEvents.h"
#include "testing/TrackingSummary.h"

namespace quorvane::testing {

/// Writes down what tracking decides and what happens on the phone that it runs on, a line each, in virtual time: set
/// it as both observers of a `SimulatedPhone`. Main thread only.
///
/// The same run gives the same bytes: times are UTC, coordinates are rounded to six decimals, metres and seconds to
/// one. `docs/decision-log.md` says what each line holds.
class DecisionLog : public TrackingObserver, public phone::Observer {
public:
    enum class Format {
        /// For readers: the time, what the line is about, and a sentence.
        text,
        /// For programs: an object a line.
        jsonLines,
    };
    /// Takes a line with its line break.
    using Output = std::function<void(std::string_view line)>;

    /// @p theClock outlives the log.
    DecisionLog(const platform::Clock& theClock, Format theFormat, Output theOutput);
    ~DecisionLog() override;

    void observe(const observed::Observation& observation) override;
    void happened(const phone::Event& event) override;

    /// What happened so far.
    [[nodiscard]] const TrackingSummary& summary() const { return counts; }
    /// Writes down what happened so far and what it cost.
    void summarize(const phone::Usage& usage);

private:
    template <class Happening>
    void write(const Happening& happening);

    const platform::Clock& clock;
    const Format format;
    const Output output;
    TrackingSummary counts;
};

} // namespace quorvane::testing
