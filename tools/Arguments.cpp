#include "tools/Arguments.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "testing/TrackText.h"
#include "tools/Failure.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

[[noreturn]] void refuse(const std::string& option, std::string_view taken, const std::string& text) {
    throw WrongForm(option + " takes " + std::string(taken) + ", not \"" + printable(text) + "\"");
}

/// The whole of @p text as a number.
template <class Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Two numbers with a comma between them.
std::pair<double, double> pairIn(const std::string& option, std::string_view taken, const std::string& text) {
    const auto pair = testing::readPair(text);
    if (!pair) {
        refuse(option, taken, text);
    }
    return *pair;
}

} // namespace

platform::Coordinate coordinateIn(const std::string& option, const std::string& text) {
    const auto pair = pairIn(option, "LAT,LNG in degrees, such as 52.0931,5.6642", text);
    const platform::Coordinate coordinate{pair.first, pair.second};
    if (!coordinate.isValid()) {
        refuse(option, "a latitude from -90 to 90 and a longitude from -180 to 180", text);
    }
    return coordinate;
}

platform::Acceleration accelerationIn(const std::string& option, const std::string& text) {
    constexpr std::string_view taken = "X,Y in units of gravity, such as 0,-1";
    constexpr double most = 16;
    const auto pair = pairIn(option, taken, text);
    if (!(std::abs(pair.first) <= most && std::abs(pair.second) <= most)) {
        refuse(option, taken, text);
    }
    return {pair.first, pair.second, 0};
}

int metresIn(const std::string& option, const std::string& text) {
    const std::optional<int> metres = numberIn<int>(text);
    if (!metres || *metres < 0) {
        refuse(option, "a whole number of metres from 0 to " + std::to_string(std::numeric_limits<int>::max()), text);
    }
    return *metres;
}

std::size_t ordinalIn(const std::string& option, const std::string& text) {
    const std::optional<std::size_t> number = numberIn<std::size_t>(text);
    if (!number || *number == 0) {
        refuse(option, "a whole number from 1 on", text);
    }
    return *number;
}

std::vector<std::string> listIn(const std::string& option, const std::string& text) {
    std::vector<std::string> items(1);
    for (const char character : text) {
        if (character == ',') {
            items.emplace_back();
        } else {
            items.back() += character;
        }
    }
    if (std::find(items.begin(), items.end(), "") != items.end()) {
        refuse(option, "keys with commas between them, such as a1,a2", text);
    }
    return items;
}

std::uint16_t portIn(const std::string& option, const std::string& text) {
    const std::optional<std::uint16_t> port = numberIn<std::uint16_t>(text);
    if (!port || *port == 0) {
        refuse(option, "a port from 1 to 65535", text);
    }
    return *port;
}

QVLogLevel logLevelIn(const std::string& option, const std::string& text) {
    constexpr std::array<std::string_view, 5> names{"none", "error", "warning", "info", "debug"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == text) {
            return static_cast<QVLogLevel>(i);
        }
    }
    refuse(option, "none, error, warning, info or debug", text);
}

std::string textIn(const std::string& option, const std::string& text) {
    if (text.empty()) {
        throw WrongForm(option + " takes a text that is not empty");
    }
    return text;
}

} // namespace quorvane::tool
