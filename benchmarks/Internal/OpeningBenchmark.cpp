#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <functional>
#include <memory>

#include <benchmark/benchmark.h>

#include "Facade/Quorvane.h"
#include "Internal/Views/Capture.h"
#include "Tasks/QVQuestion.h"
#include "testing/InstalledPlatform.h"
#include "testing/SimulatedAccelerometer.h"
#include "testing/SimulatedCamera.h"

namespace quorvane {
namespace {

constexpr QSize size{360, 640};

/// On the display that there is; where there is none, where nobody sees it.
QGuiApplication& application() {
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

/// Runs events until @p window has drawn a frame.
void awaitFirstFrame(QQuickWindow& window) {
    bool isDrawn = false;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&isDrawn] { isDrawn = true; });
    while (!isDrawn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    window.disconnect();
}

/// Opens windows and closes them; what is measured ends with the first frame that is drawn.
void measureOpening(benchmark::State& state, const std::function<void(QQuickWindow&)>& fill,
                    const std::function<void()>& empty) {
    std::unique_ptr<QQuickWindow> window;
    const auto open = [&] {
        window = std::make_unique<QQuickWindow>();
        window->resize(size);
        fill(*window);
        window->show();
        awaitFirstFrame(*window);
    };
    const auto close = [&] {
        empty();
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    // Warms the engine.
    open();
    close();
    for ([[maybe_unused]] const auto iteration : state) {
        open();
        state.PauseTiming();
        close();
        state.ResumeTiming();
    }
}

/// The library with a camera and an accelerometer.
class Screens {
public:
    Screens() {
        cameras->camera->flash = true;
        capture::install({cameras, nullptr, accelerometer, nullptr});
        question->photoCaptureOptions = std::make_shared<QVPhotoCaptureOptions>();
        question->photoCaptureOptions->photoLevelType = QVPhotoLevelType::vertical;
        question->photoCaptureOptions->photoOverlayType = QVPhotoOverlayType::circle_square;
    }

    QGuiApplication& gui = application();
    testing::InstalledPlatform platform;
    const std::shared_ptr<testing::SimulatedCameras> cameras =
        std::make_shared<testing::SimulatedCameras>(platform->mainQueue());
    const std::shared_ptr<testing::SimulatedAccelerometer> accelerometer =
        std::make_shared<testing::SimulatedAccelerometer>(*platform);
    const std::shared_ptr<QVQuestion> question = std::make_shared<QVQuestion>();
};

void openEmptyWindow(benchmark::State& state) {
    const Screens screens;
    measureOpening(
        state, [](QQuickWindow&) {}, [] {});
}
BENCHMARK(openEmptyWindow)
    ->Name("open a screen to its first frame/an empty window")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void openPhotoScreen(benchmark::State& state) {
    const Screens screens;
    std::shared_ptr<platform::ImagePicker> picker;
    measureOpening(
        state,
        [&](QQuickWindow& window) {
            picker = Quorvane::createImagePicker(screens.question);
            capture::present(*picker, window, false);
        },
        [&] { picker = nullptr; });
}
BENCHMARK(openPhotoScreen)
    ->Name("open a screen to its first frame/photo")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void openScanner(benchmark::State& state) {
    const Screens screens;
    std::shared_ptr<BarcodeScannerViewControllerType> scanner;
    measureOpening(
        state,
        [&](QQuickWindow& window) {
            scanner = Quorvane::createBarcodeScanner();
            capture::present(*scanner, window, false);
        },
        [&] { scanner = nullptr; });
}
BENCHMARK(openScanner)->Name("open a screen to its first frame/scanner")->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvane
