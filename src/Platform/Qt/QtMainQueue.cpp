#include "Platform/Qt/QtMainQueue.h"

#include <QEvent>
#include <QEventLoop>
#include <QObject>
#include <QThread>
#include <algorithm>
#include <limits>
#include <utility>

#include "Platform/Precondition.h"

namespace quorvane::platform::qt {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

namespace {

/// Never early: the rest of a millisecond counts as a whole one.
milliseconds roundedUp(nanoseconds time) {
    return std::clamp(std::chrono::ceil<milliseconds>(time), milliseconds(0),
                      milliseconds(std::numeric_limits<int>::max()));
}

/// None when the program has an application of its own. Queues that overlap share the one that is made here.
std::shared_ptr<QCoreApplication> applicationWhereThereIsNone() {
    static std::weak_ptr<QCoreApplication> made;
    if (QCoreApplication::instance() != nullptr) {
        QV_PRECONDITION(QCoreApplication::instance()->thread() == QThread::currentThread(),
                        "a Qt platform must be made on the thread of the Qt application");
        return made.lock();
    }
    static char name[] = "quorvane";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    auto application = std::make_shared<QCoreApplication>(count, arguments);
    made = application;
    return application;
}

} // namespace

/// An event that calls a member function of the queue.
class QtMainQueue::Call final : public QEvent {
public:
    using Member = void (QtMainQueue::*)();

    explicit Call(Member theMember) : QEvent(kind()), member(theMember) {}

    static Type kind() {
        static const Type type = static_cast<Type>(registerEventType());
        return type;
    }

    const Member member;
};

/// Gets the queue's events on the main thread. Qt drops those that are on their way when it ends.
class QtMainQueue::Receiver final : public QObject {
public:
    explicit Receiver(QtMainQueue& theQueue) : queue(theQueue) {}

    bool event(QEvent* event) override {
        if (event->type() != Call::kind()) {
            return QObject::event(event);
        }
        (queue.*static_cast<Call*>(event)->member)();
        return true;
    }

private:
    QtMainQueue& queue;
};

struct QtMainQueue::OwnLoop {
    QEventLoop events;
    /// Asked after each piece of work; none for a loop that only `quit` ends.
    std::function<bool()> done;
    std::exception_ptr thrown;
};

/// Holds the queue's events back while it is polled, exceptions included.
class QtMainQueue::Polling {
public:
    explicit Polling(QtMainQueue& theQueue) : queue(theQueue) { queue.holding = true; }
    Polling(const Polling&) = delete;
    Polling& operator=(const Polling&) = delete;
    ~Polling() { queue.resume(); }

private:
    QtMainQueue& queue;
};

QtMainQueue::QtMainQueue() : application(applicationWhereThereIsNone()), receiver(std::make_unique<Receiver>(*this)) {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, receiver.get(), [this] { runDelayed(); });
}

QtMainQueue::~QtMainQueue() {
    QtMainQueue::close();
}

void QtMainQueue::post(Work work) {
    {
        const std::lock_guard lock(mutex);
        if (!waiting.post(steady_clock::now(), std::move(work))) {
            return;
        }
    }
    invokeSoon(&QtMainQueue::runOnePosted);
}

MainQueue::Ticket QtMainQueue::postAfter(nanoseconds delay, Work work) {
    Ticket ticket = 0;
    bool first = false;
    {
        const std::lock_guard lock(mutex);
        const std::optional<WaitingWork::Time> due = waiting.nextDue();
        ticket = waiting.postAfter(steady_clock::now(), delay, std::move(work));
        first = waiting.nextDue() != due;
    }
    if (first && isMainThread()) {
        armTimer();
    } else if (first) {
        invokeSoon(&QtMainQueue::armTimer);
    }
    return ticket;
}

void QtMainQueue::cancel(Ticket ticket) {
    Work cancelled; // destroyed outside the lock
    const std::lock_guard lock(mutex);
    cancelled = waiting.cancel(ticket);
}

bool QtMainQueue::isMainThread() const {
    return std::this_thread::get_id() == mainThread;
}

void QtMainQueue::close() {
    WaitingWork::Dropped dropped; // destroyed outside the lock
    {
        const std::lock_guard lock(mutex);
        dropped = waiting.close();
    }
    timer.stop();
    endLoop();
}

void QtMainQueue::invokeSoon(void (QtMainQueue::*member)()) {
    QCoreApplication::postEvent(receiver.get(), new Call(member));
}

MainQueue::Work QtMainQueue::takePosted(Ticket newest) {
    const std::lock_guard lock(mutex);
    return waiting.takePosted(newest);
}

MainQueue::Work QtMainQueue::takeDelayed(WaitingWork::Time now, Ticket newest) {
    const std::lock_guard lock(mutex);
    return waiting.takeDelayed(now, newest);
}

bool QtMainQueue::isClosed() const {
    const std::lock_guard lock(mutex);
    return waiting.isClosed();
}

void QtMainQueue::armTimer() {
    std::optional<WaitingWork::Time> due;
    {
        const std::lock_guard lock(mutex);
        due = waiting.nextDue();
    }
    if (due && !holding) {
        timer.start(roundedUp(*due - steady_clock::now()));
    }
}

bool QtMainQueue::holds() {
    if (loop != nullptr && !loop->done && quitAsked) {
        endLoop();
    }
    return holding;
}

void QtMainQueue::runOnePosted() {
    if (holds()) {
        ++heldEvents;
    } else if (Work work = takePosted()) {
        perform(std::move(work));
    }
}

void QtMainQueue::runDelayed() {
    if (!holds()) {
        Work work = takeDelayed(steady_clock::now());
        armTimer(); // before the work, which may run an event loop of its own
        if (work) {
            perform(std::move(work));
        }
    }
}

void QtMainQueue::perform(Work work) {
    OwnLoop* const own = loop;
    if (own == nullptr) {
        work();
        return;
    }
    // An exception must not pass through Qt's event loop: it waits for the loop's end.
    try {
        work();
        work = nullptr;
        if (own->done && own->done()) {
            endLoop();
        }
    } catch (...) {
        own->thrown = std::current_exception();
        endLoop();
    }
    static_cast<void>(holds());
}

void QtMainQueue::endLoop() {
    if (loop != nullptr) {
        loop->events.quit();
        holding = true;
    }
}

void QtMainQueue::execute(OwnLoop& own) {
    QV_PRECONDITION(isMainThread(), "a main queue is run on its main thread");
    QV_PRECONDITION(loop == nullptr, "work of a main queue must not run the queue");
    loop = &own;
    own.events.exec();
    loop = nullptr;
    resume();
    if (own.thrown) {
        std::rethrow_exception(own.thrown);
    }
}

void QtMainQueue::resume() {
    holding = false;
    std::size_t events = std::exchange(heldEvents, 0);
    {
        const std::lock_guard lock(mutex);
        events = std::min(events, waiting.postedCount());
    }
    for (; events > 0; --events) {
        invokeSoon(&QtMainQueue::runOnePosted);
    }
    armTimer();
}

void QtMainQueue::run() {
    if (!quitAsked && !isClosed()) {
        OwnLoop own;
        execute(own);
    }
    quitAsked = false;
}

bool QtMainQueue::runUntil(const std::function<bool()>& done, nanoseconds atMost) {
    if (done() || isClosed()) {
        return done();
    }
    OwnLoop own;
    own.done = done;
    QTimer limit;
    limit.setSingleShot(true);
    limit.setTimerType(Qt::PreciseTimer);
    QObject::connect(&limit, &QTimer::timeout, receiver.get(), [this] { endLoop(); });
    limit.start(roundedUp(atMost));
    execute(own);
    return done();
}

std::size_t QtMainQueue::poll() {
    QV_PRECONDITION(isMainThread(), "a main queue is run on its main thread");
    QV_PRECONDITION(loop == nullptr, "work of a main queue must not run the queue");
    const WaitingWork::Time now = steady_clock::now();
    Ticket newest = 0;
    {
        const std::lock_guard lock(mutex);
        newest = waiting.newest();
    }
    const Polling polling(*this);
    QCoreApplication::processEvents();
    std::size_t pieces = 0;
    while (Work work = takePosted(newest)) {
        ++pieces;
        work();
    }
    while (Work work = takeDelayed(now, newest)) {
        ++pieces;
        work();
    }
    return pieces;
}

void QtMainQueue::quit() {
    quitAsked = true;
    invokeSoon(&QtMainQueue::noticeQuit);
}

} // namespace quorvane::platform::qt
