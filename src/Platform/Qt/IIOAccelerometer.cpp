#include "Platform/Qt/IIOAccelerometer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::platform::qt {
namespace {

constexpr std::array<std::string_view, 3> axisNames{"x", "y", "z"};

/// The first line; empty when the file cannot be read.
std::string lineOf(const std::string& file) {
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line;
}

/// Numbers with blanks, commas and semicolons between them; empty when anything else is there.
std::vector<double> numbersIn(std::string_view text) {
    std::vector<double> numbers;
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t,;"), text.size()));
        if (text.empty()) {
            return numbers;
        }
        double number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || !std::isfinite(number)) {
            return {};
        }
        numbers.push_back(number);
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
}

std::optional<double> numberIn(const std::string& file) {
    const std::vector<double> numbers = numbersIn(lineOf(file));
    return numbers.size() == 1 ? std::optional(numbers.front()) : std::nullopt;
}

/// A property of one axis, or of all of them.
std::optional<double> property(const std::string& device, std::string_view axis, const std::string& name) {
    const std::optional<double> own = numberIn(device + "/in_accel_" + std::string(axis) + "_" + name);
    return own ? own : numberIn(device + "/in_accel_" + name);
}

/// 0 for the screen's half of a folding device, 2 for the keyboard's, 1 for what does not say.
int rank(const std::string& device) {
    const std::string label = lineOf(device + "/label");
    const std::string location = lineOf(device + "/location");
    if (label == "accel-display" || location == "lid") {
        return 0;
    }
    return label == "accel-base" || location == "base" ? 2 : 1;
}

} // namespace

std::optional<IIOAccelerometer> IIOAccelerometer::find(const std::string& directory) {
    std::vector<std::pair<int, std::string>> devices;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string device = entry->path().string();
        devices.emplace_back(rank(device), device);
    }
    std::sort(devices.begin(), devices.end());
    for (const auto& [ignored, device] : devices) {
        if (auto found = at(device)) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<IIOAccelerometer> IIOAccelerometer::at(const std::string& device) {
    IIOAccelerometer found;
    for (std::size_t i = 0; i < axisNames.size(); ++i) {
        const std::string rawFile = device + "/in_accel_" + std::string(axisNames[i]) + "_raw";
        const std::optional<double> scale = property(device, axisNames[i], "scale");
        std::error_code error;
        if (!scale || *scale == 0 || !std::filesystem::exists(rawFile, error)) {
            return std::nullopt;
        }
        found.axes[i] = {rawFile, property(device, axisNames[i], "offset").value_or(0), *scale};
    }
    for (const char* name : {"/in_accel_mount_matrix", "/in_mount_matrix", "/mount_matrix"}) {
        const std::vector<double> matrix = numbersIn(lineOf(device + name));
        if (matrix.size() == found.mounting.size()) {
            std::copy(matrix.begin(), matrix.end(), found.mounting.begin());
            break;
        }
    }
    return found;
}

std::optional<Acceleration> IIOAccelerometer::read() const {
    std::array<double, 3> chip{};
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const std::optional<double> raw = numberIn(axes[i].rawFile);
        if (!raw) {
            return std::nullopt;
        }
        chip[i] = (*raw + axes[i].offset) * axes[i].scale;
    }
    // The kernel tells what holds the device up, which at rest is the opposite of gravity.
    const auto row = [&](std::size_t first) {
        return (mounting[first] * chip[0] + mounting[first + 1] * chip[1] + mounting[first + 2] * chip[2]) /
               -standardGravity;
    };
    return Acceleration{row(0), row(3), row(6)};
}

} // namespace quorvane::platform::qt
