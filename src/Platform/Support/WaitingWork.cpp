#include "Platform/Support/WaitingWork.h"

#include <algorithm>

namespace quorvane::platform {

using std::chrono::nanoseconds;

WaitingWork::Time WaitingWork::after(Time now, nanoseconds delay) {
    return now + std::clamp<nanoseconds>(delay, nanoseconds(0), Time::max() - now);
}

bool WaitingWork::post(Time now, Work work) {
    if (closed || !work) {
        return false;
    }
    posted.emplace_back(Key(now, ++lastTicket), std::move(work));
    return true;
}

MainQueue::Ticket WaitingWork::postAfter(Time now, nanoseconds delay, Work work) {
    const Ticket ticket = ++lastTicket;
    if (!closed && work) {
        const Time due = after(now, delay);
        delayed.emplace(Key(due, ticket), std::move(work));
        dueTimes.emplace(ticket, due);
    }
    return ticket;
}

MainQueue::Work WaitingWork::cancel(Ticket ticket) {
    const auto found = dueTimes.find(ticket);
    if (found == dueTimes.end()) {
        return nullptr;
    }
    const auto entry = delayed.find(Key(found->second, ticket));
    Work cancelled = std::move(entry->second);
    delayed.erase(entry);
    dueTimes.erase(found);
    return cancelled;
}

MainQueue::Work WaitingWork::takePosted(Ticket newest) {
    if (posted.empty() || posted.front().first.second > newest) {
        return nullptr;
    }
    Work work = std::move(posted.front().second);
    posted.pop_front();
    return work;
}

MainQueue::Work WaitingWork::takeDelayed(Time now, Ticket newest) {
    for (auto entry = delayed.begin(); entry != delayed.end() && entry->first.first <= now; ++entry) {
        if (entry->first.second <= newest) {
            Work work = std::move(entry->second);
            dueTimes.erase(entry->first.second);
            delayed.erase(entry);
            return work;
        }
    }
    return nullptr;
}

MainQueue::Work WaitingWork::takeFirst(Time now, Ticket newest) {
    const bool delayedFirst = !delayed.empty() && (posted.empty() || delayed.begin()->first < posted.front().first);
    Work work = delayedFirst ? takeDelayed(now, newest) : takePosted(newest);
    if (!work) {
        work = delayedFirst ? takePosted(newest) : takeDelayed(now, newest);
    }
    return work;
}

std::optional<WaitingWork::Time> WaitingWork::nextDue() const {
    return delayed.empty() ? std::nullopt : std::optional(delayed.begin()->first.first);
}

std::optional<WaitingWork::Time> WaitingWork::nextDueAfter(Time now) const {
    const auto next = delayed.upper_bound(Key(now, lastTicket));
    return next == delayed.end() ? std::nullopt : std::optional(next->first.first);
}

WaitingWork::Dropped WaitingWork::close() {
    closed = true;
    dueTimes.clear();
    return {std::exchange(posted, {}), std::exchange(delayed, {})};
}

} // namespace quorvane::platform
