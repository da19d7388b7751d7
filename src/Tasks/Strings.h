#pragma once

#include <cstddef>
#include <string>

namespace quorvane {

/// Sentences that tell a user what a task asks, in English.
class Strings {
public:
    Strings() = delete;

    [[nodiscard]] static std::string questionRequirement(std::size_t count);
    [[nodiscard]] static std::string photoRequirement(std::size_t count);
};

} // namespace quorvane
