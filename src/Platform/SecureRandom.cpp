#include "Platform/SecureRandom.h"

#include <cstring>
#include <limits>

namespace quorvane::platform {

std::uint64_t SecureRandom::uniform(std::uint64_t low, std::uint64_t high) {
    const std::uint64_t span = high - low;
    if (span == std::numeric_limits<std::uint64_t>::max()) {
        std::uint64_t value = 0;
        std::memcpy(&value, bytes(sizeof value).data(), sizeof value);
        return value;
    }
    const std::uint64_t choices = span + 1;
    // Values at the top that would favour the low choices are drawn again.
    const std::uint64_t limit = std::numeric_limits<std::uint64_t>::max() / choices * choices;
    std::uint64_t value = 0;
    do {
        std::memcpy(&value, bytes(sizeof value).data(), sizeof value);
    } while (value >= limit);
    return low + value % choices;
}

std::string SecureRandom::uuid() {
    std::vector<std::uint8_t> random = bytes(16);
    random[6] = static_cast<std::uint8_t>((random[6] & 0x0FU) | 0x40U);
    random[8] = static_cast<std::uint8_t>((random[8] & 0x3FU) | 0x80U);
    return uuidText(random.data());
}

std::string uuidText(const std::uint8_t* bytes) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            text += '-';
        }
        text += digits[bytes[i] >> 4U];
        text += digits[bytes[i] & 0x0FU];
    }
    return text;
}

} // namespace quorvane::platform
