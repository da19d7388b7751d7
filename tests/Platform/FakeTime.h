#pragma once

#include <algorithm>
#include <map>
#include <utility>

#include "Platform/Clock.h"
#include "Platform/MainQueue.h"

namespace quorvane::platform {

/// A clock and a main queue in the hands of one test. Unlike those of the test kit they let the main thread be busy.
class FakeTime : public Clock, public MainQueue {
public:
    [[nodiscard]] Date now() const override { return Date(time); }
    [[nodiscard]] std::chrono::nanoseconds monotonic() const override { return time; }
    [[nodiscard]] std::chrono::seconds offsetFromUTC(Date) const override { return {}; }

    void post(Work work) override { postAfter({}, std::move(work)); }
    Ticket postAfter(std::chrono::nanoseconds delay, Work work) override {
        waiting.emplace(std::pair(time + std::max(delay, std::chrono::nanoseconds(0)), ++last), std::move(work));
        return last;
    }
    void cancel(Ticket ticket) override {
        std::erase_if(waiting, [ticket](const auto& entry) { return entry.first.second == ticket; });
    }
    [[nodiscard]] bool isMainThread() const override { return true; }
    void close() override { waiting.clear(); }

    /// Time passes while the main thread runs nothing.
    void pass(std::chrono::nanoseconds amount) { time += amount; }
    /// Runs what is due and was posted before, as `pass` leaves it.
    void runDue() {
        for (const Ticket newest = last; !waiting.empty();) {
            const auto first = waiting.begin();
            if (first->first.first > time || first->first.second > newest) {
                return;
            }
            const Work work = std::move(first->second);
            waiting.erase(first);
            work();
        }
    }
    /// Time passes on a main thread that is free.
    void advance(std::chrono::nanoseconds amount) {
        const std::chrono::nanoseconds end = time + amount;
        while (!waiting.empty() && waiting.begin()->first.first <= end) {
            time = std::max(time, waiting.begin()->first.first);
            runDue();
        }
        time = end;
    }
    [[nodiscard]] std::size_t waitingPieces() const { return waiting.size(); }

private:
    std::chrono::nanoseconds time{1'000'000};
    Ticket last = 0;
    std::map<std::pair<std::chrono::nanoseconds, Ticket>, Work> waiting;
};

} // namespace quorvane::platform
