#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "Platform/Platform.h"
#include "testing/MemoryFileManager.h"
#include "testing/MemoryPreferences.h"
#include "testing/ScriptedTransport.h"
#include "testing/SimulatedApplication.h"
#include "testing/SimulatedClock.h"
#include "testing/SimulatedDevice.h"
#include "testing/SimulatedDigest.h"
#include "testing/SimulatedLocations.h"
#include "testing/SimulatedMainQueue.h"
#include "testing/SimulatedRandom.h"

namespace quorvane::testing {

/// How a simulated platform begins.
struct SimulatedOptions {
    /// A clock that is shared with others and goes on from launch to launch; `start` and `offsetFromUTC` do not count
    /// then. None: a clock of the platform's own.
    std::shared_ptr<SimulatedClock> clock;
    platform::Date start = SimulatedClock::start;
    std::chrono::seconds offsetFromUTC{0};
    /// Of the random bytes: the same seed gives the same bytes.
    std::uint64_t seed = 1;
    /// What an earlier launch left in its preferences and files; none begins empty.
    std::shared_ptr<MemoryPreferences::Contents> preferences;
    std::shared_ptr<MemoryFileManager::Contents> files;
    /// What an earlier launch left with the location services: permission, the last location, monitored regions.
    std::shared_ptr<SimulatedLocations::Contents> locations;
    /// Makes the transport to a real service, on the main queue of the given platform. None: nothing is real.
    std::function<std::unique_ptr<platform::HTTPTransport>(platform::Platform& platform)> transport;
};

/// A whole platform in memory, on which nothing happens unless the test lets it: time stands still between calls of
/// `advance`. The thread that makes it is its main thread; only the parts that say so are safe from others.
class SimulatedPlatform : public platform::Platform {
public:
    [[nodiscard]] static std::shared_ptr<SimulatedPlatform> make(const SimulatedOptions& options = {});
    ~SimulatedPlatform() override;

    /// Pieces of work that may run at one moment of virtual time before it is taken to have no end.
    static constexpr int maxStepsAtOnce = 10'000;
    /// How long, in real time, a request to a real service may keep the virtual clock standing.
    static constexpr std::chrono::seconds maxRealWait{15};

    /// Moves the clock by @p duration, which is not negative, and runs what falls due on the way: at each moment first
    /// posted work, then delayed work in the order of its due times, with the clock at each due time. While a request
    /// to a real service is in flight the clock stands and its answer is waited for.
    ///
    /// Answers false when at some moment the work had no end (what was left runs at the next moment) or a real
    /// answer failed to come.
    bool advance(std::chrono::nanoseconds duration);

    /// Runs what can run without the clock moving, at most @p maxSteps pieces of work, and waits for answers of a real
    /// service. Answers whether nothing is left.
    bool runUntilIdle(int maxSteps = maxStepsAtOnce);

    /// Runs what can run without the clock moving until @p condition holds, waiting for work that other threads post.
    /// Gives up after @p realTime. Answers whether @p condition holds.
    bool runUntil(const std::function<bool()>& condition, std::chrono::milliseconds realTime = maxRealWait);

    /// Sets the wall clock without letting time pass.
    void setWallTime(platform::Date now) { simulatedClock->setWallTime(now); }

    /// Options for the next launch of the same application: its preferences, files, regions and wall time are kept, its
    /// random bytes are others.
    [[nodiscard]] SimulatedOptions nextLaunch() const;

    [[nodiscard]] SimulatedClock& clock() override { return *simulatedClock; }
    [[nodiscard]] SimulatedMainQueue& mainQueue() override { return simulatedQueue; }
    [[nodiscard]] MemoryPreferences& preferences() override { return memoryPreferences; }
    [[nodiscard]] ScriptedTransport& transport() override { return scriptedTransport; }
    [[nodiscard]] SimulatedDigest& digest() override { return simulatedDigest; }
    [[nodiscard]] SimulatedRandom& random() override { return simulatedRandom; }
    [[nodiscard]] MemoryFileManager& files() override { return memoryFiles; }
    [[nodiscard]] SimulatedApplication& application() override { return simulatedApplication; }
    [[nodiscard]] SimulatedDevice& device() override { return simulatedDevice; }
    [[nodiscard]] SimulatedLocations& locationManagers() override { return simulatedLocations; }

private:
    explicit SimulatedPlatform(const SimulatedOptions& options);

    bool runThisMoment();

    const SimulatedOptions initial;
    const std::shared_ptr<SimulatedClock> simulatedClock;
    SimulatedMainQueue simulatedQueue;
    SimulatedApplication simulatedApplication;
    MemoryPreferences memoryPreferences;
    MemoryFileManager memoryFiles;
    SimulatedDigest simulatedDigest;
    SimulatedRandom simulatedRandom;
    SimulatedDevice simulatedDevice;
    SimulatedLocations simulatedLocations;
    ScriptedTransport scriptedTransport;
};

} // namespace quorvane::testing
