#include "Platform/Qt/WaitingWork.h"

#include <algorithm>

namespace quorvane::platform::qt {

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

bool WaitingWork::add(Work work) {
    const std::lock_guard lock(mutex);
    if (closed || !work) {
        return false;
    }
    posted.emplace_back(++lastTicket, std::move(work));
    return true;
}

MainQueue::Ticket WaitingWork::addDelayed(nanoseconds delay, Work work, bool& first) {
    const std::lock_guard lock(mutex);
    const Ticket ticket = ++lastTicket;
    first = false;
    if (closed || !work) {
        return ticket;
    }
    const Time now = steady_clock::now();
    const Time due = now + std::clamp<nanoseconds>(delay, nanoseconds(0), Time::max() - now);
    const auto entry = delayed.emplace(Key(due, ticket), std::move(work)).first;
    dueTimes.emplace(ticket, due);
    first = entry == delayed.begin();
    return ticket;
}

void WaitingWork::cancel(Ticket ticket) {
    Work cancelled; // destroyed outside the lock, as what it holds may post
    const std::lock_guard lock(mutex);
    if (const auto found = dueTimes.find(ticket); found != dueTimes.end()) {
        const auto entry = delayed.find(Key(found->second, ticket));
        cancelled = std::move(entry->second);
        delayed.erase(entry);
        dueTimes.erase(found);
    }
}

MainQueue::Work WaitingWork::takePosted(Ticket newest) {
    const std::lock_guard lock(mutex);
    if (posted.empty() || posted.front().first > newest) {
        return nullptr;
    }
    Work work = std::move(posted.front().second);
    posted.pop_front();
    return work;
}

MainQueue::Work WaitingWork::takeDue(Time now, Ticket newest) {
    const std::lock_guard lock(mutex);
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

std::size_t WaitingWork::postedCount() const {
    const std::lock_guard lock(mutex);
    return posted.size();
}

std::optional<WaitingWork::Time> WaitingWork::nextDue() const {
    const std::lock_guard lock(mutex);
    return delayed.empty() ? std::nullopt : std::optional(delayed.begin()->first.first);
}

MainQueue::Ticket WaitingWork::newest() const {
    const std::lock_guard lock(mutex);
    return lastTicket;
}

void WaitingWork::close() {
    std::deque<std::pair<Ticket, Work>> droppedPosted;
    std::map<Key, Work> droppedDelayed;
    const std::lock_guard lock(mutex);
    closed = true;
    droppedPosted.swap(posted);
    droppedDelayed.swap(delayed);
    dueTimes.clear();
}

bool WaitingWork::isClosed() const {
    const std::lock_guard lock(mutex);
    return closed;
}

} // namespace quorvane::platform::qt
