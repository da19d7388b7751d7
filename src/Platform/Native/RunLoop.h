#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "Platform/Native/NativeMainQueue.h"
#include "Platform/Support/WaitingWork.h"

namespace quorvane::platform::native {

/// The main queue without a toolkit: everything that waits runs by due time and then by posting.
class RunLoop final : public NativeMainQueue {
public:
    void post(Work work) override;
    Ticket postAfter(std::chrono::nanoseconds delay, Work work) override;
    void cancel(Ticket ticket) override;
    [[nodiscard]] bool isMainThread() const override;
    void close() override;

    void run() override;
    bool runUntil(const std::function<bool()>& done, std::chrono::nanoseconds atMost) override;
    std::size_t poll() override;
    void quit() override;

private:
    using Time = WaitingWork::Time;

    /// Waits for the next piece of work until @p deadline; none when there was none, or once @p stopped holds.
    template <class Stopped>
    Work waitForWork(Time deadline, Stopped stopped);

    const std::thread::id mainThread = std::this_thread::get_id();
    std::mutex mutex;
    std::condition_variable changed;
    WaitingWork waiting;
    bool quitAsked = false;
};

} // namespace quorvane::platform::native
