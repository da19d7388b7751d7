#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

#include "Platform/Native/NativeMainQueue.h"
#include "Platform/Support/WaitingWork.h"

QT_BEGIN_NAMESPACE
class QEventLoop;
QT_END_NAMESPACE

namespace quorvane::platform::qt {

/// The main queue in Qt's event loop. Each piece of posted work is an event of its own, so that the toolkit's events
/// take their turn between them; delayed work is due by one timer.
///
/// Work that runs an event loop of its own, such as a dialog, lets the pieces after it run inside that loop.
class QtMainQueue final : public NativeMainQueue {
public:
    QtMainQueue();
    ~QtMainQueue() override;

    void post(Work work) override;
    Ticket postAfter(std::chrono::nanoseconds delay, Work work) override;
    void cancel(Ticket ticket) override;
    [[nodiscard]] bool isMainThread() const override;
    void close() override;

    void run() override;
    bool runUntil(const std::function<bool()>& done, std::chrono::nanoseconds atMost) override;
    std::size_t poll() override;
    void quit() override;

private:
    /// One of this queue's own event loops, while it runs.
    struct OwnLoop;
    class Polling;
    class Call;
    class Receiver;

    /// Runs @p member in Qt's event loop, soon; safe from any thread.
    void invokeSoon(void (QtMainQueue::*member)());
    [[nodiscard]] Work takePosted(Ticket newest = WaitingWork::anyTicket);
    [[nodiscard]] Work takeDelayed(WaitingWork::Time now, Ticket newest = WaitingWork::anyTicket);
    [[nodiscard]] bool isClosed() const;
    void runOnePosted();
    void runDelayed();
    void armTimer();
    void perform(Work work);
    void execute(OwnLoop& own);
    /// Whether what waits must wait on. Ends `run` when that was asked for.
    bool holds();
    void noticeQuit() { static_cast<void>(holds()); }
    void endLoop();
    /// Lets go of what was held.
    void resume();

    const std::thread::id mainThread = std::this_thread::get_id();
    /// None when the program has one.
    const std::shared_ptr<QCoreApplication> application;
    mutable std::mutex mutex;
    /// Under the mutex.
    WaitingWork waiting;
    const std::unique_ptr<Receiver> receiver;
    QTimer timer;
    /// The innermost one; main thread only.
    OwnLoop* loop = nullptr;
    std::atomic<bool> quitAsked = false;
    /// While set, events and the timer run nothing: what waits is for later.
    bool holding = false;
    /// Events that came while holding.
    std::size_t heldEvents = 0;
};

} // namespace quorvane::platform::qt
