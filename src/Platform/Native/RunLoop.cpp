#include "Platform/Native/RunLoop.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvane::platform {

std::unique_ptr<NativeMainQueue> NativeMainQueue::make() {
    return std::make_unique<native::RunLoop>();
}

namespace native {

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

void RunLoop::post(Work work) {
    {
        const std::lock_guard lock(mutex);
        // The time is read under the lock: so the times rise with the tickets.
        if (!waiting.post(steady_clock::now(), std::move(work))) {
            return;
        }
    }
    changed.notify_one();
}

MainQueue::Ticket RunLoop::postAfter(nanoseconds delay, Work work) {
    Ticket ticket = 0;
    {
        const std::lock_guard lock(mutex);
        ticket = waiting.postAfter(steady_clock::now(), delay, std::move(work));
    }
    changed.notify_one();
    return ticket;
}

void RunLoop::cancel(Ticket ticket) {
    Work cancelled; // destroyed outside the lock
    const std::lock_guard lock(mutex);
    cancelled = waiting.cancel(ticket);
}

bool RunLoop::isMainThread() const {
    return std::this_thread::get_id() == mainThread;
}

void RunLoop::close() {
    WaitingWork::Dropped dropped; // destroyed outside the lock
    {
        const std::lock_guard lock(mutex);
        dropped = waiting.close();
    }
    changed.notify_all();
}

template <class Stopped>
MainQueue::Work RunLoop::waitForWork(Time deadline, Stopped stopped) {
    std::unique_lock lock(mutex);
    while (!stopped()) {
        const Time now = steady_clock::now();
        if (Work work = waiting.takeFirst(now)) {
            return work;
        }
        if (now >= deadline) {
            return nullptr;
        }
        const Time next = std::min(deadline, waiting.nextDue().value_or(deadline));
        if (next == Time::max()) {
            changed.wait(lock);
        } else {
            changed.wait_until(lock, next);
        }
    }
    return nullptr;
}

void RunLoop::run() {
    while (Work work = waitForWork(Time::max(), [this] { return quitAsked || waiting.isClosed(); })) {
        work();
    }
    const std::lock_guard lock(mutex);
    quitAsked = false;
}

bool RunLoop::runUntil(const std::function<bool()>& done, nanoseconds atMost) {
    const Time deadline = WaitingWork::after(steady_clock::now(), atMost);
    while (!done()) {
        Work work = waitForWork(deadline, [this] { return waiting.isClosed(); });
        if (!work) {
            return done();
        }
        work();
    }
    return true;
}

std::size_t RunLoop::poll() {
    std::size_t pieces = 0;
    std::unique_lock lock(mutex);
    const Time now = steady_clock::now();
    const Ticket newest = waiting.newest();
    while (Work work = waiting.takeFirst(now, newest)) {
        lock.unlock();
        work();
        work = nullptr;
        ++pieces;
        lock.lock();
    }
    return pieces;
}

void RunLoop::quit() {
    {
        const std::lock_guard lock(mutex);
        quitAsked = true;
    }
    changed.notify_all();
}

} // namespace native
} // namespace quorvane::platform
