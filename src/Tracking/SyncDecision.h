#pragma once

#include <optional>

#include "Core/Enumerations.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Location.h"

namespace quorvane {

/// Whether a location is sent, by which rule, and the number that the rules went by.
struct SyncDecision {
    enum class Rule {
        /// It is sent: nothing speaks against it.
        send,
        /// The others say why it is not.
        alreadyStopped,
        desiredSyncInterval,
        rateLimit,
        syncMode,
        cantExit,
    };
    /// Why the rules were not asked: the location is sent in any case.
    enum class Force { none, neverSent, justStopped, waitingHandlers, replay };

    Rule rule = Rule::send;
    Force force = Force::none;
    /// Seconds since a location was last handed to the sender; 0 when none ever was.
    double lastSyncInterval = 0;
};

/// What a sync decision goes by beside the options.
struct SyncInput {
    QVLocationSource source = QVLocationSource::UNKNOWN;
    /// Of the location to send, which may be a failed stop that is replayed.
    bool stopped = false;
    bool wasStopped = false;
    /// The fix, and not a replayed stop in its place, stopped a user who was moving.
    bool justStopped = false;
    bool replayed = false;
    bool hasHandlers = false;
    /// Metres from where the user last moved.
    double distance = platform::maximumDistance;
    /// The service's last answer allows exits to be sent.
    bool canExit = false;
    std::optional<platform::Date> lastSentAt;
};

/// Whether a location is sent now. Changes nothing. The rules are asked in the order in which they are declared.
[[nodiscard]] SyncDecision decideSync(const QuorvaneTrackingOptions& options, const SyncInput& input,
                                      platform::Date now);

} // namespace quorvane
