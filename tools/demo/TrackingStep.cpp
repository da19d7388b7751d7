#include "tools/demo/TrackingStep.h"

#include <algorithm>
#include <chrono>
#include <list>
#include <memory>
#include <string>
#include <utility>

#include "Platform/Native/CurlTransport.h"
#include "tools/Failure.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Account.h"
#include "tools/demo/Ride.h"
#include "tools/demo/TrackingTable.h"
#include "tools/replay/ReplayRun.h"

namespace quorvane::tool {
namespace {

/// Of a longer recording the beginning is tracked: half a minute of it is a request.
constexpr std::chrono::hours longestTracked{12};

void track(TrackedPreset& preset, const NamedOptions& named, ReplayInput& input, const GlobalOptions& options,
           Account& account, Terminal& terminal) {
    preset.name = named.name;
    input.options = {named.name, [&preset, make = named.make] { return preset.options = make(); }};
    ReplayReaders readers;
    readers.listener = &preset.ride;
    readers.delegate = preset.ride.delegate();
    readers.libraryLog = [&terminal](std::string_view line) { terminal.log(line); };
    preset.summary = replay(input, readers, options);
    requireRequests(preset, account.collect());
}

AnyCodable::Dictionary documentOf(const TrackedPreset& preset, const std::vector<std::string>& reasons) {
    AnyCodable::Dictionary document = preset.ride.document();
    document["options"] = preset.name;
    document["summary"] = preset.summary.document();
    document["reasons"] = AnyCodable::List(reasons.begin(), reasons.end());
    return document;
}

} // namespace

void requireRequests(const TrackedPreset& preset, const std::vector<sandbox::RequestRecord>& arrived) {
    const auto searches = static_cast<std::size_t>(std::count_if(
        arrived.begin(), arrived.end(), [](const auto& request) { return request.path() == "/locations/find"; }));
    if (searches != preset.ride.syncs().size() || arrived.size() != preset.summary.usage.requests) {
        throw Failure("the service has seen " + counted(arrived.size(), "request") + ", " + std::to_string(searches) +
                      " of them searches, while the phone sent " + std::to_string(preset.summary.usage.requests) +
                      " for " + counted(preset.ride.syncs().size(), "sync"));
    }
}

Tracked trackRide(const Ride& ride, const GlobalOptions& options, Account& account, Terminal& terminal) {
    ReplayInput input;
    input.track = "the ride";
    input.recording = ride.beginning(longestTracked);
    input.service = [&options](platform::Platform& platform) {
        return std::make_unique<platform::native::CurlTransport>(
            platform.mainQueue(), platform::native::CurlOptions{loopbackPorts(options), {}});
    };
    if (input.recording->fixes.size() < ride.fixCount()) {
        terminal.line();
        terminal.line("Of this long ride the first " + durationText(longestTracked) + " are tracked.");
    }
    std::list<TrackedPreset> tracked;
    for (const NamedOptions& named : presets()) {
        track(tracked.emplace_back(), named, input, options, account, terminal);
        printTracking(tracked.back(), terminal);
    }
    printSideBySide(tracked, terminal);
    Tracked result;
    std::size_t syncs = 0;
    std::size_t events = 0;
    for (const TrackedPreset& preset : tracked) {
        syncs += preset.ride.syncs().size();
        events += preset.ride.eventCount();
        const std::vector<std::string> reasons = reasonsFor(preset, tracked.front());
        if (!reasons.empty()) {
            terminal.line();
            terminal.line(terminal.painted("Why " + titleOf(preset) + " did less", Paint::heading));
        }
        for (const std::string& reason : reasons) {
            terminal.line("  " + reason);
        }
        result.documents.emplace_back(documentOf(preset, reasons));
    }
    result.summary = counted(syncs, "location") + " sent while tracking, " + counted(events, "event") + " found";
    return result;
}

} // namespace quorvane::tool
