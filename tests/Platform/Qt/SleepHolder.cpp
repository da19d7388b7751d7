// Holds the system's sleep off until it is killed. Usage: SleepHolder HOME

#include <QCoreApplication>
#include <cstdio>
#include <exception>
#include <utility>

#include "Platform/Application.h"
#include "Platform/Qt/QtPlatform.h"

namespace {

void hold(const char* home) {
    using namespace quorvane::platform;
    QtOptions options;
    options.native.home = home;
    options.positions = NMEAFile{};
    const auto platform = QtPlatform::make(std::move(options));
    (void)platform->application().beginBackgroundTask("held to the end", [] {});
    std::puts("ready");
    std::fflush(stdout);
    platform->mainQueue().run();
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    try {
        const QCoreApplication application(count, arguments);
        QCoreApplication::setApplicationName(QStringLiteral("holder"));
        hold(arguments[1]);
    } catch (const std::exception& error) {
        std::fputs(error.what(), stderr);
        return 1;
    }
    return 0;
}
