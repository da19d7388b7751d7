#include "tools/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace quorvane::tool {
namespace {

bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

template <class... Values>
std::string formatted(const char* form, Values... values) {
    // Two coordinates of the longest numbers have 320 characters each.
    std::array<char, 1024> text{};
    const int length = std::snprintf(text.data(), text.size(), form, values...);
    return {text.data(), std::min(static_cast<std::size_t>(length), text.size() - 1)};
}

} // namespace

std::size_t width(std::string_view text) {
    std::size_t columns = 0;
    for (const char byte : text) {
        columns += beginsCharacter(byte) ? 1 : 0;
    }
    return columns;
}

std::string clipped(std::string_view text, std::size_t columns) {
    if (width(text) <= columns || columns == 0) {
        return std::string(columns == 0 ? std::string_view() : text);
    }
    std::size_t end = 0;
    for (std::size_t taken = 0; taken < columns; ++end) {
        taken += beginsCharacter(text[end]) ? 1 : 0;
    }
    // The last character that was counted makes room for the mark.
    return std::string(text.substr(0, end - 1)) + "…";
}

std::string padded(std::string_view text, std::size_t columns) {
    const std::size_t used = width(text);
    return std::string(text) + std::string(used < columns ? columns - used : 0, ' ');
}

std::string metresText(double metres, int moreDigits) {
    if (metres < 999.5) {
        return formatted("%.*f m", moreDigits, metres);
    }
    return formatted("%.*f km", moreDigits + (metres < 9'950 ? 1 : 0), metres / 1000);
}

std::string coordinateText(const platform::Coordinate& coordinate) {
    return formatted("%.5f, %.5f", coordinate.latitude, coordinate.longitude);
}

std::string timeText(platform::Date moment) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    const std::chrono::hh_mm_ss time(seconds - std::chrono::floor<std::chrono::days>(seconds));
    return formatted("%02d:%02d:%02d", static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                     static_cast<int>(time.seconds().count()));
}

std::string durationText(std::chrono::seconds duration) {
    const std::int64_t seconds = duration.count();
    if (seconds < 60) {
        return std::to_string(seconds) + " s";
    }
    const std::int64_t minutes = (seconds + 30) / 60;
    if (minutes < 60) {
        return std::to_string(minutes) + " min";
    }
    const std::string hours = std::to_string(minutes / 60) + " h";
    return minutes % 60 == 0 ? hours : hours + " " + std::to_string(minutes % 60) + " min";
}

std::string counted(std::size_t count, std::string_view noun, std::string_view plural) {
    const std::string many = plural.empty() ? std::string(noun) + "s" : std::string(plural);
    return std::to_string(count) + " " + (count == 1 ? std::string(noun) : many);
}

} // namespace quorvane::tool
