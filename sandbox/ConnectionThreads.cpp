#include "sandbox/ConnectionThreads.h"

#include <utility>

namespace quorvane::sandbox {

void ConnectionThreads::run(std::function<void()> connection) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return isClosed || waiting.size() < mostWaiting; });
    waiting.push_back(std::move(connection));
    if (waiting.size() > idle && threads.size() < mostThreads) {
        threads.emplace_back([this] { work(); });
    }
    changed.notify_all();
}

bool ConnectionThreads::isCrowded() const {
    const std::lock_guard lock(mutex);
    return threads.size() == mostThreads && !waiting.empty();
}

void ConnectionThreads::close() {
    const std::lock_guard lock(mutex);
    isClosed = true;
    changed.notify_all();
}

void ConnectionThreads::join() {
    close();
    for (std::thread& thread : threads) {
        if (thread.joinable()) {
            thread.join();
        }
    }
}

void ConnectionThreads::work() {
    std::unique_lock lock(mutex);
    while (true) {
        ++idle;
        changed.wait(lock, [this] { return isClosed || !waiting.empty(); });
        --idle;
        if (waiting.empty()) {
            return;
        }
        const auto connection = std::move(waiting.front());
        waiting.pop_front();
        changed.notify_all();
        lock.unlock();
        connection();
        lock.lock();
    }
}

} // namespace quorvane::sandbox
