#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane::sandbox {

/// A flag that sleeping threads wake up for. Once raised it stays.
class StopSignal {
public:
    StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;
    ~StopSignal();

    void raise();
    /// Sleeps for @p time; false when the signal cut it short.
    [[nodiscard]] bool sleep(std::chrono::milliseconds time) const;
    [[nodiscard]] int descriptor() const { return event; }

private:
    int event;
};

/// An accepted socket, which it owns. Every wait ends when the signal is raised.
class Connection {
public:
    enum class Ending { orderly, reset };

    Connection(int theSocket, const StopSignal& theStop);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    enum class Arrival { request, nothing, ended };
    /// Whether bytes of a next request arrive within @p time.
    [[nodiscard]] Arrival waitForRequest(std::chrono::milliseconds time);
    /// The request that is now read must be complete by then.
    void setDeadline(std::chrono::steady_clock::time_point time) { deadline = time; }
    /// At least one and at most @p size bytes; 0 at the end, -1 when there are none in time or the signal was raised.
    long read(char* bytes, std::size_t size);
    /// Sends all of @p bytes, or as many as the peer takes in a few seconds.
    void send(std::string_view bytes);
    void end(Ending ending);

    [[nodiscard]] bool isStopped() const { return !stop.sleep(std::chrono::milliseconds::zero()); }
    [[nodiscard]] int descriptor() const { return socket; }

private:
    enum class Readiness { ready, timedOut, stopped };
    [[nodiscard]] Readiness waitFor(short events, std::chrono::milliseconds time) const;
    void drain();

    int socket;
    const StopSignal& stop;
    std::chrono::steady_clock::time_point deadline;
    std::string buffer;
    std::size_t position = 0;
};

} // namespace quorvane::sandbox
