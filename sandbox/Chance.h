#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace quorvane::sandbox {

/// Draws that come out the same everywhere: the standard's own distributions differ from library to library.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : engine(seed) {}

    /// From @p low to @p high inclusive; @p low where there is nothing between.
    std::int64_t whole(std::int64_t low, std::int64_t high) {
        const std::uint64_t drawn = engine();
        return low < high ? low + static_cast<std::int64_t>(drawn % (static_cast<std::uint64_t>(high - low) + 1)) : low;
    }
    /// In [0, 1).
    double fraction() { return static_cast<double>(engine() >> 11U) * 0x1p-53; }
    bool oneIn(std::int64_t count) { return whole(1, count) == 1; }

    template <class Item, std::size_t size>
    const Item& pick(const std::array<Item, size>& items) {
        return items[static_cast<std::size_t>(whole(0, static_cast<std::int64_t>(size) - 1))];
    }

    /// Digits, so many of them.
    std::string digits(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += static_cast<char>('0' + whole(0, 9));
        }
        return text;
    }

private:
    std::mt19937_64 engine;
};

} // namespace quorvane::sandbox
