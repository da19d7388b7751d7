#include "tools/demo/TrackingTable.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <utility>

#include "JSON/NumberText.h"
#include "tools/Table.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

using Event = TrackedRide::Event;
using Kind = testing::RecordingDelegate::Kind;
using Source = QVLocationSource;
using Type = QVEventType;

constexpr std::size_t labelColumn = 10;
constexpr std::size_t mostOfAKind = 4;

/// How many are not shown.
std::size_t beyond(std::size_t count) {
    return count - std::min(count, mostOfAKind);
}

bool isAboutTravel(const Event& event) {
    return event.type == Type::USER_STARTED_TRAVELING || event.type == Type::USER_STOPPED_TRAVELING;
}

/// "entered Golden Crumb and its fence".
std::string crossing(const std::string& verb, const Event* place, const Event* fence) {
    if (place != nullptr && fence != nullptr && place->name == fence->name) {
        return verb + " " + place->name + " and its fence";
    }
    const std::string ofPlace = place == nullptr ? "" : verb + " " + place->name;
    const std::string ofFence = fence == nullptr ? "" : verb + " the fence of " + fence->name;
    return ofPlace + (ofPlace.empty() || ofFence.empty() ? "" : "; ") + ofFence;
}

/// Of each kind, with a stop or a departure and without, the first few.
void printSyncs(const TrackedRide& ride, Terminal& terminal) {
    constexpr std::size_t widest = 92;
    Table table({{"time"}, {"answer", widest, true}, {"events", widest}});
    std::size_t travels = 0;
    std::size_t others = 0;
    for (const TrackedRide::Sync& sync : ride.syncs()) {
        const bool isTravel = std::any_of(sync.events.begin(), sync.events.end(), isAboutTravel);
        if (!sync.events.empty() && ++(isTravel ? travels : others) <= mostOfAKind) {
            table.add(
                {timeText(sync.time), sync.answer ? std::to_string(*sync.answer) : "none", wordsFor(sync.events)});
        }
    }
    if (travels + others > 0) {
        table.print(terminal, 2);
    }
    if (const std::size_t hidden = beyond(travels) + beyond(others); hidden > 0) {
        terminal.line("  and " + std::to_string(hidden) + " more with events");
    }
}

void printStops(const TrackedRide& ride, Terminal& terminal) {
    const char* label = "stops";
    for (std::size_t i = 0; i < std::min(ride.stops().size(), mostOfAKind); ++i) {
        const TrackedRide::Stop& stop = ride.stops()[i];
        terminal.row(std::exchange(label, ""),
                     timeText(stop.begin) + (stop.end ? " to " + timeText(*stop.end) : " to the end") + ", near " +
                         coordinateText(stop.coordinate),
                     labelColumn);
    }
    if (const std::size_t hidden = beyond(ride.stops().size()); hidden > 0) {
        terminal.row(label, "and " + std::to_string(hidden) + " more", labelColumn);
    }
}

std::string fixText(const TrackedRide& ride) {
    std::string text = std::to_string(ride.fixCount());
    const char* separator = ": ";
    const auto add = [&](std::size_t count, const std::string& words) {
        text += count == 0 ? "" : std::exchange(separator, ", ") + std::to_string(count) + " " + words;
    };
    for (const auto& [source, count] : ride.fixes()) {
        switch (source) {
            case Source::BACKGROUND_LOCATION:
                add(ride.timerFixCount(), "for the timer");
                add(count - ride.timerFixCount(), "after a significant change");
                break;
            case Source::VISIT_ARRIVAL:
                add(count, "at the beginning of a visit");
                break;
            case Source::VISIT_DEPARTURE:
                add(count, "at its end");
                break;
            default:
                add(count, "at a fence");
        }
    }
    return text;
}

std::string syncText(const TrackedRide& ride) {
    std::map<std::string, std::size_t> answers;
    for (const TrackedRide::Sync& sync : ride.syncs()) {
        ++answers[sync.answer ? std::to_string(*sync.answer) : "nothing"];
    }
    std::string parts;
    for (const auto& [answer, count] : answers) {
        parts += (parts.empty() ? ", each a request to the service, answered " : ", ") + std::to_string(count) + " × " +
                 answer;
    }
    return std::to_string(ride.syncs().size()) + parts + "; " + counted(ride.eventCount(), "event");
}

std::string callText(const TrackedRide& ride) {
    return std::to_string(ride.calls(Kind::clientLocationUpdated)) + " × onClientLocationUpdated, " +
           std::to_string(ride.calls(Kind::locationUpdated)) + " × onLocationUpdated, " +
           std::to_string(ride.calls(Kind::eventsReceived)) + " × onEventsReceived";
}

std::string phoneText(const testing::phone::Usage& usage) {
    const auto receiver = std::chrono::round<std::chrono::seconds>(usage.receiverTime);
    return "woken " + counted(usage.wakeUps, "time") + " by what it monitors, timers ran " +
           counted(usage.timerWakeUps, "time") + ", receiver on for " + std::to_string(receiver.count()) + " s";
}

std::string networkText(const TrackedPreset& preset) {
    const auto moved = std::chrono::duration<double>(preset.ride.timeInFlight());
    return counted(preset.summary.usage.requests, "request") + ", " + counted(preset.summary.usage.bytesSent, "byte") +
           " sent; the virtual clock went on by " + (moved.count() == 0 ? "0" : json::textOf(moved.count())) +
           " s while they were in flight";
}

} // namespace

std::string wordsFor(const std::vector<Event>& events) {
    const auto find = [&events](Type type) -> const Event* {
        const auto found =
            std::find_if(events.begin(), events.end(), [type](const Event& event) { return event.type == type; });
        return found == events.end() ? nullptr : &*found;
    };
    std::string words;
    const auto add = [&words](const std::string& text) { words += (words.empty() || text.empty() ? "" : "; ") + text; };
    add(find(Type::USER_STOPPED_TRAVELING) != nullptr ? "stopped" : "");
    add(find(Type::USER_STARTED_TRAVELING) != nullptr ? "went on" : "");
    add(crossing("left", find(Type::USER_EXITED_PLACE), find(Type::USER_EXITED_GEOFENCE)));
    add(crossing("entered", find(Type::USER_ENTERED_PLACE), find(Type::USER_ENTERED_GEOFENCE)));
    return words;
}

void printTracking(const TrackedPreset& preset, Terminal& terminal) {
    terminal.line();
    terminal.line(terminal.painted("Tracking the ride, " + titleOf(preset), Paint::heading));
    const char* label = "rules";
    for (const std::string& rule : rulesOf(*preset.options)) {
        terminal.row(std::exchange(label, ""), rule, labelColumn);
    }
    printSyncs(preset.ride, terminal);
    terminal.row("fixes", fixText(preset.ride), labelColumn);
    terminal.row("syncs", syncText(preset.ride), labelColumn);
    printStops(preset.ride, terminal);
    terminal.row("delegate", callText(preset.ride), labelColumn);
    terminal.row("phone", phoneText(preset.summary.usage), labelColumn);
    terminal.row("network", networkText(preset), labelColumn);
}

void printSideBySide(const std::list<TrackedPreset>& presets, Terminal& terminal) {
    std::vector<ReplaySummary> summaries;
    std::vector<Table::Column> columns{{""}};
    for (const TrackedPreset& preset : presets) {
        summaries.push_back(preset.summary);
        columns.push_back({titleOf(preset), labelColumn * 2, true});
    }
    Table table(columns);
    for (const SummaryRow& row : summaryRows(summaries)) {
        const auto isNothing = [](const std::string& value) { return value == "0" || value == "0.0 s"; };
        if (!std::all_of(row.values.begin(), row.values.end(), isNothing)) {
            std::vector<std::string> cells{row.label};
            cells.insert(cells.end(), row.values.begin(), row.values.end());
            table.add(cells);
        }
    }
    terminal.line();
    terminal.line(terminal.painted("The presets side by side", Paint::heading));
    table.print(terminal, 2);
}

} // namespace quorvane::tool
