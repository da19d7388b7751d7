#include "Platform/Timer.h"

#include <algorithm>

#include "Platform/Clock.h"
#include "Platform/MainQueue.h"

namespace quorvane::platform {

using std::chrono::nanoseconds;

struct Timer::State : std::enable_shared_from_this<State> {
    State(Clock& theClock, MainQueue& theQueue, nanoseconds theInterval, std::function<void()> theCallback)
        : clock(theClock),
          queue(theQueue),
          interval(std::max<nanoseconds>(theInterval, std::chrono::milliseconds(1))),
          due(theClock.monotonic() + interval),
          callback(std::move(theCallback)) {}

    void schedule() {
        ticket = queue.postAfter(due - clock.monotonic(), [weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->fire();
            }
        });
    }

    void fire() {
        if (!valid) {
            return;
        }
        const nanoseconds late = clock.monotonic() - due;
        due += interval * (1 + std::max<nanoseconds>(late, nanoseconds(0)) / interval);
        schedule();
        callback();
    }

    Clock& clock;
    MainQueue& queue;
    const nanoseconds interval;
    nanoseconds due;
    std::function<void()> callback;
    MainQueue::Ticket ticket = 0;
    bool valid = true;
};

Timer::Timer(Clock& clock, MainQueue& queue, nanoseconds interval, std::function<void()> callback)
    : state(std::make_shared<State>(clock, queue, interval, std::move(callback))) {
    state->schedule();
}

Timer::~Timer() {
    invalidate();
}

void Timer::invalidate() {
    if (state->valid) {
        state->valid = false;
        state->queue.cancel(state->ticket);
    }
}

bool Timer::isValid() const {
    return state->valid;
}

} // namespace quorvane::platform
