#include "testing/SimulatedMainQueue.h"

#include <algorithm>

#include "Platform/Precondition.h"

namespace quorvane::testing {

using std::chrono::nanoseconds;

namespace {

/// Tells that work is running for as long as it lives, exceptions included.
class Running {
public:
    explicit Running(bool& theFlag) : flag(theFlag) { flag = true; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { flag = false; }

private:
    bool& flag;
};

} // namespace

SimulatedMainQueue::SimulatedMainQueue(const platform::Clock& theClock) : clock(theClock) {}

SimulatedMainQueue::~SimulatedMainQueue() {
    SimulatedMainQueue::close();
}

void SimulatedMainQueue::post(Work work) {
    const std::lock_guard lock(mutex);
    if (!closed) {
        posted.push_back(std::move(work));
        arrived.notify_all();
    }
}

platform::MainQueue::Ticket SimulatedMainQueue::postAfter(nanoseconds delay, Work work) {
    const nanoseconds now = clock.monotonic();
    const nanoseconds due = now + std::clamp(delay, nanoseconds(0), nanoseconds::max() - now);
    const std::lock_guard lock(mutex);
    if (closed) {
        return 0;
    }
    const Ticket ticket = ++lastTicket;
    delayed.emplace(Due{due, ticket}, std::move(work));
    tickets.emplace(ticket, Due{due, ticket});
    return ticket;
}

void SimulatedMainQueue::cancel(Ticket ticket) {
    Work cancelled; // destroyed after the lock is gone, since what it holds may call back
    const std::lock_guard lock(mutex);
    if (const auto found = tickets.find(ticket); found != tickets.end()) {
        const auto entry = delayed.find(found->second);
        cancelled = std::move(entry->second);
        delayed.erase(entry);
        tickets.erase(found);
    }
}

bool SimulatedMainQueue::isMainThread() const {
    return std::this_thread::get_id() == mainThread;
}

void SimulatedMainQueue::close() {
    std::deque<Work> droppedPosted;
    std::map<Due, Work> droppedDelayed;
    const std::lock_guard lock(mutex);
    closed = true;
    droppedPosted.swap(posted);
    droppedDelayed.swap(delayed);
    tickets.clear();
}

void SimulatedMainQueue::setSuspended(bool suspend) {
    suspended = suspend;
}

bool SimulatedMainQueue::runNext() {
    return run(false);
}

bool SimulatedMainQueue::runNextDelayed() {
    return run(true);
}

bool SimulatedMainQueue::run(bool delayedOnly) {
    QV_PRECONDITION(isMainThread(), "a simulated main queue runs on the thread that made it");
    QV_PRECONDITION(!running, "work of a simulated main queue must not run the queue");
    if (suspended) {
        return false;
    }
    Work work;
    {
        const nanoseconds now = clock.monotonic();
        const std::lock_guard lock(mutex);
        if (!delayedOnly && !posted.empty()) {
            work = std::move(posted.front());
            posted.pop_front();
        } else if (!delayed.empty() && delayed.begin()->first.first <= now) {
            work = std::move(delayed.begin()->second);
            tickets.erase(delayed.begin()->first.second);
            delayed.erase(delayed.begin());
        } else {
            return false;
        }
    }
    const Running mark(running);
    work();
    return true;
}

bool SimulatedMainQueue::hasWork() const {
    const nanoseconds now = clock.monotonic();
    const std::lock_guard lock(mutex);
    return !suspended && (!posted.empty() || (!delayed.empty() && delayed.begin()->first.first <= now));
}

std::optional<nanoseconds> SimulatedMainQueue::nextDue() const {
    const nanoseconds now = clock.monotonic();
    const std::lock_guard lock(mutex);
    const auto next = delayed.upper_bound(Due{now, lastTicket});
    return suspended || next == delayed.end() ? std::nullopt : std::optional(next->first.first);
}

std::size_t SimulatedMainQueue::delayedCount() const {
    const std::lock_guard lock(mutex);
    return delayed.size();
}

bool SimulatedMainQueue::waitForPost(std::chrono::milliseconds realTime) {
    std::unique_lock lock(mutex);
    return arrived.wait_for(lock, realTime, [this] { return !posted.empty(); });
}

} // namespace quorvane::testing
