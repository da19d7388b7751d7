#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <utility>

#include "Platform/MainQueue.h"

namespace quorvane::platform::qt {

/// The work that waits for a main queue's thread. Safe from any thread; runs nothing and calls nobody.
class WaitingWork {
public:
    using Work = MainQueue::Work;
    using Ticket = MainQueue::Ticket;
    using Time = std::chrono::steady_clock::time_point;

    /// False when closed.
    bool add(Work work);
    /// @p first tells whether nothing is due earlier.
    Ticket addDelayed(std::chrono::nanoseconds delay, Work work, bool& first);
    void cancel(Ticket ticket);

    /// The oldest posted piece up to ticket @p newest; none when there is none.
    [[nodiscard]] Work takePosted(Ticket newest);
    /// The first delayed piece that is due at @p now, up to ticket @p newest.
    [[nodiscard]] Work takeDue(Time now, Ticket newest);

    [[nodiscard]] std::size_t postedCount() const;
    [[nodiscard]] std::optional<Time> nextDue() const;
    [[nodiscard]] Ticket newest() const;

    /// Destroys what waits and takes nothing more.
    void close();
    [[nodiscard]] bool isClosed() const;

private:
    using Key = std::pair<Time, Ticket>;

    mutable std::mutex mutex;
    std::deque<std::pair<Ticket, Work>> posted;
    std::map<Key, Work> delayed;
    std::unordered_map<Ticket, Time> dueTimes;
    Ticket lastTicket = 0;
    bool closed = false;
};

} // namespace quorvane::platform::qt
