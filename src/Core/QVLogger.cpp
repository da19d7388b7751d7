#include "Core/QVLogger.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "Core/StoredLogLevel.h"
#include "JSON/NumberText.h"
#include "Platform/Application.h"
#include "Platform/MainQueue.h"

namespace quorvane {

QVLogger::QVLogger(platform::Platform& thePlatform) : platform(thePlatform) {}

void QVLogger::log(QVLogLevel level, std::string message) {
    log(level, [message = std::move(message)]() -> const std::string& { return message; });
}

void QVLogger::post(std::function<void()> work) {
    platform.mainQueue().post(std::move(work));
}

bool QVLogger::admits(QVLogLevel level) {
    return storedLogLevel() >= level;
}

void QVLogger::write(const std::string& message) {
    // What stands for the foreground, where nothing limits the time, in a line.
    constexpr double foregroundSeconds = 180.0;
    platform::Application& application = platform.application();
    const double remaining = application.backgroundTimeRemaining();
    const platform::Date now = platform.clock().now();

    std::string line = logTimestamp(now, platform.clock().offsetFromUTC(now));
    line += " Quorvane ";
    line += message;
    line += " | backgroundTimeRemaining = ";
    line += json::textOf(remaining == platform::Application::foreground ? foregroundSeconds : remaining);

    application.standardOutput(line);
    if (const auto receiver = delegate.lock()) {
        receiver->onLog(line);
    }
}

std::string logTimestamp(platform::Date moment, std::chrono::seconds offset) {
    using namespace std::chrono;
    const auto local = floor<seconds>(moment) + offset;
    const auto day = floor<days>(local);
    const year_month_day date(day);
    const hh_mm_ss time(local - day);
    const auto hour = make12(time.hours());

    std::array<char, 64> text{};
    int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d GMT",
                               static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                               static_cast<unsigned>(date.day()), static_cast<int>(hour.count()),
                               static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    std::string line(text.data(), static_cast<std::size_t>(length));
    if (offset.count() != 0) {
        const long long whole = std::llabs(offset.count());
        length = std::snprintf(text.data(), text.size(), "%c%02lld:%02lld", offset.count() < 0 ? '-' : '+',
                               whole / 3600, whole / 60 % 60);
        line.append(text.data(), static_cast<std::size_t>(length));
        if (whole % 60 != 0) {
            length = std::snprintf(text.data(), text.size(), ":%02lld", whole % 60);
            line.append(text.data(), static_cast<std::size_t>(length));
        }
    }
    return line;
}

} // namespace quorvane
