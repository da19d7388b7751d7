// Holds the system's sleep off until it is killed. Usage: SleepHolder HOME

#include <QCoreApplication>
#include <cstdio>

#include "Platform/Application.h"
#include "Platform/Qt/QtPlatform.h"

int main(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    QCoreApplication::setApplicationName(QStringLiteral("holder"));
    quorvane::platform::QtOptions options;
    options.native.home = arguments[1];
    options.positions = quorvane::platform::NMEAFile{};
    const auto platform = quorvane::platform::QtPlatform::make(std::move(options));
    (void)platform->application().beginBackgroundTask("held to the end", [] {});
    std::puts("ready");
    std::fflush(stdout);
    platform->mainQueue().run();
    return 0;
}
