#pragma once

#include <cstddef>

namespace quorvane::json {

/// Memory for more than that is not worth keeping: one large text would hold it for as long as its thread lives.
inline constexpr std::size_t largestKeptCapacity = std::size_t{1} << 20;

/// What each thread keeps for its next use, one @p Kept a thread. It ends with the thread, and on the main thread
/// before the program's static objects do, whose destructors may encode and decode: whoever asks does without it then.
template <class Kept>
class PerThread {
public:
    /// Null once this thread's one has ended.
    static Kept* get() {
        if (hasEnded) {
            return nullptr;
        }
        thread_local Holder holder;
        return &holder.kept;
    }

private:
    struct Holder {
        Holder() = default;
        Holder(const Holder&) = delete;
        Holder& operator=(const Holder&) = delete;
        ~Holder() { hasEnded = true; }
        Kept kept;
    };

    static inline thread_local bool hasEnded = false;
};

} // namespace quorvane::json
