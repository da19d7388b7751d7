#pragma once

#include <string>

#include "Platform/Clock.h"
#include "Tracking/Observed.h"
#include "testing/PhoneEvents.h"
#include "testing/TrackingSummary.h"

namespace quorvane::testing {

/// A run's numbers, and what they cost.
struct SummaryRecord {
    const TrackingSummary& summary;
    const phone::Usage& usage;
};

/// The line of a decision log for readers, with its line break. Identifiers and running numbers are left out: a
/// decision that has changed must not change the lines of others.
[[nodiscard]] std::string decisionText(platform::Date time, const observed::Observation& observation);
[[nodiscard]] std::string decisionText(platform::Date time, const phone::Event& event);
[[nodiscard]] std::string decisionText(platform::Date time, const SummaryRecord& record);

/// The line of a decision log for programs, with its line break.
[[nodiscard]] std::string decisionJSON(platform::Date time, const observed::Observation& observation);
[[nodiscard]] std::string decisionJSON(platform::Date time, const phone::Event& event);
[[nodiscard]] std::string decisionJSON(platform::Date time, const SummaryRecord& record);

} // namespace quorvane::testing
