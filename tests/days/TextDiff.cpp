#include "days/TextDiff.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <utility>
#include <vector>

namespace quorvane::days {
namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Each line of either, in order, behind what became of it.
std::vector<std::pair<char, std::string>> changes(const Lines& before, const Lines& after) {
    // The length of the longest common sequence of what is left of both.
    std::vector<std::vector<std::uint32_t>> common(before.size() + 1, std::vector<std::uint32_t>(after.size() + 1));
    for (std::size_t i = before.size(); i-- > 0;) {
        for (std::size_t j = after.size(); j-- > 0;) {
            common[i][j] =
                before[i] == after[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::vector<std::pair<char, std::string>> result;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < before.size() || j < after.size()) {
        if (i < before.size() && j < after.size() && before[i] == after[j]) {
            result.emplace_back(' ', before[i++]);
            ++j;
        } else if (j == after.size() || (i < before.size() && common[i + 1][j] >= common[i][j + 1])) {
            result.emplace_back('-', before[i++]);
        } else {
            result.emplace_back('+', after[j++]);
        }
    }
    return result;
}

} // namespace

std::string differences(const std::string& expected, const std::string& actual) {
    if (expected == actual) {
        return "";
    }
    constexpr std::size_t around = 3;
    const auto all = changes(linesOf(expected), linesOf(actual));
    std::string result;
    bool wasShown = true;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::size_t first = i < around ? 0 : i - around;
        const std::size_t last = std::min(all.size(), i + around + 1);
        const bool isShown = std::any_of(all.begin() + static_cast<std::ptrdiff_t>(first),
                                         all.begin() + static_cast<std::ptrdiff_t>(last),
                                         [](const auto& line) { return line.first != ' '; });
        if (isShown) {
            result += (wasShown ? "" : "...\n") + (all[i].first + all[i].second) + '\n';
        }
        wasShown = isShown;
    }
    return result.empty() ? "the texts end differently\n" : result;
}

} // namespace quorvane::days
