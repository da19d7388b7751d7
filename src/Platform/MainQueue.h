#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace quorvane::platform {

/// Runs work on the main thread. `post`, `postAfter` and `cancel` are safe from any thread. Every implementation
/// promises:
/// - posted work runs on the main thread, one piece at a time, never inside the call that posted it;
/// - work posted without a delay runs in the order in which it was posted; delayed work runs in the order of its
///   due times, equal ones in the order in which they were posted, and never early by the monotonic clock;
/// - empty work is dropped;
/// - cancelled work never runs, and is destroyed at once or when it would have run;
/// - after `close` nothing runs any more, what was waiting is destroyed, and further posts are dropped.
class MainQueue {
public:
    using Work = std::function<void()>;

    /// Names one piece of delayed work. 0 names none.
    using Ticket = std::uint64_t;

    MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    virtual ~MainQueue() = default;

    virtual void post(Work work) = 0;

    /// Runs @p work once, @p delay from now (a negative delay counts as none).
    virtual Ticket postAfter(std::chrono::nanoseconds delay, Work work) = 0;

    /// Takes back delayed work. A ticket that has run, was cancelled or is 0 is ignored.
    virtual void cancel(Ticket ticket) = 0;

    /// Whether the caller is on the main thread.
    [[nodiscard]] virtual bool isMainThread() const = 0;

    /// Called once, on the main thread, when the platform is taken out of use.
    virtual void close() = 0;
};

} // namespace quorvane::platform
