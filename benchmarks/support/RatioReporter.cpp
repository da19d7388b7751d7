#include "benchmarks/support/RatioReporter.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <tuple>
#include <utility>

namespace quorvane {

namespace {

/// "decode/50" and "ours".
std::pair<std::string, std::string> split(const std::string& name) {
    const auto slash = name.rfind('/');
    return slash == std::string::npos ? std::pair(name, name)
                                      : std::pair(name.substr(0, slash), name.substr(slash + 1));
}

std::string timeText(double nanoseconds) {
    const char* unit = "ns";
    for (const char* larger : {"us", "ms", "s"}) {
        if (nanoseconds < 1000) {
            break;
        }
        nanoseconds /= 1000;
        unit = larger;
    }
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.3g %s", nanoseconds, unit);
    return text;
}

} // namespace

bool RatioReporter::ReportContext(const Context&) {
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Aggregate) {
            continue;
        }
        const auto [group, name] = split(run.run_name.function_name);
        Row& row = groups[group][name];
        row.family = run.family_index;
        row.instance = run.per_family_instance_index;
        if (run.error_occurred) {
            row.result.error = run.error_message;
            continue;
        }
        const bool isOnTheWall = run.run_name.time_type == "real_time";
        const double seconds = isOnTheWall ? run.real_accumulated_time : run.cpu_accumulated_time;
        const double nanoseconds = seconds / static_cast<double>(run.iterations) * 1e9;
        row.result.nanoseconds = std::min(row.result.nanoseconds, nanoseconds);
        for (const auto& [counter, value] : run.counters) {
            row.result.counters[counter] = value;
        }
    }
}

void RatioReporter::printGroup(const std::string& group) const {
    std::vector<std::pair<std::string, Row>> rows(groups.at(group).begin(), groups.at(group).end());
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
        return std::pair(a.second.family, a.second.instance) < std::pair(b.second.family, b.second.instance);
    });
    std::printf("\n%-44s %10s %12s\n", group.c_str(), "speed", "time");
    const double measure = rows.front().second.result.nanoseconds;
    for (const auto& [name, row] : rows) {
        if (!row.result.error.empty()) {
            std::printf("  %-42s %s\n", name.c_str(), row.result.error.c_str());
            continue;
        }
        std::printf("  %-42s %10.2f %12s", name.c_str(), measure / row.result.nanoseconds,
                    timeText(row.result.nanoseconds).c_str());
        for (const auto& [counter, value] : row.result.counters) {
            std::printf("   %s %.6g", counter.c_str(), value);
        }
        std::printf("\n");
    }
}

void RatioReporter::Finalize() {
    std::vector<std::pair<std::int64_t, std::string>> order;
    for (const auto& [group, rows] : groups) {
        std::int64_t first = std::numeric_limits<std::int64_t>::max();
        for (const auto& [name, row] : rows) {
            first = std::min(first, row.family);
        }
        order.emplace_back(first, group);
    }
    std::sort(order.begin(), order.end());
    std::printf("Speed relative to the first of each group; larger is faster.\n");
    for (const auto& [first, group] : order) {
        printGroup(group);
    }
}

} // namespace quorvane
