#include "tools/demo/TrackingReasons.h"

#include <algorithm>
#include <cctype>
#include <chrono>

#include "testing/DecisionNames.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

using Force = SyncDecision::Force;
using Rule = SyncDecision::Rule;
using Sync = QuorvaneTrackingOptions::Sync;

std::string seconds(std::int64_t number) {
    return std::to_string(number) + " s";
}

std::string receiverText(const TrackedPreset& preset) {
    return seconds(std::chrono::round<std::chrono::seconds>(preset.summary.usage.receiverTime).count());
}

/// "a, b and c".
std::string listed(const std::vector<std::string>& parts) {
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
    }
    return text;
}

/// Where the application may be suspended, what wakes it.
std::vector<std::string> monitoredBy(const QuorvaneTrackingOptions& options) {
    std::vector<std::string> all;
    if (options.useVisits) {
        all.emplace_back("visits");
    }
    if (options.useSignificantLocationChanges) {
        all.emplace_back("significant changes");
    }
    if (options.useMovingGeofence) {
        all.emplace_back("a fence of " + std::to_string(options.movingGeofenceRadius) + " m on the way");
    }
    if (options.useStoppedGeofence) {
        all.emplace_back("a fence of " + std::to_string(options.stoppedGeofenceRadius) + " m around a stop");
    }
    return all;
}

std::string askingRule(const QuorvaneTrackingOptions& options) {
    const std::int64_t moving = options.desiredMovingUpdateInterval;
    const std::int64_t stopped = options.desiredStoppedUpdateInterval;
    if (moving == 0 && stopped == 0) {
        return "no timer asks for fixes";
    }
    if (moving == stopped) {
        return "a fix every " + seconds(moving) + ", on the way and at a stop";
    }
    const auto each = [](std::int64_t interval) {
        return interval == 0 ? std::string("none") : "one every " + seconds(interval);
    };
    return "fixes: " + each(moving) + " on the way, " + each(stopped) + " at a stop";
}

std::string sendingRule(const QuorvaneTrackingOptions& options) {
    std::string text = "nothing is sent but the first location and stops";
    if (options.sync == Sync::ALL) {
        text = "every location is sent";
    } else if (options.sync == Sync::STOPS_AND_EXITS) {
        text = "the first location and stops are sent, others where the service allows exits";
    }
    return options.desiredSyncInterval == 0 ? text : text + ", at most one in " + seconds(options.desiredSyncInterval);
}

std::vector<std::string> askingReasons(const TrackedPreset& less, const TrackedPreset& more) {
    const std::int64_t moving = less.options->desiredMovingUpdateInterval;
    const std::int64_t atStop = less.options->desiredStoppedUpdateInterval;
    const std::string woken = counted(less.summary.usage.wakeUps, "time");
    if (moving == 0 && atStop == 0) {
        return {"It has no timer, so the phone suspends the application: only " + listed(monitoredBy(*less.options)) +
                " can wake it, which happened " + woken + "."};
    }
    std::vector<std::string> reasons{"Its timer asks every " + seconds(moving) + " and not every " +
                                     seconds(more.options->desiredMovingUpdateInterval) + "."};
    if (atStop == 0) {
        reasons.push_back("At a stop it does not ask at all: the phone suspends the application, which was woken " +
                          woken + ".");
    }
    return reasons;
}

std::string skipReason(Rule rule, const QuorvaneTrackingOptions& options) {
    switch (rule) {
        case Rule::alreadyStopped:
            return "the user had stopped before, and a stop is sent once";
        case Rule::desiredSyncInterval:
            return "fewer than " + seconds(options.desiredSyncInterval) + " had passed since the last one";
        case Rule::rateLimit:
            return "less than a second had passed since the last one";
        case Rule::syncMode:
            return "the options send none";
        case Rule::cantExit:
            return "the user was on the way, and the service never allowed exits";
        case Rule::send:
            break;
    }
    return "";
}

std::string sentReason(const TrackedPreset& preset) {
    std::vector<std::string> parts;
    if (preset.ride.forced(Force::neverSent) > 0) {
        parts.emplace_back("the first location of all");
    }
    if (const std::size_t stops = preset.ride.forced(Force::justStopped); stops > 0) {
        parts.push_back(counted(stops, "new stop"));
    }
    if (const std::size_t again = preset.ride.forced(Force::replay); again > 0) {
        parts.push_back(counted(again, "stop") + " that had failed before");
    }
    if (const std::size_t others = preset.ride.forced(Force::none); others > 0) {
        parts.push_back(counted(others, "location") + " that no rule spoke against");
    }
    return parts.empty() ? "It sent nothing." : "It sent " + listed(parts) + ".";
}

} // namespace

std::string titleOf(const TrackedPreset& preset) {
    std::string title = preset.name;
    std::transform(title.begin(), title.end(), title.begin(), [](unsigned char c) { return std::toupper(c); });
    return title;
}

std::vector<std::string> rulesOf(const QuorvaneTrackingOptions& options) {
    std::vector<std::string> rules{askingRule(options)};
    if (const std::vector<std::string> monitored = monitoredBy(options); !monitored.empty()) {
        rules.push_back("woken by " + listed(monitored));
    }
    rules.push_back(sendingRule(options));
    return rules;
}

std::vector<std::string> reasonsFor(const TrackedPreset& less, const TrackedPreset& more) {
    if (less.ride.syncs().size() >= more.ride.syncs().size() && less.ride.fixCount() >= more.ride.fixCount()) {
        return {};
    }
    std::vector<std::string> reasons = askingReasons(less, more);
    reasons.push_back("So it decided on " + counted(less.ride.fixCount(), "fix", "fixes") + " and not on " +
                      std::to_string(more.ride.fixCount()) + ", with the receiver on for " + receiverText(less) +
                      " and not for " + receiverText(more) + ".");
    reasons.push_back(sentReason(less));
    for (const Rule rule :
         {Rule::alreadyStopped, Rule::desiredSyncInterval, Rule::rateLimit, Rule::syncMode, Rule::cantExit}) {
        if (const std::size_t count = less.ride.decided(rule); count > 0) {
            reasons.push_back(counted(count, "location") + (count == 1 ? " was" : " were") + " not sent: " +
                              skipReason(rule, *less.options) + " (" + std::string(testing::nameOf(rule)) + ").");
        }
    }
    reasons.push_back("Events are found when a location is sent: it found " + std::to_string(less.ride.eventCount()) +
                      " and not " + std::to_string(more.ride.eventCount()) + ".");
    return reasons;
}

} // namespace quorvane::tool
