#include "Tasks/QVTask.h"

#include <array>
#include <charconv>

namespace quorvane {
namespace {

constexpr double kilometresPerMile = 1.609344;

/// Two decimals whatever the process's locale is.
std::string withTwoDecimals(double value) {
    std::array<char, 400> text;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 2);
    return {text.data(), end};
}

std::optional<std::string> campaignOf(const QVTask& task) {
    return task.owners ? task.owners->campaign : std::nullopt;
}

} // namespace

std::string QVTask::distanceText(bool metric) const {
    return withTwoDecimals(metric ? distance * kilometresPerMile : distance) + " miles away";
}

bool operator==(const QVTask& a, const QVTask& b) {
    return a.locationKey == b.locationKey && campaignOf(a) == campaignOf(b);
}

} // namespace quorvane
