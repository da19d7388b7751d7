#include "testing/SimulatedMainQueue.h"

#include <utility>

#include "Platform/Precondition.h"
#include "Platform/Support/WaitingWork.h"

namespace quorvane::testing {

using platform::WaitingWork;
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

WaitingWork::Time now(const platform::Clock& clock) {
    return WaitingWork::Time(clock.monotonic());
}

} // namespace

SimulatedMainQueue::SimulatedMainQueue(const platform::Clock& theClock)
    : clock(theClock), waiting(std::make_unique<WaitingWork>()) {}

SimulatedMainQueue::~SimulatedMainQueue() {
    SimulatedMainQueue::close();
}

void SimulatedMainQueue::post(Work work) {
    const WaitingWork::Time time = now(clock);
    const std::lock_guard lock(mutex);
    if (waiting->post(time, std::move(work))) {
        arrived.notify_all();
    }
}

platform::MainQueue::Ticket SimulatedMainQueue::postAfter(nanoseconds delay, Work work) {
    const WaitingWork::Time time = now(clock);
    const std::lock_guard lock(mutex);
    return waiting->postAfter(time, delay, std::move(work));
}

void SimulatedMainQueue::cancel(Ticket ticket) {
    Work cancelled; // destroyed outside the lock
    const std::lock_guard lock(mutex);
    cancelled = waiting->cancel(ticket);
}

bool SimulatedMainQueue::isMainThread() const {
    return std::this_thread::get_id() == mainThread;
}

void SimulatedMainQueue::close() {
    WaitingWork::Dropped dropped; // destroyed outside the lock
    const std::lock_guard lock(mutex);
    dropped = waiting->close();
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
    const WaitingWork::Time time = now(clock);
    Work work;
    {
        const std::lock_guard lock(mutex);
        if (!delayedOnly) {
            work = waiting->takePosted();
        }
        if (!work) {
            work = waiting->takeDelayed(time);
        }
    }
    if (!work) {
        return false;
    }
    const Running mark(running);
    work();
    return true;
}

bool SimulatedMainQueue::hasWork() const {
    const WaitingWork::Time time = now(clock);
    const std::lock_guard lock(mutex);
    return !suspended && (waiting->postedCount() > 0 || waiting->nextDue().value_or(WaitingWork::Time::max()) <= time);
}

std::optional<nanoseconds> SimulatedMainQueue::nextDue() const {
    const WaitingWork::Time time = now(clock);
    const std::lock_guard lock(mutex);
    const std::optional<WaitingWork::Time> due = waiting->nextDueAfter(time);
    return suspended || !due ? std::nullopt : std::optional(due->time_since_epoch());
}

std::size_t SimulatedMainQueue::delayedCount() const {
    const std::lock_guard lock(mutex);
    return waiting->delayedCount();
}

bool SimulatedMainQueue::waitForPost(std::chrono::milliseconds realTime) {
    std::unique_lock lock(mutex);
    return arrived.wait_for(lock, realTime, [this] { return waiting->postedCount() > 0; });
}

} // namespace quorvane::testing
