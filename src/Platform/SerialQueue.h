#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace quorvane::platform {

/// A queue that runs one piece of work at a time, in the order of the calls. Safe from any thread.
///
/// - `sync` runs its work on the caller's thread, once all that came before has run; what the work throws passes
///   through. Called from inside work of the same queue it runs at once.
/// - `async` returns at once; its work runs later on a thread of the queue's own, which is started on first use. Where
///   the system gives none, the work runs on the caller's thread, as with `sync`. What it throws is fatal.
/// - The destructor lets the work that was accepted run to its end; inside work of the queue itself it does not wait
///   for it.
class SerialQueue {
public:
    explicit SerialQueue(std::string label);
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;
    ~SerialQueue();

    [[nodiscard]] const std::string& label() const;

    template <class Work>
    decltype(auto) sync(Work&& work) {
        const Turn turn(state);
        return std::forward<Work>(work)();
    }

    void async(std::function<void()> work);

private:
    struct State;

    /// Starts the queue's own thread if need be.
    bool hasThread();

    /// The right to run, held while it lives. It may outlive the queue.
    class Turn {
    public:
        explicit Turn(std::shared_ptr<State> theState);
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn();

    private:
        const std::shared_ptr<State> state;
    };

    const std::shared_ptr<State> state;
};

} // namespace quorvane::platform
