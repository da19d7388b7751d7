#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "JSON/Tape.h"

namespace quorvane::json {

/// A perfect hash over a table's keys, found while compiling: one multiplication and one comparison per key of a
/// document.
template <std::size_t count>
class KeyIndex {
public:
    /// The place of a key that is not there.
    static constexpr std::size_t none = count;
    static_assert(count < 0xFF, "a table has at most 254 keys");

    consteval explicit KeyIndex(const std::array<std::string_view, count>& theNames) : names(theNames) {
        for (const bool withMiddle : {false, true}) {
            samplesMiddle = withMiddle;
            for (std::uint64_t attempt = 1; attempt < attempts; ++attempt) {
                factor = (attempt * 0x9E3779B97F4A7C15u) | 1u;
                if (fits()) {
                    return;
                }
            }
        }
        throw "two keys of one table are equal, or alike at their beginning, middle and end";
    }

    /// The place among the names of the only one that may equal @p key, or `none`.
    [[nodiscard]] QV_ALWAYS_INLINE constexpr std::size_t candidate(std::string_view key) const {
        return slots[slotOf(key)];
    }

    /// The place of @p key among the names, or `none`.
    [[nodiscard]] constexpr std::size_t find(std::string_view key) const {
        const std::size_t place = candidate(key);
        return place != none && names[place] == key ? place : none;
    }

private:
    static constexpr unsigned bits = std::bit_width(count) + 2;
    static constexpr std::uint64_t attempts = 5000;

    QV_ALWAYS_INLINE static constexpr std::uint64_t load(const char* text, std::size_t length) {
        std::uint64_t value = 0;
        if (std::is_constant_evaluated()) {
            for (std::size_t i = 0; i < length; ++i) {
                value |= static_cast<std::uint64_t>(static_cast<unsigned char>(text[i])) << (8 * i);
            }
        } else {
            std::memcpy(&value, text, length);
            if constexpr (std::endian::native == std::endian::big) {
                value = __builtin_bswap64(value);
            }
        }
        return value;
    }

    [[nodiscard]] QV_ALWAYS_INLINE constexpr std::size_t slotOf(std::string_view key) const {
        const char* const text = key.data();
        const std::size_t length = key.size();
        std::uint64_t sample = length;
        if (length >= 8) {
            sample += load(text, 8) + std::rotl(load(text + length - 8, 8), 23);
            if (samplesMiddle) {
                sample += std::rotl(load(text + length / 2 - 4, 8), 41);
            }
        } else if (length >= 4) {
            sample += (load(text, 4) << 8) + (load(text + length - 4, 4) << 32);
        } else if (length > 0) {
            sample += (load(text, 1) << 8) + (load(text + length / 2, 1) << 16) + (load(text + length - 1, 1) << 24);
        }
        return static_cast<std::size_t>(sample * factor >> (64 - bits));
    }

    constexpr bool fits() {
        slots.fill(static_cast<std::uint8_t>(none));
        for (std::size_t i = 0; i < count; ++i) {
            auto& slot = slots[slotOf(names[i])];
            if (slot != none) {
                return false;
            }
            slot = static_cast<std::uint8_t>(i);
        }
        return true;
    }

    std::array<std::string_view, count> names;
    std::uint64_t factor = 1;
    bool samplesMiddle = false;
    std::array<std::uint8_t, std::size_t{1} << bits> slots{};
};

} // namespace quorvane::json
