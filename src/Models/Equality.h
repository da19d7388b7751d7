#pragma once

#include <algorithm>
#include <memory>
#include <vector>

namespace quorvane {

/// Whether two pointers stand for equal objects: compared by the objects' own equality; none equals none.
template <class T>
[[nodiscard]] bool haveEqualObjects(const std::shared_ptr<T>& a, const std::shared_ptr<T>& b) {
    return a == b || (a && b && *a == *b);
}

/// Whether two lists of pointers are of one length and equal element by element.
template <class T>
[[nodiscard]] bool haveEqualObjects(const std::vector<std::shared_ptr<T>>& a,
                                    const std::vector<std::shared_ptr<T>>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& first, const auto& second) { return haveEqualObjects(first, second); });
}

} // namespace quorvane
