#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace quorvane::testing {

/// "$" and @p text with its checksum, as a line.
inline std::string sentence(const std::string& text) {
    unsigned sum = 0;
    for (const char c : text) {
        sum ^= static_cast<unsigned char>(c);
    }
    std::array<char, 8> tail{};
    std::snprintf(tail.data(), tail.size(), "*%02X\r\n", sum & 0xFFU);
    return "$" + text + tail.data();
}

/// A position at so many hundredths of a second after noon, as GGA and RMC tell it: at degrees and minutes of the
/// northern and the eastern half, with a dilution of 1.2.
inline std::string position(int hundredths, const std::string& north, const std::string& east = "01430.0000") {
    std::array<char, 16> time{};
    std::snprintf(time.data(), time.size(), "12%02d%02d.%02d", hundredths / 6000 % 60, hundredths / 100 % 60,
                  hundredths % 100);
    const std::string where = north + ",N," + east + ",E,";
    return sentence("GPGGA," + std::string(time.data()) + "," + where + "1,08,1.2,300.0,M,45.0,M,,") +
           sentence("GPRMC," + std::string(time.data()) + ",A," + where + "10.0,90.0,210326,,,A");
}

} // namespace quorvane::testing
