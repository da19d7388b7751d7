#include "fuzz/Tracking/World.h"

#include <algorithm>
#include <utility>

#include "API/QVEndpoints.h"
#include "API/QuorvaneAPI.h"
#include "Core/Configured.h"
#include "Core/QVSettings.h"
#include "Core/QuorvaneDelegate.h"
#include "Tracking/QVTrackingService.h"
#include "fuzz/Require.h"
#include "fuzz/Tracking/Choices.h"

namespace quorvane::fuzz {
namespace {

using namespace std::chrono_literals;
using platform::LocationAuthorization;

constexpr int deepest = 3;
constexpr int mostRelaunches = 2;
/// A location, and a moment, with which nothing is wrong.
constexpr platform::Coordinate home{46.0, 14.5};

} // namespace

/// Calls back from time to time.
class World::Host : public QuorvaneDelegate {
public:
    explicit Host(World& theWorld) : world(theWorld) {}

    void onClientLocationUpdated(const platform::Location&, bool, QVLocationSource) override { world.reenter(); }
    void onError(QVStatus) override { world.reenter(); }
    void onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>&, const std::shared_ptr<QVUser>&) override {}
    void onLocationUpdated(const platform::Location&, const std::shared_ptr<QVUser>&) override { world.reenter(); }
    void onLog(const std::string&) override {}

private:
    World& world;
};

World::World(Bytes& theBytes) : bytes(theBytes), host(std::make_shared<Host>(*this)), shortestInterval(1h) {
    constexpr std::int64_t farFuture = 7'000'000'000;
    platform::PreferencesStore& preferences = phone->preferences();
    preferences.setString("quorvane_access_key", "key");
    preferences.setString("quorvane_user_id", "rider");
    preferences.setString("quorvane_access_token", "Bearer token");
    preferences.setString("quorvane_refresh_token", "token");
    preferences.setInteger("qourvane_access_token_expiry", farFuture);
    launch();
}

World::~World() {
    rules.reset();
}

void World::launch() {
    QuorvaneAPI::shared().setEndpoints(QVEndpoints(QuorvaneAPI::Environment::LOCAL));
    phone->transport().answer("GET", "/locations/find", testing::ScriptedAnswer::json(R"({"data":[]})"));
    rules.emplace(*phone);
    manager().delegate = host;
    QVTrackingService::shared().delegate = host;
    settle();
}

void World::relaunch() {
    if (++relaunches <= mostRelaunches) {
        rules->loseCallers();
        rules.reset();
        phone.relaunch();
        launch();
    }
}

void World::settle() {
    depth = deepest;
    require(phone->runUntilIdle(), "the work of a moment has no end");
    rules->check();
}

void World::advance(std::chrono::nanoseconds duration) {
    constexpr int mostTicks = 16;
    depth = deepest;
    require(phone->advance(std::min(duration, shortestInterval * mostTicks)), "the work of a moment has no end");
    rules->check();
}

void World::ask() {
    const auto caller = std::make_shared<Caller>();
    manager().getLocation(chooseAccuracy(bytes), [this, caller](QVStatus status, const auto& location, bool) {
        caller->answered();
        require((status == QVStatus::SUCCESS) == location.has_value(), "a status without its location");
        reenter();
    });
    rules->asked(caller);
}

void World::track() {
    const auto caller = std::make_shared<Caller>();
    const bool isSent = isConfigured();
    const platform::Location location = chooseFix(bytes, now());
    rules->syncs(caller, isSent);
    QVTrackingService::shared().track(location, bytes.flag(), chooseSource(bytes), bytes.flag(),
                                      [this, caller](QVStatus status, const auto& response) {
                                          caller->answered();
                                          require((status == QVStatus::SUCCESS) == (response != nullptr),
                                                  "a status without its result");
                                          reenter();
                                      });
}

void World::reenter() {
    if (depth == 0 || bytes.isEmpty()) {
        return;
    }
    --depth;
    switch (bytes.below(12)) {
        case 0:
            ask();
            break;
        case 1:
            manager().handleLocation(chooseFix(bytes, now()), chooseSource(bytes));
            break;
        case 2:
            track();
            break;
        case 3:
            manager().stopTracking();
            break;
        case 4:
            manager().updateTracking(std::nullopt);
            break;
        default:
            break;
    }
}

void World::store(const QuorvaneTrackingOptions& options) {
    for (const std::int64_t interval : {options.desiredMovingUpdateInterval, options.desiredStoppedUpdateInterval}) {
        if (interval < 0) {
            shortestInterval = 1ms;
        } else if (interval > 0 && interval < 3600) {
            shortestInterval = std::min(shortestInterval, std::chrono::nanoseconds(std::chrono::seconds(interval)));
        }
    }
    QVSettings::setTrackingOptions(options);
}

void World::step() {
    constexpr std::chrono::nanoseconds durations[] = {1s, 500ms, 1ns, 2s, 10s, 20s, 30s, 150s, 600s};
    constexpr std::chrono::nanoseconds jumps[] = {-1s, 1s, -1h, 1h, -24h * 365, 24h * 365};
    depth = deepest;
    switch (bytes.below(8)) {
        case 0:
        case 1:
            manager().handleLocation(chooseFix(bytes, now()), chooseSource(bytes));
            break;
        case 2:
            advance(bytes.oneOf(durations));
            break;
        case 3:
            phone->setWallTime(now() + bytes.oneOf(jumps));
            break;
        case 4:
            doOnPhone();
            break;
        case 5:
            doInService();
            break;
        case 6:
            doInHost();
            break;
        default:
            doToState();
            break;
    }
    settle();
}

void World::finish() {
    phone->preferences().setString("quorvane_access_key", "key");
    phone->transport().answer("GET", "/locations/find", testing::ScriptedAnswer::json(R"({"data":[]})"));
    phone->transport().holdAnswers(false);
    static_cast<void>(phone->transport().deliver());
    phone->locationManagers().setAuthorization(LocationAuthorization::always);
    store(QuorvaneTrackingOptions());
    manager().stopTracking();
    settle();
    shortestInterval = 1h;
    advance(31s);
    rules->checkTimeouts();

    manager().handleLocation(platform::Location{home, 10, 5, now()}, QVLocationSource::FOREGROUND_LOCATION);
    settle();
    advance(180s);
    rules->checkEnd();
}

} // namespace quorvane::fuzz
