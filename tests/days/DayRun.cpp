#include "days/DayRun.h"

#include <memory>
#include <stdexcept>
#include <utility>
#include <variant>

#include "Facade/Quorvane.h"
#include "JSON/JSON.h"
#include "days/DayScript.h"
#include "days/DayService.h"
#include "testing/SimulatedPhone.h"
#include "testing/TrackReader.h"

namespace quorvane::days {
namespace {

using platform::LocationAuthorization;
using quorvane::testing::DecisionLog;
using quorvane::testing::PhoneOptions;
using quorvane::testing::SimulatedPhone;
using quorvane::testing::phone::LaunchReason;

std::shared_ptr<QuorvaneTrackingOptions> optionsOf(const std::string& text) {
    if (text == "continuous") {
        return QuorvaneTrackingOptions::CONTINUOUS();
    }
    if (text == "responsive") {
        return QuorvaneTrackingOptions::RESPONSIVE();
    }
    if (text == "efficient") {
        return QuorvaneTrackingOptions::EFFICIENT();
    }
    return std::make_shared<QuorvaneTrackingOptions>(json::decode<QuorvaneTrackingOptions>(text));
}

quorvane::testing::Track readTrack(const std::string& path) {
    quorvane::testing::TrackResult result = quorvane::testing::readTrack(path);
    if (const auto* const error = std::get_if<quorvane::testing::TrackError>(&result)) {
        throw std::runtime_error(error->message);
    }
    return std::get<quorvane::testing::Track>(std::move(result));
}

class DayRun {
public:
    DayRun(const DayScript& theDay, quorvane::testing::Track theTrack, DecisionLog::Format format)
        : day(theDay),
          track(std::move(theTrack)),
          start(track.fixes.front().timestamp),
          service(day.places, day.firstTokenSeconds),
          phone(optionsAt(start)),
          log(phone.clock(), format, [this](std::string_view line) { text += line; }) {
        phone.setObservers(&log, &log);
        phone.setHost([this](LaunchReason) {
            service.answer(phone.platform().transport());
            Quorvane::initialize("UVZTT0NB-day-key");
            if (!std::exchange(hasStarted, true)) {
                Quorvane::Tracking::start(optionsOf(day.options));
            }
            return nullptr;
        });
        for (const Happening& happening : day.happenings) {
            phone.world().postAfter(happening.at - start, [this, happening] { happen(happening); });
        }
    }
    ~DayRun() { phone.setObservers(nullptr, nullptr); }

    std::string run() {
        phone.follow(std::move(track));
        phone.launch();
        phone.advance(std::chrono::seconds(1));
        phone.enterBackground();
        phone.advance(day.until - start - std::chrono::seconds(1));
        log.summarize(phone.usage());
        return text;
    }

private:
    static PhoneOptions optionsAt(platform::Date start) {
        PhoneOptions options;
        options.platform.start = start;
        return options;
    }

    void happen(const Happening& happening) {
        const std::string& what = happening.what;
        const std::string& value = happening.value;
        if (what == "permission") {
            phone.setAuthorization(value == "denied" ? LocationAuthorization::denied : LocationAuthorization::always);
        } else if (what == "signal") {
            phone.setSignal(value == "found");
        } else if (what == "accuracy") {
            phone.setAccuracy(value == "track" ? std::nullopt : std::optional(std::stod(value)));
        } else if (what == "clock") {
            phone.setWallTime(phone.clock().now() + std::chrono::seconds(std::stoll(value)));
        } else if (what == "service") {
            service.setState(value);
        } else if (what == "identity") {
            service.setIdentity(value);
        } else if (what == "tracking" && value == "off") {
            Quorvane::Tracking::stop();
        } else if (what == "app" && value == "ends") {
            phone.terminate();
        } else if (what == "app" && value == "opened") {
            phone.launch();
        } else if (what == "app" && value == "left") {
            phone.enterBackground();
        } else {
            throw std::runtime_error("nothing happens like this: " + what + ' ' + value);
        }
    }

    const DayScript day;
    quorvane::testing::Track track;
    const platform::Date start;
    bool hasStarted = false;
    DayService service;
    std::string text;
    SimulatedPhone phone;
    DecisionLog log;
};

} // namespace

std::string runDay(const std::string& folder, const std::string& name, DecisionLog::Format format) {
    const DayScript day = readDay(folder + '/' + name + ".day");
    return DayRun(day, readTrack(folder + '/' + day.track), format).run();
}

} // namespace quorvane::days
