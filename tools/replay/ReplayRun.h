#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Models/QuorvaneTrackingOptions.h"
#include "testing/DecisionLog.h"
#include "tools/Options.h"
#include "tools/replay/ReplayService.h"
#include "tools/replay/ReplaySummary.h"

namespace quorvane::tool {

/// Tracking options and what they are called.
struct NamedOptions {
    std::string name;
    /// Called with a platform in use.
    std::function<std::shared_ptr<QuorvaneTrackingOptions>()> make;
};

/// What is replayed.
struct ReplayInput {
    std::string track;
    NamedOptions options;
    KnownPlaces places;
};

/// Where a replay's decisions go.
struct ReplayLog {
    testing::DecisionLog::Format format = testing::DecisionLog::Format::text;
    testing::DecisionLog::Output output;
};

/// How long a replay goes on after its last fix, so that what was begun comes to its end.
inline constexpr std::chrono::seconds replayTail{10};

/// Lets a simulated phone follow the recording with an application that tracks in the background, as fast as it goes,
/// in memory that does not grow with the recording's length. @p libraryLog gets the library's own log where
/// @p global wants one. Throws a `Failure`.
[[nodiscard]] ReplaySummary replay(const ReplayInput& input, const std::optional<ReplayLog>& log,
                                   const GlobalOptions& global,
                                   const std::function<void(std::string_view line)>& libraryLog);

} // namespace quorvane::tool
