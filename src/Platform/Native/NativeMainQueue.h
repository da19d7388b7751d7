#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

#include "Platform/MainQueue.h"

namespace quorvane::platform {

/// A main queue that is run by its program. `run`, `runUntil` and `poll` are called on the main thread, never from
/// work that the queue runs; an exception that leaves a piece of work passes through them.
class NativeMainQueue : public MainQueue {
public:
    /// One without a toolkit. The thread that calls this is the main thread.
    [[nodiscard]] static std::unique_ptr<NativeMainQueue> make();

    /// Runs work as it falls due, waiting in between, until `quit` or `close`.
    virtual void run() = 0;

    /// Runs work until @p done holds, for at most @p atMost or until `close`. Answers whether @p done holds.
    ///
    /// @p done is asked at once and after each piece of work: what changes it should be work on this queue.
    virtual bool runUntil(const std::function<bool()>& done, std::chrono::nanoseconds atMost) = 0;

    /// Runs what is due now, without waiting, and answers how many pieces that were. Work that falls due meanwhile
    /// is left for the next call.
    virtual std::size_t poll() = 0;

    /// Makes `run` return after the piece of work that is running; one that is not running returns as soon as it is
    /// called next. Safe from any thread.
    virtual void quit() = 0;
};

} // namespace quorvane::platform
