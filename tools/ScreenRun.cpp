#include "tools/ScreenRun.h"

#include <QEvent>
#include <QGuiApplication>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <optional>
#include <utility>

#include "Internal/Views/Capture.h"
#include "Platform/Accelerometer.h"
#include "Platform/Camera.h"
#include "Platform/Qt/QtPlatform.h"
#include "Platform/SystemSound.h"
#include "tools/Failure.h"
#include "tools/Session.h"
#include "tools/TemporaryFolder.h"
#include "tools/Terminal.h"
#include "tools/ToolPlatform.h"

namespace quorvane::tool {
namespace {

class NoSound final : public platform::SystemSound {
public:
    void play(Identifier /*sound*/) override {}
};

/// What the toolkit has to say is for its programmers, but for what ends the program.
void leaveOut(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type == QtFatalMsg) {
        std::fputs((message + '\n').toLocal8Bit().constData(), stderr);
    }
}

void setWhereUnset(const char* variable, const char* value) {
    if (!qEnvironmentVariableIsSet(variable)) {
        qputenv(variable, value);
    }
}

void requireDisplay() {
    for (const char* const variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (qEnvironmentVariableIsSet(variable)) {
            return;
        }
    }
    throw Failure("there is no display to show a window on");
}

/// Whoever wants the application to quit wants the program to end.
class Quitting final : public QObject {
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() != QEvent::Quit) {
            return false;
        }
        std::raise(SIGTERM);
        return true;
    }
};

} // namespace

class ScreenRun::Application {
public:
    explicit Application(bool hasWindow) : messages(qInstallMessageHandler(leaveOut)) {
        if (hasWindow) {
            requireDisplay();
        } else {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            qputenv("QT_QUICK_BACKEND", "software");
        }
        setWhereUnset("QT_MEDIA_BACKEND", "ffmpeg");
        // The program leaves nothing behind.
        qputenv("QML_DISABLE_DISK_CACHE", "1");
        if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
            runtimeFolder.emplace();
            qputenv("XDG_RUNTIME_DIR", runtimeFolder->path().c_str());
        }
        gui.emplace(count, arguments);
        QGuiApplication::setApplicationName("quorvane");
        // What the user closes is a screen: the command ends itself.
        QGuiApplication::setQuitOnLastWindowClosed(false);
        gui->installEventFilter(&quitting);
    }
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() {
        gui.reset();
        qInstallMessageHandler(messages);
    }

private:
    /// In the place of the user's own, which the toolkit would make among the temporary files and leave there.
    std::optional<TemporaryFolder> runtimeFolder;
    const QtMessageHandler messages;
    char name[9] = "quorvane";
    char* arguments[2] = {name, nullptr};
    int count = 1;
    Quitting quitting;
    std::optional<QGuiApplication> gui;
};

ScreenRun::ScreenRun(const GlobalOptions& options, Terminal& terminal, bool hasWindow)
    : isSilent(!hasWindow),
      application(std::make_unique<Application>(hasWindow)),
      ownSession(std::make_unique<Session>(options, terminal, nullptr,
                                           [](platform::NativeOptions native, std::optional<QVLogLevel> logLevel) {
                                               return std::make_shared<RunPlatform<platform::QtPlatform>>(
                                                   platform::QtOptions{std::move(native), {}}, logLevel);
                                           })) {}

ScreenRun::~ScreenRun() {
    // What is left of screens goes before the library and the toolkit.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ScreenRun::see(std::shared_ptr<platform::Cameras> cameras,
                    std::shared_ptr<platform::Accelerometer> accelerometer) {
    capture::Devices devices;
    devices.cameras = std::move(cameras);
    devices.accelerometer = std::move(accelerometer);
    if (isSilent) {
        devices.sounds = std::make_shared<NoSound>();
    }
    capture::install(std::move(devices));
}

Session& ScreenRun::session() {
    return *ownSession;
}

void ScreenRun::runUntil(const std::function<bool()>& isDone) {
    constexpr auto slice = std::chrono::milliseconds(100);
    do {
        Interruption::check();
    } while (!ownSession->platform().mainQueue().runUntil(isDone, slice));
}

} // namespace quorvane::tool
