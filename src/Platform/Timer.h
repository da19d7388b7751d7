#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace quorvane::platform {

class Clock;
class MainQueue;

/// Calls back at a fixed interval until it is invalidated or destroyed. Lives on the main thread, as do its calls.
///
/// The n-th call is due n intervals after construction, however late the calls before it were; intervals that have
/// passed entirely while the main thread was busy are skipped, not made up for. The callback may invalidate or
/// destroy the timer.
class Timer {
public:
    /// @p interval below one millisecond counts as one millisecond.
    Timer(Clock& clock, MainQueue& queue, std::chrono::nanoseconds interval, std::function<void()> callback);
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer();

    /// No further call comes after this returns. May be called again.
    void invalidate();

    [[nodiscard]] bool isValid() const;

private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace quorvane::platform
