#pragma once

#include <memory>
#include <utility>

namespace quorvane::platform {

/// A member that lets posted work find out whether its owner still lives. Declare it last, so that it goes first.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

    /// @p work, wrapped so that calling it does nothing once the owner is gone. Call it on the owner's thread.
    template <class Work>
    [[nodiscard]] auto guard(Work work) const {
        return [token = std::weak_ptr<const int>(alive), work = std::move(work)](auto&&... arguments) mutable {
            if (!token.expired()) {
                work(std::forward<decltype(arguments)>(arguments)...);
            }
        };
    }

private:
    std::shared_ptr<const int> alive = std::make_shared<const int>(0);
};

} // namespace quorvane::platform
