#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>

#include "Platform/Native/NativeMainQueue.h"

namespace quorvane::platform::native {

/// The main queue without a toolkit: everything that waits, in one list ordered by due time and then by posting.
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
    using Time = std::chrono::steady_clock::time_point;
    using Key = std::pair<Time, Ticket>;

    /// Takes out the first piece of work that is due at @p now and was posted up to ticket @p newest.
    Work takeDue(Time now, Ticket newest);
    /// Waits for the next piece of work until @p deadline; none when there was none, or once @p stopped holds.
    template <class Stopped>
    Work waitForWork(Time deadline, Stopped stopped);

    const std::thread::id mainThread = std::this_thread::get_id();
    std::mutex mutex;
    std::condition_variable changed;
    std::map<Key, Work> waiting;
    std::unordered_map<Ticket, Time> delayed;
    Ticket lastTicket = 0;
    bool closed = false;
    bool quitAsked = false;
};

} // namespace quorvane::platform::native
