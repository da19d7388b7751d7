#include "Models/DateDescription.h"

#include <array>
#include <cstdio>

namespace quorvane {

std::string descriptionOf(json::Date date) {
    // By whole seconds, of which a day at either end of time still has all.
    const auto moment = std::chrono::floor<std::chrono::seconds>(date);
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day calendar{day};
    const std::chrono::hh_mm_ss time{moment - day};
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(calendar.year()),
                  static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text.data();
}

} // namespace quorvane
