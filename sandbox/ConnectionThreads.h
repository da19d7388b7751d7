#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quorvane::sandbox {

/// Runs connections, each on one of a bounded number of threads that are started as they are needed.
class ConnectionThreads {
public:
    static constexpr std::size_t mostThreads = 32;
    static constexpr std::size_t mostWaiting = 64;

    ConnectionThreads() = default;
    ConnectionThreads(const ConnectionThreads&) = delete;
    ConnectionThreads& operator=(const ConnectionThreads&) = delete;
    ~ConnectionThreads() { join(); }

    /// Runs @p connection as soon as a thread is free. While too many wait for one already, this waits too.
    void run(std::function<void()> connection);
    /// Whether a connection waits for a thread: an idle one should end then.
    [[nodiscard]] bool isCrowded() const;
    /// From now on nobody waits in `run`.
    void close();
    /// Runs what is left, then ends the threads.
    void join();

private:
    void work();

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    std::vector<std::thread> threads;
    std::size_t idle = 0;
    bool isClosed = false;
};

} // namespace quorvane::sandbox
