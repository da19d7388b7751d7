#include "Platform/Native/RunLoop.h"

#include <algorithm>
#include <limits>

namespace quorvane::platform {

std::unique_ptr<NativeMainQueue> NativeMainQueue::make() {
    return std::make_unique<native::RunLoop>();
}

namespace native {

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

namespace {

/// @p delay from now, short of the end of time.
steady_clock::time_point after(nanoseconds delay) {
    const steady_clock::time_point now = steady_clock::now();
    return now + std::clamp<nanoseconds>(delay, nanoseconds(0), steady_clock::time_point::max() - now);
}

} // namespace

void RunLoop::post(Work work) {
    {
        const std::lock_guard lock(mutex);
        if (closed || !work) {
            return;
        }
        // The time is read under the lock: so the due times rise with the tickets.
        waiting.emplace(Key(steady_clock::now(), ++lastTicket), std::move(work));
    }
    changed.notify_one();
}

MainQueue::Ticket RunLoop::postAfter(nanoseconds delay, Work work) {
    Ticket ticket = 0;
    {
        const std::lock_guard lock(mutex);
        ticket = ++lastTicket;
        if (closed || !work) {
            return ticket;
        }
        const Time due = after(delay);
        waiting.emplace(Key(due, ticket), std::move(work));
        delayed.emplace(ticket, due);
    }
    changed.notify_one();
    return ticket;
}

void RunLoop::cancel(Ticket ticket) {
    Work cancelled; // destroyed outside the lock, as what it holds may post
    const std::lock_guard lock(mutex);
    const auto found = delayed.find(ticket);
    if (found == delayed.end()) {
        return;
    }
    const auto entry = waiting.find(Key(found->second, ticket));
    cancelled = std::move(entry->second);
    waiting.erase(entry);
    delayed.erase(found);
}

bool RunLoop::isMainThread() const {
    return std::this_thread::get_id() == mainThread;
}

void RunLoop::close() {
    std::map<Key, Work> dropped;
    {
        const std::lock_guard lock(mutex);
        closed = true;
        dropped.swap(waiting);
        delayed.clear();
    }
    changed.notify_all();
}

MainQueue::Work RunLoop::takeDue(Time now, Ticket newest) {
    for (auto entry = waiting.begin(); entry != waiting.end() && entry->first.first <= now; ++entry) {
        if (entry->first.second <= newest) {
            Work work = std::move(entry->second);
            delayed.erase(entry->first.second);
            waiting.erase(entry);
            return work;
        }
    }
    return nullptr;
}

template <class Stopped>
MainQueue::Work RunLoop::waitForWork(Time deadline, Stopped stopped) {
    std::unique_lock lock(mutex);
    while (!stopped()) {
        const Time now = steady_clock::now();
        if (Work work = takeDue(now, std::numeric_limits<Ticket>::max())) {
            return work;
        }
        if (now >= deadline) {
            return nullptr;
        }
        const Time next = waiting.empty() ? deadline : std::min(deadline, waiting.begin()->first.first);
        if (next == Time::max()) {
            changed.wait(lock);
        } else {
            changed.wait_until(lock, next);
        }
    }
    return nullptr;
}

void RunLoop::run() {
    while (Work work = waitForWork(Time::max(), [this] { return quitAsked || closed; })) {
        work();
    }
    const std::lock_guard lock(mutex);
    quitAsked = false;
}

bool RunLoop::runUntil(const std::function<bool()>& done, nanoseconds atMost) {
    const Time deadline = after(atMost);
    while (!done()) {
        Work work = waitForWork(deadline, [this] { return closed; });
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
    const Ticket newest = lastTicket;
    while (Work work = takeDue(now, newest)) {
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
