#pragma once

#include <chrono>
#include <functional>
#include <utility>

#include "Platform/MainQueue.h"

namespace quorvane::platform {

/// One piece of work on the main queue, later, unless it is stopped or started anew before.
class Delay {
public:
    /// @p theQueue outlives this.
    explicit Delay(MainQueue& theQueue) : queue(theQueue) {}
    Delay(const Delay&) = delete;
    Delay& operator=(const Delay&) = delete;
    ~Delay() { stop(); }

    void start(std::chrono::nanoseconds time, std::function<void()> work) {
        stop();
        ticket = queue.postAfter(time, [this, work = std::move(work)] {
            ticket = 0;
            work();
        });
    }
    void stop() { queue.cancel(std::exchange(ticket, 0)); }
    [[nodiscard]] bool isRunning() const { return ticket != 0; }

private:
    MainQueue& queue;
    MainQueue::Ticket ticket = 0;
};

} // namespace quorvane::platform
