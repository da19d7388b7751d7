#include "Platform/SerialQueue.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

namespace quorvane::platform {

struct SerialQueue::State {
    /// A thread that waits in `sync`.
    struct Waiter {
        const std::thread::id thread = std::this_thread::get_id();
        std::condition_variable woken;
        bool hasTurn = false;
    };

    /// A place in the line: work for the queue's own thread, or a waiting thread.
    struct Place {
        std::function<void()> work;
        Waiter* waiter = nullptr;
    };

    explicit State(std::string theLabel) : label(std::move(theLabel)) {}

    [[nodiscard]] bool runsOnThisThread() const { return depth > 0 && owner == std::this_thread::get_id(); }

    void take() {
        std::unique_lock lock(mutex);
        if (runsOnThisThread()) {
            ++depth;
        } else if (depth == 0 && line.empty()) {
            begin(std::this_thread::get_id());
        } else {
            Waiter waiter;
            line.push_back({nullptr, &waiter});
            waiter.woken.wait(lock, [&] { return waiter.hasTurn; });
        }
    }

    void giveBack() {
        const std::lock_guard lock(mutex);
        if (--depth == 0) {
            passOn();
        }
    }

    /// What the queue's own thread does: runs what was accepted until the queue ends and nothing is left.
    void work() {
        std::unique_lock lock(mutex);
        while (true) {
            hasWork.wait(lock, [this] {
                return (depth == 0 && !line.empty() && line.front().waiter == nullptr) || (ending && accepted == 0);
            });
            if (accepted == 0) {
                return;
            }
            Place next = std::move(line.front());
            line.pop_front();
            --accepted;
            begin(std::this_thread::get_id());
            lock.unlock();
            next.work();
            next.work = nullptr;
            lock.lock();
            depth = 0;
            passOn();
        }
    }

    const std::string label;
    std::mutex mutex;
    std::deque<Place> line;
    /// How many places in the line are work.
    std::size_t accepted = 0;
    bool ending = false;
    std::thread thread;
    std::condition_variable hasWork;

private:
    void begin(std::thread::id newOwner) {
        owner = newOwner;
        depth = 1;
    }

    /// Gives the turn, which nobody has, to the first in the line.
    void passOn() {
        if (line.empty()) {
            return;
        }
        if (Waiter* const waiter = line.front().waiter) {
            line.pop_front();
            begin(waiter->thread);
            waiter->hasTurn = true;
            waiter->woken.notify_one();
        } else {
            hasWork.notify_one();
        }
    }

    /// Who has the turn, and how many times over; nobody at depth 0.
    std::thread::id owner;
    int depth = 0;
};

SerialQueue::SerialQueue(std::string label) : state(std::make_shared<State>(std::move(label))) {}

SerialQueue::~SerialQueue() {
    std::thread thread;
    bool isInside = false;
    {
        const std::lock_guard lock(state->mutex);
        state->ending = true;
        thread = std::move(state->thread);
        isInside = state->runsOnThisThread();
    }
    state->hasWork.notify_one();
    if (!thread.joinable()) {
        return;
    }
    if (isInside) {
        thread.detach();
    } else {
        thread.join();
    }
}

const std::string& SerialQueue::label() const {
    return state->label;
}

void SerialQueue::async(std::function<void()> work) {
    if (!hasThread()) {
        const Turn turn(state);
        [&]() noexcept { work(); }();
        return;
    }
    {
        const std::lock_guard lock(state->mutex);
        state->line.push_back({std::move(work), nullptr});
        ++state->accepted;
    }
    state->hasWork.notify_one();
}

bool SerialQueue::hasThread() {
    const std::lock_guard lock(state->mutex);
    if (!state->thread.joinable()) {
        try {
            state->thread = std::thread([state = state] { state->work(); });
        } catch (const std::system_error&) {
            return false;
        }
    }
    return true;
}

SerialQueue::Turn::Turn(std::shared_ptr<State> theState) : state(std::move(theState)) {
    state->take();
}

SerialQueue::Turn::~Turn() {
    state->giveBack();
}

} // namespace quorvane::platform
