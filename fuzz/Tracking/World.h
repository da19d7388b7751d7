#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "Tracking/QVLocationManager.h"
#include "fuzz/Bytes.h"
#include "fuzz/Tracking/Rules.h"
#include "testing/InstalledPlatform.h"

namespace quorvane::fuzz {

/// A simulated platform on which an application tracks, and to which its user, its host, the phone and the service do
/// whatever the bytes of an input say.
class World {
public:
    explicit World(Bytes& theBytes);
    ~World();

    /// One thing that happens, and all that comes of it at this moment.
    void step();
    /// Lets everything that was begun come to its end.
    void finish();

private:
    class Host;

    void launch();
    void relaunch();
    void settle();
    void advance(std::chrono::nanoseconds duration);

    void ask();
    void track();
    /// What a host may do inside a callback.
    void reenter();
    void doOnPhone();
    void doInService();
    void doInHost();
    void doToState();
    void store(const QuorvaneTrackingOptions& options);

    [[nodiscard]] static QVLocationManager& manager() { return QVLocationManager::shared(); }
    [[nodiscard]] platform::Date now() const { return phone->clock().now(); }

    Bytes& bytes;
    testing::InstalledPlatform phone;
    std::shared_ptr<Host> host;
    std::optional<Rules> rules;
    /// How deep callbacks that call back may still go.
    int depth = 0;
    /// Of all timers so far: the shortest interval, which limits how far time moves at once.
    std::chrono::nanoseconds shortestInterval;
    int relaunches = 0;
};

} // namespace quorvane::fuzz
