#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "Platform/Clock.h"
#include "Platform/MainQueue.h"

namespace quorvane::platform {
class WaitingWork;
}

namespace quorvane::testing {

/// A main queue that runs its work when it is told to, on the thread that made it (the main thread).
///
/// Inside a `SimulatedPlatform` use `SimulatedPlatform::advance` and its siblings instead of the `run` functions here.
class SimulatedMainQueue : public platform::MainQueue {
public:
    /// @p clock outlives the queue.
    explicit SimulatedMainQueue(const platform::Clock& clock);
    ~SimulatedMainQueue() override;

    void post(Work work) override;
    Ticket postAfter(std::chrono::nanoseconds delay, Work work) override;
    void cancel(Ticket ticket) override;
    [[nodiscard]] bool isMainThread() const override;
    void close() override;

    /// While suspended nothing runs and nothing is due; what is posted waits. Delayed work that falls due meanwhile
    /// runs when the queue goes on.
    void setSuspended(bool suspend);
    [[nodiscard]] bool isSuspended() const { return suspended; }

    /// Runs the piece of work that is next now: posted work first, then delayed work in the order of its due times.
    /// Main thread, never inside a piece of work. False when there was none.
    bool runNext();

    /// As `runNext`, but of delayed work only.
    bool runNextDelayed();

    /// Whether anything could run now without the clock moving.
    [[nodiscard]] bool hasWork() const;

    /// The first due time after now, by the monotonic clock.
    [[nodiscard]] std::optional<std::chrono::nanoseconds> nextDue() const;

    /// Pieces of delayed work that wait for their due time or are due.
    [[nodiscard]] std::size_t delayedCount() const;

    /// Waits in real time until there is posted work or @p realTime has passed. Answers whether there is any.
    bool waitForPost(std::chrono::milliseconds realTime);

    /// Whether a piece of work is running now.
    [[nodiscard]] bool isRunning() const { return running; }

private:
    bool run(bool delayedOnly);

    const platform::Clock& clock;
    const std::thread::id mainThread = std::this_thread::get_id();
    mutable std::mutex mutex;
    std::condition_variable arrived;
    const std::unique_ptr<platform::WaitingWork> waiting;
    bool running = false;
    std::atomic<bool> suspended = false;
};

} // namespace quorvane::testing
