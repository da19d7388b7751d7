#pragma once

#include <QGuiApplication>

namespace quorvane {

/// On the display that there is; where there is none, where nobody sees it.
inline QGuiApplication& displayApplication() {
    static char name[] = "quorvane_benchmarks";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }
    // Left to the end of the process: by the time that statics are destroyed, Qt's own are gone.
    static auto& gui = *new QGuiApplication(count, arguments);
    return gui;
}

} // namespace quorvane
