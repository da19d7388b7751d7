#pragma once

#include <cstdint>
#include <string>

namespace quorvane::testing {

/// Puts the code point @p point behind @p text; what is no character becomes U+FFFD.
inline void appendUTF8(std::string& text, std::uint32_t point) {
    if (point >= 0x110000 || (point >= 0xD800 && point < 0xE000)) {
        point = 0xFFFD;
    }
    const auto follow = [&text, point](unsigned shift) {
        text += static_cast<char>(0x80U | ((point >> shift) & 0x3FU));
    };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | (point >> 6U));
        follow(0);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0U | (point >> 12U));
        follow(6);
        follow(0);
    } else {
        text += static_cast<char>(0xF0U | (point >> 18U));
        follow(12);
        follow(6);
        follow(0);
    }
}

} // namespace quorvane::testing
