// What phone, service, host and storage do to a world.

#include "Platform/PreferencesStore.h"
#include "fuzz/Tracking/Choices.h"
#include "fuzz/Tracking/World.h"

namespace quorvane::fuzz {

using platform::LocationAuthorization;

void World::doOnPhone() {
    constexpr LocationAuthorization statuses[] = {LocationAuthorization::always, LocationAuthorization::whenInUse,
                                                  LocationAuthorization::denied, LocationAuthorization::notDetermined};
    constexpr double backgroundTimes[] = {platform::Application::foreground, 180, 20, 19.9, 0};
    testing::SimulatedLocations& locations = phone->locationManagers();
    const auto& regions = locations.regions();
    switch (bytes.below(10)) {
        case 0:
            locations.receive(chooseFix(bytes, now()));
            break;
        case 1:
            locations.receiveSignificantChange(chooseFix(bytes, now()));
            break;
        case 2:
            locations.visit({{46.0, 14.5}, 25, now(), bytes.flag() ? platform::distantFuture : now()});
            break;
        case 3:
            locations.enter(regions.empty() ? "" : regions[bytes.below(regions.size())].identifier);
            break;
        case 4:
            locations.exit(regions.empty() ? "" : regions[bytes.below(regions.size())].identifier);
            break;
        case 5:
            locations.fail({platform::LocationError::Kind::unknown, "No signal."});
            break;
        case 6:
            locations.setAuthorization(bytes.oneOf(statuses));
            break;
        case 7:
            locations.setLastLocation(chooseFix(bytes, now()));
            break;
        case 8:
            phone->application().setBackgroundTimeRemaining(bytes.oneOf(backgroundTimes));
            break;
        default:
            phone->application().expireAll();
            break;
    }
}

void World::doInService() {
    testing::ScriptedTransport& transport = phone->transport();
    switch (bytes.below(4)) {
        case 0:
            transport.answer("GET", "/locations/find", chooseAnswer(bytes));
            break;
        case 1:
            transport.holdAnswers(bytes.flag());
            break;
        case 2:
            static_cast<void>(transport.deliverNext());
            break;
        default:
            transport.answerOnce("GET", "/locations/find", chooseAnswer(bytes));
            break;
    }
}

void World::doInHost() {
    switch (bytes.below(6)) {
        case 0: {
            const QuorvaneTrackingOptions options = chooseOptions(bytes, now());
            store(options);
            manager().startTracking(options);
            break;
        }
        case 1:
            manager().stopTracking();
            break;
        case 2:
            ask();
            break;
        case 3:
            track();
            break;
        case 4:
            manager().updateTracking(bytes.flag() ? std::optional(chooseFix(bytes, now())) : std::nullopt);
            break;
        default:
            store(chooseOptions(bytes, now()));
            break;
    }
}

void World::doToState() {
    constexpr const char* removable[] = {"quorvane_stopped",
                                         "quorvane_last_sent_at",
                                         "quorvane_last_moved_location",
                                         "quorvane_last_moved_at",
                                         "quorvane_last_failed_stopped_location",
                                         "quorvane_tracking_options"};
    platform::PreferencesStore& preferences = phone->preferences();
    switch (bytes.below(6)) {
        case 0:
            preferences.remove(bytes.oneOf(removable));
            break;
        case 1:
            preferences.setString(bytes.oneOf(removable), "{}");
            break;
        case 2:
            preferences.setBoolean("quorvane_can_exit", bytes.flag());
            break;
        case 3:
            preferences.setOptionalString("quorvane_access_key",
                                          bytes.flag() ? std::optional<std::string>("key") : std::nullopt);
            break;
        case 4:
            manager().verbose = bytes.flag();
            preferences.setInteger("quorvane_log_level", bytes.flag() ? 4 : 0);
            break;
        default:
            relaunch();
            break;
    }
}

} // namespace quorvane::fuzz
