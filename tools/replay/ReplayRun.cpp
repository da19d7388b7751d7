#include "tools/replay/ReplayRun.h"

#include <algorithm>
#include <utility>

#include "Facade/Quorvane.h"
#include "Tracking/TrackingObserver.h"
#include "testing/DateText.h"
#include "testing/SimulatedPhone.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/Interruption.h"

namespace quorvane::tool {
namespace {

using testing::SimulatedPhone;
using testing::TrackReader;

/// Counts what happens on a phone, and writes it down where there is a log, as long as it lives.
class Witness : public TrackingObserver, public testing::phone::Observer {
public:
    Witness(SimulatedPhone& thePhone, ReplaySummary& theSummary, const ReplayReaders& readers)
        : phone(thePhone), summary(theSummary), listener(readers.listener) {
        if (readers.log) {
            log.emplace(phone.clock(), readers.log->format, readers.log->output);
        }
        phone.setObservers(this, this);
    }
    ~Witness() override { phone.setObservers(nullptr, nullptr); }

    void observe(const observed::Observation& observation) override {
        summary.count(observation);
        if (log) {
            log->observe(observation);
        }
        if (listener != nullptr) {
            listener->observed(phone.clock().now(), observation);
        }
    }
    void happened(const testing::phone::Event& event) override {
        if (log) {
            log->happened(event);
        }
        if (listener != nullptr) {
            listener->happened(phone.clock().now(), event);
        }
    }

private:
    SimulatedPhone& phone;
    ReplaySummary& summary;
    ReplayListener* const listener;
    std::optional<testing::DecisionLog> log;
};

/// Virtual time for which the records of the platform's parts may grow.
constexpr std::chrono::hours longestUntidied(1);

/// The fixes of a recording, from a file or from memory.
class Recording {
public:
    explicit Recording(const ReplayInput& input) : track(input.recording), reader(input.reader) {
        if (!track && !reader) {
            reader = openRecording(input.track);
        }
    }

    std::optional<platform::Location> next() {
        if (reader) {
            return reader->next();
        }
        return taken < track->fixes.size() ? std::optional(track->fixes[taken++]) : std::nullopt;
    }
    void requireNoError() const {
        if (reader && reader->error()) {
            throw Failure(reader->error()->message);
        }
    }

private:
    const std::shared_ptr<const testing::Track> track;
    std::size_t taken = 0;
    std::shared_ptr<TrackReader> reader;
};

/// One replay from its first fix to its end.
class Run {
public:
    Run(const ReplayInput& theInput, const ReplayReaders& theReaders, const GlobalOptions& theGlobal)
        : input(theInput),
          readers(theReaders),
          global(theGlobal),
          recording(theInput),
          first(recording.next()),
          phone(phoneOptions()) {
        summary.options = input.options.name;
    }

    ReplaySummary carryOut() {
        const Witness witness(phone, summary, readers);
        phone.follow([this] { return nextFix(); });
        phone.setHost([this](testing::phone::LaunchReason) {
            if (!input.service) {
                serve(phone.platform().transport(), input.places);
            }
            Quorvane::setDelegate(readers.delegate);
            Quorvane::initialize(global.key);
            Quorvane::setLogLevel(global.logLevel.value_or(QVLogLevel::NONE));
            return nullptr;
        });
        phone.launch();
        advance({});
        Quorvane::Tracking::start(input.options.make());
        advance({});
        phone.enterBackground();
        followToTheEnd();
        advance(replayTail);
        tidy();
        summary.duration += replayTail;
        summary.passedOver = phone.path()->passedOver();
        summary.usage = phone.usage();
        return summary;
    }

private:
    testing::PhoneOptions phoneOptions() const {
        recording.requireNoError();
        testing::PhoneOptions options;
        options.platform.start = first->timestamp;
        options.platform.transport = input.service;
        return options;
    }

    std::optional<platform::Location> nextFix() {
        auto fix = first ? std::exchange(first, std::nullopt) : recording.next();
        summary.recorded += fix ? 1 : 0;
        if (fix && readers.listener != nullptr) {
            readers.listener->recorded(*fix);
        }
        return fix;
    }

    void followToTheEnd() {
        constexpr std::size_t fixesBetweenTidying = 256;
        std::size_t fixes = 0;
        std::chrono::nanoseconds tidied{0};
        while (const auto next = phone.path()->next()) {
            // Tracking works on where nothing was recorded for long.
            const std::chrono::nanoseconds reached = std::min(*next, tidied + longestUntidied);
            advance(reached - summary.duration);
            summary.duration = reached;
            // A phone on which nothing wants a location does not look where it is.
            if (reached == *next && phone.path()->next() == next) {
                (void)phone.position();
            }
            if (fixes++ % fixesBetweenTidying == 0 || reached == tidied + longestUntidied) {
                tidy();
                tidied = reached;
            }
        }
        recording.requireNoError();
        if (!phone.path()->problem().empty()) {
            throw Failure(nameOfFile(input.track) + ": " + phone.path()->problem());
        }
    }

    void advance(std::chrono::nanoseconds duration) {
        Interruption::check();
        if (!phone.advance(duration)) {
            throw Failure(nameOfFile(input.track) + ": the work of the application had no end at " +
                          testing::dateText(phone.clock().now()));
        }
    }

    /// Keeps the records of the platform's parts from growing.
    void tidy() {
        testing::SimulatedPlatform& platform = phone.platform();
        platform.transport().forgetRequests();
        if (global.logLevel) {
            for (const std::string& line : platform.application().outputLines()) {
                readers.libraryLog(line);
            }
        }
        platform.application().clearOutput();
    }

    const ReplayInput& input;
    const ReplayReaders& readers;
    const GlobalOptions& global;
    Recording recording;
    std::optional<platform::Location> first;
    ReplaySummary summary;
    SimulatedPhone phone;
};

} // namespace

std::shared_ptr<TrackReader> openRecording(const std::string& path) {
    testing::TrackError error;
    std::shared_ptr<TrackReader> reader = TrackReader::open(path, error);
    if (!reader) {
        throw Failure(error.message);
    }
    return reader;
}

ReplaySummary replay(const ReplayInput& input, const ReplayReaders& readers, const GlobalOptions& global) {
    return Run(input, readers, global).carryOut();
}

} // namespace quorvane::tool
