#include "testing/DateText.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace quorvane::testing {

std::string dateText(platform::Date moment) {
    using namespace std::chrono;
    const sys_days day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss time(floor<milliseconds>(moment - day));
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    std::string result = text.data();
    if (time.subseconds().count() != 0) {
        std::snprintf(text.data(), text.size(), ".%03d", static_cast<int>(time.subseconds().count()));
        result += text.data();
    }
    return result + 'Z';
}

} // namespace quorvane::testing
