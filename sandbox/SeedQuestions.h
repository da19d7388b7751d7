#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sandbox/SeedText.h"

namespace quorvane::sandbox {

/// Where a question stands in its task.
struct QuestionSlot {
    std::string taskKey;
    std::int64_t index = 0;
    std::int64_t count = 0;

    [[nodiscard]] std::string key() const { return keyOf(index); }
    /// The key of the question at @p other; empty beyond the ends.
    [[nodiscard]] std::string keyOf(std::int64_t other) const {
        return other >= 0 && other < count ? taskKey + "-q" + std::to_string(other + 1) : std::string();
    }
};

/// What every question has. Its parent is the one before it.
[[nodiscard]] ObjectText makeQuestion(const QuestionSlot& slot, std::string_view type, std::string_view text,
                                      const ObjectText& owners);

/// The choice at @p index of a question, which leads to @p nextKey.
[[nodiscard]] ObjectText makeAnswer(const std::string& questionKey, std::int64_t index, std::string_view text,
                                    const std::string& nextKey, std::int64_t score, const ObjectText& owners);

/// Every guide and every frame for some @p number; the photo is required for odd ones.
[[nodiscard]] ObjectText makePhotoOptions(std::int64_t number);

} // namespace quorvane::sandbox
