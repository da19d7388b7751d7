#include "Models/QuorvaneTrackingOptions.h"

#include "Models/DateDescription.h"
#include "Models/DesiredAccuracyName.h"
#include "Platform/Registry.h"

namespace quorvane {
namespace {

using Options = QuorvaneTrackingOptions;

std::shared_ptr<Options> makeContinuous() {
    auto options = std::make_shared<Options>();
    options->desiredAccuracy = Options::DesiredAccuracy::HIGH;
    options->desiredMovingUpdateInterval = 30;
    options->desiredStoppedUpdateInterval = 30;
    options->desiredSyncInterval = 20;
    options->showBlueBar = true;
    options->stopDistance = 70;
    options->stopDuration = 140;
    options->sync = Options::Sync::ALL;
    return options;
}

std::shared_ptr<Options> makeResponsive() {
    auto options = std::make_shared<Options>();
    options->desiredAccuracy = Options::DesiredAccuracy::MEDIUM;
    options->desiredMovingUpdateInterval = 150;
    options->desiredSyncInterval = 140;
    options->replay = Options::Replay::STOPS;
    options->stopDistance = 70;
    options->stopDuration = 140;
    options->stoppedGeofenceRadius = 200;
    options->sync = Options::Sync::STOPS_AND_EXITS;
    options->useSignificantLocationChanges = true;
    options->useStoppedGeofence = true;
    options->useVisits = true;
    return options;
}

std::shared_ptr<Options> makeEfficient() {
    auto options = std::make_shared<Options>();
    options->desiredAccuracy = Options::DesiredAccuracy::MEDIUM;
    options->replay = Options::Replay::STOPS;
    options->sync = Options::Sync::STOPS_AND_EXITS;
    options->useVisits = true;
    return options;
}

/// The presets of the platform in use; all made together, so that no accessor has to guard its first use.
struct Presets {
    explicit Presets(platform::Platform&) {}

    std::shared_ptr<Options> continuous = makeContinuous();
    std::shared_ptr<Options> responsive = makeResponsive();
    std::shared_ptr<Options> efficient = makeEfficient();
};

std::string textOf(std::int64_t number) {
    return std::to_string(number);
}

std::string textOf(bool flag) {
    return flag ? "true" : "false";
}

std::string textOf(QVDesiredAccuracy accuracy) {
    const auto name = nameOf(accuracy);
    return name ? std::string(*name) : textOf(static_cast<std::int64_t>(accuracy));
}

std::string textOf(QVReplay replay) {
    switch (replay) {
        case QVReplay::NONE:
            return "NONE";
        case QVReplay::STOPS:
            return "STOPS";
    }
    return textOf(static_cast<std::int64_t>(replay));
}

std::string textOf(QVSync sync) {
    switch (sync) {
        case QVSync::NONE:
            return "NONE";
        case QVSync::STOPS_AND_EXITS:
            return "STOPS_AND_EXITS";
        case QVSync::ALL:
            return "ALL";
    }
    return textOf(static_cast<std::int64_t>(sync));
}

std::string textOf(json::Date date) {
    return descriptionOf(date);
}

template <class Value>
std::string textOf(const std::optional<Value>& value) {
    return value ? "Optional(" + textOf(*value) + ")" : "nil";
}

} // namespace

std::shared_ptr<QuorvaneTrackingOptions> QuorvaneTrackingOptions::CONTINUOUS() {
    return platform::shared<Presets>().continuous;
}

std::shared_ptr<QuorvaneTrackingOptions> QuorvaneTrackingOptions::RESPONSIVE() {
    return platform::shared<Presets>().responsive;
}

std::shared_ptr<QuorvaneTrackingOptions> QuorvaneTrackingOptions::EFFICIENT() {
    return platform::shared<Presets>().efficient;
}

std::string QuorvaneTrackingOptions::description() const {
    std::string text = "QuorvaneTrackingOptions:\n";
    const auto line = [&text](const char* name, const auto& value) {
        text.append("\t\t\t").append(name).append(" = ").append(textOf(value)).append("\n");
    };
    line("desiredAccuracy", desiredAccuracy);
    line("desiredMovingUpdateInterval", desiredMovingUpdateInterval);
    line("desiredStoppedUpdateInterval", desiredStoppedUpdateInterval);
    line("desiredSyncInterval", desiredSyncInterval);
    line("movingGeofenceRadius", movingGeofenceRadius);
    line("replay", replay);
    line("showBlueBar", showBlueBar);
    line("startTrackingAfter", startTrackingAfter);
    line("stopDistance", stopDistance);
    line("stopDuration", stopDuration);
    line("stoppedGeofenceRadius", stoppedGeofenceRadius);
    line("stopTrackingAfter", stopTrackingAfter);
    line("sync", sync);
    line("useMovingGeofence", useMovingGeofence);
    line("useSignificantLocationChanges", useSignificantLocationChanges);
    line("useStoppedGeofence", useStoppedGeofence);
    line("useVisits", useVisits);
    return text;
}

void QuorvaneTrackingOptions::willDecode() {
    desiredAccuracy.reset();
    replay.reset();
    sync.reset();
}

} // namespace quorvane
