#include "tools/demo/TrackingStep.h"

#include <memory>
#include <string>

#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Native/CurlTransport.h"
#include "tools/Failure.h"
#include "tools/Session.h"
#include "tools/Table.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Account.h"
#include "tools/demo/Ride.h"
#include "tools/demo/TrackedRide.h"
#include "tools/replay/ReplayRun.h"

namespace quorvane::tool {
namespace {

std::string wordsFor(const TrackedRide::Event& event) {
    switch (event.type) {
        case QVEventType::USER_STARTED_TRAVELING:
            return "went on";
        case QVEventType::USER_STOPPED_TRAVELING:
            return "stopped";
        case QVEventType::USER_ENTERED_PLACE:
            return "entered " + event.name;
        case QVEventType::USER_EXITED_PLACE:
            return "left " + event.name;
        case QVEventType::USER_ENTERED_GEOFENCE:
            return "entered the fence of " + event.name;
        case QVEventType::USER_EXITED_GEOFENCE:
            return "left the fence of " + event.name;
        default:
            return "";
    }
}

} // namespace

AnyCodable::List trackRide(const Ride& ride, const GlobalOptions& options, Account& account, Terminal& terminal) {
    ReplayInput input;
    input.track = "the ride";
    input.recording = ride.recording();
    input.service = [&options](platform::Platform& platform) {
        return std::make_unique<platform::native::CurlTransport>(
            platform.mainQueue(), platform::native::CurlOptions{loopbackPorts(options), {}});
    };
    AnyCodable::List documents;
    for (const NamedOptions& preset : presets()) {
        input.options = preset;
        TrackedRide tracked;
        ReplayReaders readers;
        readers.listener = &tracked;
        readers.delegate = tracked.delegate();
        readers.libraryLog = [&terminal](std::string_view line) { terminal.log(line); };
        const ReplaySummary summary = replay(input, readers, options);
        account.collect();
        terminal.line();
        terminal.line(terminal.painted("Tracking, " + preset.name, Paint::heading));
        Table table({{"time"}, {"answer"}, {"events", 200}});
        for (const TrackedRide::Sync& sync : tracked.syncs()) {
            std::string words;
            for (const TrackedRide::Event& event : sync.events) {
                words += (words.empty() ? "" : "; ") + wordsFor(event);
            }
            table.add({timeText(sync.time), sync.answer ? std::to_string(*sync.answer) : "none", words});
        }
        table.print(terminal, 2);
        AnyCodable::Dictionary document = tracked.document();
        document["summary"] = summary.document();
        documents.emplace_back(std::move(document));
    }
    return documents;
}

} // namespace quorvane::tool
