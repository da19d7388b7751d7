#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/AnyCodable.h"
#include "Tracking/Observed.h"
#include "testing/PhoneEvents.h"
#include "testing/TrackingSummary.h"

namespace quorvane::tool {

/// What a replay came to, in numbers. Plain value.
struct ReplaySummary {
    using Counts = std::map<std::string_view, std::size_t>;

    /// "continuous", or what else the options are called.
    std::string options;
    /// Fixes of the recording, and those of them that were not later than one before them.
    std::size_t recorded = 0;
    std::size_t passedOver = 0;
    /// From the first fix to the end of the replay.
    std::chrono::nanoseconds duration{0};

    /// Fixes that were decided on, by outcome; the processed ones by what became of the sync.
    Counts fixes;
    Counts decisions;
    /// By status.
    Counts syncs;
    /// By type.
    Counts events;
    /// The numbers that need no names.
    testing::TrackingSummary tracking;
    testing::phone::Usage usage;

    ReplaySummary();
    void count(const observed::Observation& observation);

    [[nodiscard]] AnyCodable::Dictionary document() const;
};

/// A number of each summary, as text.
struct SummaryRow {
    /// Indented where it is a part of the one above.
    std::string label;
    std::vector<std::string> values;
};

[[nodiscard]] std::vector<SummaryRow> summaryRows(const std::vector<ReplaySummary>& summaries);

/// A line for each number, with its line break, and a column for each summary; more than one have their options' names
/// above them.
[[nodiscard]] std::string summaryText(const std::vector<ReplaySummary>& summaries);

} // namespace quorvane::tool
