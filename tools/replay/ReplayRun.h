#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Core/QuorvaneDelegate.h"
#include "Platform/HTTPTransport.h"
#include "Platform/Platform.h"
#include "testing/DecisionLog.h"
#include "testing/Track.h"
#include "testing/TrackReader.h"
#include "tools/NamedOptions.h"
#include "tools/Options.h"
#include "tools/replay/ReplayListener.h"
#include "tools/replay/ReplayService.h"
#include "tools/replay/ReplaySummary.h"

namespace quorvane::tool {

/// What is replayed.
struct ReplayInput {
    /// The recording's file, or what stands for it in an error.
    std::string track;
    NamedOptions options;
    KnownPlaces places;
    /// A recording that has been read; none: it is read as it is replayed.
    std::shared_ptr<const testing::Track> recording;
    /// The file, where it has been opened already; for one replay.
    std::shared_ptr<testing::TrackReader> reader;
    /// Makes the transport to a real service, which answers in the place of `places`: the clock stands while a request
    /// is in flight. None: nothing is real.
    std::function<std::unique_ptr<platform::HTTPTransport>(platform::Platform& platform)> service;
};

/// Where a replay's decisions go.
struct ReplayLog {
    testing::DecisionLog::Format format = testing::DecisionLog::Format::text;
    testing::DecisionLog::Output output;
};

/// Who is told of a replay. What is absent is told nothing.
struct ReplayReaders {
    std::optional<ReplayLog> log;
    ReplayListener* listener = nullptr;
    /// The application's.
    std::shared_ptr<QuorvaneDelegate> delegate;
    /// Gets the library's own log where a level of it was asked for.
    std::function<void(std::string_view line)> libraryLog;
};

/// How long a replay goes on after its last fix, so that what was begun comes to its end.
inline constexpr std::chrono::seconds replayTail{10};

/// Opens a recording's file. Throws a `Failure`.
[[nodiscard]] std::shared_ptr<testing::TrackReader> openRecording(const std::string& path);

/// Lets a simulated phone follow the recording with an application that tracks in the background, as fast as it goes,
/// in memory that does not grow with the recording's length. Throws a `Failure`, and `Interrupted` once a signal came.
[[nodiscard]] ReplaySummary replay(const ReplayInput& input, const ReplayReaders& readers, const GlobalOptions& global);

} // namespace quorvane::tool
