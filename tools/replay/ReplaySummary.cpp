#include "tools/replay/ReplaySummary.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <ratio>
#include <set>
#include <utility>
#include <variant>

#include "testing/DecisionNames.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

using Outcome = observed::Fix::Outcome;
using Rule = SyncDecision::Rule;
using testing::nameOf;
using Summaries = std::vector<ReplaySummary>;

std::size_t total(const ReplaySummary::Counts& counts) {
    std::size_t sum = 0;
    for (const auto& [name, count] : counts) {
        sum += count;
    }
    return sum;
}

std::size_t processed(const ReplaySummary& summary) {
    return summary.fixes.at(nameOf(Outcome::processed));
}

/// Tenths, since nobody's timing is better.
double secondsOf(std::chrono::nanoseconds duration) {
    using Tenths = std::chrono::duration<std::int64_t, std::deci>;
    return static_cast<double>(std::chrono::round<Tenths>(duration).count()) / 10;
}

std::string secondsText(std::chrono::nanoseconds duration) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), secondsOf(duration), std::chars_format::fixed, 1).ptr;
    return std::string(text.begin(), end) + " s";
}

AnyCodable::Dictionary documentOf(const ReplaySummary::Counts& counts) {
    AnyCodable::Dictionary document;
    for (const auto& [name, count] : counts) {
        document.emplace(name, count);
    }
    return document;
}

/// The lines of one table that is being written.
class Lines {
public:
    explicit Lines(const Summaries& theSummaries) : summaries(theSummaries) {}

    void add(std::string_view label, const std::function<std::string(const ReplaySummary&)>& value) {
        rows.push_back({std::string(label), {}});
        for (const ReplaySummary& summary : summaries) {
            rows.back().values.push_back(value(summary));
        }
    }
    void count(std::string_view label, const std::function<std::size_t(const ReplaySummary&)>& value) {
        add(label, [&value](const ReplaySummary& summary) { return std::to_string(value(summary)); });
    }
    /// A line for each name that one of the summaries has.
    void counts(const std::string& prefix, ReplaySummary::Counts ReplaySummary::*which, std::string_view without = {}) {
        std::set<std::string_view> names;
        for (const ReplaySummary& summary : summaries) {
            for (const auto& [name, number] : summary.*which) {
                names.insert(name);
            }
        }
        names.erase(without);
        for (const std::string_view name : names) {
            count(prefix + std::string(name), [which, name](const ReplaySummary& summary) {
                const auto found = (summary.*which).find(name);
                return found == (summary.*which).end() ? 0 : found->second;
            });
        }
    }

    [[nodiscard]] std::vector<SummaryRow> take() { return std::move(rows); }

private:
    const Summaries& summaries;
    std::vector<SummaryRow> rows;
};

} // namespace

ReplaySummary::ReplaySummary() {
    for (const Outcome outcome : {Outcome::invalid, Outcome::inaccurate, Outcome::old, Outcome::processed}) {
        fixes[nameOf(outcome)] = 0;
    }
    for (const Rule rule : {Rule::send, Rule::alreadyStopped, Rule::desiredSyncInterval, Rule::rateLimit,
                            Rule::syncMode, Rule::cantExit}) {
        decisions[nameOf(rule)] = 0;
    }
}

void ReplaySummary::count(const observed::Observation& observation) {
    tracking.count(observation);
    if (const auto* const fix = std::get_if<observed::Fix>(&observation)) {
        ++fixes[nameOf(fix->outcome)];
        if (fix->sync) {
            ++decisions[nameOf(fix->sync->rule)];
        }
    } else if (const auto* const sync = std::get_if<observed::Sync>(&observation)) {
        ++syncs[nameOf(sync->status)];
        for (const auto& event : sync->events) {
            ++events[nameOf(event->type)];
        }
    }
}

AnyCodable::Dictionary ReplaySummary::document() const {
    return {{"options", options},
            {"recorded", recorded},
            {"passedOver", passedOver},
            {"seconds", secondsOf(duration)},
            {"fixes", documentOf(fixes)},
            {"decisions", documentOf(decisions)},
            {"stops", tracking.stops},
            {"syncs", documentOf(syncs)},
            {"events", documentOf(events)},
            {"geofences", tracking.geofences},
            {"grants", tracking.backgroundGrants},
            {"launches", usage.launches},
            {"wakeUps", usage.wakeUps},
            {"timerWakeUps", usage.timerWakeUps},
            {"fixRequests", usage.fixRequests},
            {"fixesGiven", usage.fixes},
            {"receiverSeconds", secondsOf(usage.receiverTime)},
            {"requests", usage.requests},
            {"bytesSent", usage.bytesSent}};
}

std::vector<SummaryRow> summaryRows(const Summaries& summaries) {
    Lines lines(summaries);
    lines.count("recorded fixes", [](const ReplaySummary& one) { return one.recorded; });
    lines.count("  passed over", [](const ReplaySummary& one) { return one.passedOver; });
    lines.add("duration", [](const ReplaySummary& one) { return secondsText(one.duration); });
    lines.count("fixes decided on", [](const ReplaySummary& one) { return total(one.fixes); });
    lines.count("  kept", processed);
    lines.counts("  dropped: ", &ReplaySummary::fixes, nameOf(Outcome::processed));
    lines.count("  sent", [](const ReplaySummary& one) { return one.decisions.at(nameOf(Rule::send)); });
    lines.counts("  not sent: ", &ReplaySummary::decisions, nameOf(Rule::send));
    lines.count("stops", [](const ReplaySummary& one) { return one.tracking.stops; });
    lines.count("syncs", [](const ReplaySummary& one) { return total(one.syncs); });
    lines.counts("  ", &ReplaySummary::syncs);
    lines.count("events", [](const ReplaySummary& one) { return total(one.events); });
    lines.counts("  ", &ReplaySummary::events);
    lines.count("geofences", [](const ReplaySummary& one) { return one.tracking.geofences; });
    lines.count("background grants", [](const ReplaySummary& one) { return one.tracking.backgroundGrants; });
    lines.count("wake-ups", [](const ReplaySummary& one) { return one.usage.wakeUps; });
    lines.count("wake-ups by timers", [](const ReplaySummary& one) { return one.usage.timerWakeUps; });
    lines.count("requests for a fix", [](const ReplaySummary& one) { return one.usage.fixRequests; });
    lines.count("fixes given", [](const ReplaySummary& one) { return one.usage.fixes; });
    lines.add("receiver on", [](const ReplaySummary& one) { return secondsText(one.usage.receiverTime); });
    lines.count("requests", [](const ReplaySummary& one) { return one.usage.requests; });
    lines.count("bytes sent", [](const ReplaySummary& one) { return one.usage.bytesSent; });
    return lines.take();
}

std::string summaryText(const Summaries& summaries) {
    std::vector<SummaryRow> rows = summaryRows(summaries);
    if (summaries.size() > 1) {
        rows.insert(rows.begin(), SummaryRow());
        for (const ReplaySummary& summary : summaries) {
            rows.front().values.push_back(summary.options);
        }
    }
    std::size_t labelWidth = 0;
    std::vector<std::size_t> widths(summaries.size());
    for (const SummaryRow& row : rows) {
        labelWidth = std::max(labelWidth, width(row.label));
        for (std::size_t i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], width(row.values[i]));
        }
    }
    std::string all;
    for (const SummaryRow& row : rows) {
        all += padded(row.label, labelWidth);
        for (std::size_t i = 0; i < widths.size(); ++i) {
            all.append(2 + widths[i] - width(row.values[i]), ' ').append(row.values[i]);
        }
        all += '\n';
    }
    return all;
}

} // namespace quorvane::tool
