#include "testing/DateText.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "testing/TrackText.h"

namespace quorvane::testing {
namespace {

/// Takes texts apart from their front. Once something is missing, everything that follows is.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    /// A number of exactly @p digits digits.
    int number(std::size_t digits) {
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            good = good && i < rest.size() && isDigit(rest[i]);
            value = good ? value * 10 + (rest[i] - '0') : 0;
        }
        drop(digits);
        return value;
    }

    bool take(char expected) {
        const bool found = good && !rest.empty() && rest.front() == expected;
        drop(found ? 1 : 0);
        return found;
    }

    void expect(char expected) { good = take(expected) && good; }

    /// Nanoseconds of the digits that stand at the front, one of them at least.
    int fraction() {
        int value = 0;
        int unit = 100'000'000;
        good = good && !rest.empty() && isDigit(rest.front());
        while (good && !rest.empty() && isDigit(rest.front())) {
            value += unit * (rest.front() - '0');
            unit /= 10;
            drop(1);
        }
        return value;
    }

    [[nodiscard]] bool isGood() const { return good; }
    [[nodiscard]] bool isAtEnd() const { return rest.empty(); }

private:
    void drop(std::size_t count) {
        if (good) {
            rest.remove_prefix(count);
        }
    }

    std::string_view rest;
    bool good = true;
};

/// Minutes east of UTC.
int readZone(Scanner& scanner, bool& valid) {
    if (scanner.isAtEnd() || scanner.take('Z')) {
        return 0;
    }
    const int sign = scanner.take('-') ? -1 : 1;
    if (sign == 1) {
        scanner.expect('+');
    }
    const int hours = scanner.number(2);
    scanner.expect(':');
    const int minutes = scanner.number(2);
    valid = hours <= 14 && minutes <= 59;
    return sign * (hours * 60 + minutes);
}

} // namespace

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

std::optional<platform::Date> readDate(std::string_view text) {
    using namespace std::chrono;
    Scanner scanner(text);
    const year y(scanner.number(4));
    scanner.expect('-');
    const month m(static_cast<unsigned>(scanner.number(2)));
    scanner.expect('-');
    const day d(static_cast<unsigned>(scanner.number(2)));
    scanner.expect('T');
    const int hour = scanner.number(2);
    scanner.expect(':');
    const int minute = scanner.number(2);
    scanner.expect(':');
    const int second = scanner.number(2);
    const int fraction = scanner.take('.') ? scanner.fraction() : 0;
    bool zoneIsValid = true;
    const int zone = readZone(scanner, zoneIsValid);
    const year_month_day date(y, m, d);
    const bool endOfDay = hour == 24 && minute == 0 && second == 0 && fraction == 0;
    const bool inRange = y >= year(1678) && y <= year(2261);
    if (!scanner.isGood() || !scanner.isAtEnd() || !zoneIsValid || !inRange || !date.ok() || (hour > 23 && !endOfDay) ||
        minute > 59 || second > 60) {
        return std::nullopt;
    }
    return sys_days(date) + hours(hour) + minutes(minute - zone) + seconds(second) + nanoseconds(fraction);
}

} // namespace quorvane::testing
