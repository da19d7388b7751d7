#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "Platform/MainQueue.h"

namespace quorvane::platform {

/// The work that waits for a main queue's thread, for those who make one. Runs nothing and has no lock: its owner has
/// one. Work that is handed out is destroyed outside that lock, as what it holds may post.
class WaitingWork {
public:
    using Work = MainQueue::Work;
    using Ticket = MainQueue::Ticket;
    using Time = std::chrono::steady_clock::time_point;
    /// A post, by its time and its ticket.
    using Key = std::pair<Time, Ticket>;
    static constexpr Ticket anyTicket = std::numeric_limits<Ticket>::max();

    /// What `close` found waiting.
    struct Dropped {
        std::deque<std::pair<Key, Work>> posted;
        std::map<Key, Work> delayed;
    };

    /// @p delay from @p now, short of the end of time; a negative one counts as none.
    [[nodiscard]] static Time after(Time now, std::chrono::nanoseconds delay);

    /// False when it was not taken: it is empty, or all is closed. For `takeFirst`, @p now must not fall from post to
    /// post.
    bool post(Time now, Work work);
    /// Never 0, though what is empty or comes after `close` never runs.
    Ticket postAfter(Time now, std::chrono::nanoseconds delay, Work work);
    /// The delayed work that was taken back; none when it has run, was taken back before or is unknown.
    [[nodiscard]] Work cancel(Ticket ticket);

    /// The oldest posted piece up to ticket @p newest; none when there is none.
    [[nodiscard]] Work takePosted(Ticket newest = anyTicket);
    /// The first delayed piece that is due at @p now, up to ticket @p newest.
    [[nodiscard]] Work takeDelayed(Time now, Ticket newest = anyTicket);
    /// Of both kinds the one whose time came first.
    [[nodiscard]] Work takeFirst(Time now, Ticket newest = anyTicket);

    [[nodiscard]] std::size_t postedCount() const { return posted.size(); }
    [[nodiscard]] std::size_t delayedCount() const { return delayed.size(); }
    /// When the first delayed piece is or was due.
    [[nodiscard]] std::optional<Time> nextDue() const;
    /// When the first delayed piece that is not due at @p now will be.
    [[nodiscard]] std::optional<Time> nextDueAfter(Time now) const;
    [[nodiscard]] Ticket newest() const { return lastTicket; }

    /// Hands out what waits and takes nothing more.
    [[nodiscard]] Dropped close();
    [[nodiscard]] bool isClosed() const { return closed; }

private:
    std::deque<std::pair<Key, Work>> posted;
    std::map<Key, Work> delayed;
    std::unordered_map<Ticket, Time> dueTimes;
    Ticket lastTicket = 0;
    bool closed = false;
};

} // namespace quorvane::platform
