#include <QQuickItem>
#include <QQuickWindow>
#include <functional>
#include <memory>

#include <benchmark/benchmark.h>

#include "Facade/Quorvane.h"
#include "Internal/Views/Capture.h"
#include "Tasks/QVQuestion.h"
#include "benchmarks/Internal/Display.h"
#include "testing/InstalledPlatform.h"
#include "testing/SimulatedAccelerometer.h"
#include "testing/SimulatedCamera.h"

namespace quorvane {
namespace {

constexpr QSize size{360, 640};

/// Runs events until @p window has drawn what it shows now.
void awaitFrame(QQuickWindow& window) {
    bool isSynchronized = false;
    bool isDrawn = false;
    QObject frames;
    // On the thread that draws: the main thread is not asked for what a frame shows that was begun before.
    QObject::connect(
        &window, &QQuickWindow::afterSynchronizing, &frames, [&] { isSynchronized = true; }, Qt::DirectConnection);
    QObject::connect(&window, &QQuickWindow::frameSwapped, &frames, [&] { isDrawn = isSynchronized; });
    window.update();
    while (!isDrawn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// Shows a screen over a window, and takes it away again.
struct Opened {
    std::function<void(QQuickWindow&)> show = [](QQuickWindow&) {};
    std::function<void()> close = [] {};
};

std::unique_ptr<QQuickWindow> newWindow() {
    auto window = std::make_unique<QQuickWindow>();
    window->resize(size);
    return window;
}

void deleteWhatIsLeft() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// A window is opened with the screen in it; what is measured ends with the first frame that is drawn.
void measureInNewWindow(benchmark::State& state, const Opened& screen) {
    std::unique_ptr<QQuickWindow> window;
    const auto open = [&] {
        window = newWindow();
        screen.show(*window);
        window->show();
        awaitFrame(*window);
    };
    const auto close = [&] {
        screen.close();
        window.reset();
        deleteWhatIsLeft();
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

/// The screen is shown in a host's window that is open.
void measureInOpenWindow(benchmark::State& state, const Opened& screen) {
    const std::unique_ptr<QQuickWindow> window = newWindow();
    window->show();
    awaitFrame(*window);
    const auto show = [&] {
        screen.show(*window);
        awaitFrame(*window);
    };
    const auto close = [&] {
        screen.close();
        deleteWhatIsLeft();
        awaitFrame(*window);
    };
    // Warms the engine and the window.
    show();
    close();
    for ([[maybe_unused]] const auto iteration : state) {
        show();
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

    QGuiApplication& gui = displayApplication();
    testing::InstalledPlatform platform;
    const std::shared_ptr<testing::SimulatedCameras> cameras =
        std::make_shared<testing::SimulatedCameras>(platform->mainQueue());
    const std::shared_ptr<testing::SimulatedAccelerometer> accelerometer =
        std::make_shared<testing::SimulatedAccelerometer>(*platform);
    const std::shared_ptr<QVQuestion> question = std::make_shared<QVQuestion>();
};

Opened nothing(const Screens& /*screens*/) {
    return {};
}

Opened photoScreen(const Screens& screens) {
    const auto picker = std::make_shared<std::shared_ptr<platform::ImagePicker>>();
    return {[&screens, picker](QQuickWindow& window) {
                *picker = Quorvane::createImagePicker(screens.question);
                capture::present(**picker, window, false);
            },
            [picker] { *picker = nullptr; }};
}

Opened scannerScreen(const Screens& /*screens*/) {
    const auto scanner = std::make_shared<std::shared_ptr<BarcodeScannerViewControllerType>>();
    return {[scanner](QQuickWindow& window) {
                *scanner = Quorvane::createBarcodeScanner();
                capture::present(**scanner, window, false);
            },
            [scanner] { *scanner = nullptr; }};
}

using Measure = void (*)(benchmark::State&, const Opened&);

void open(benchmark::State& state, Measure measure, Opened (*screen)(const Screens&)) {
    const Screens screens;
    measure(state, screen(screens));
}

const bool isRegistered = [] {
    const auto add = [](const char* name, Measure measure, Opened (*screen)(const Screens&)) {
        benchmark::RegisterBenchmark(name, &open, measure, screen)->UseRealTime()->Unit(benchmark::kMillisecond);
    };
    add("open a screen to its first frame, in a new window/an empty window", &measureInNewWindow, &nothing);
    add("open a screen to its first frame, in a new window/photo", &measureInNewWindow, &photoScreen);
    add("open a screen to its first frame, in a new window/scanner", &measureInNewWindow, &scannerScreen);
    add("open a screen to its first frame, in an open window/a new empty window", &measureInNewWindow, &nothing);
    add("open a screen to its first frame, in an open window/nothing new in it", &measureInOpenWindow, &nothing);
    add("open a screen to its first frame, in an open window/photo", &measureInOpenWindow, &photoScreen);
    add("open a screen to its first frame, in an open window/scanner", &measureInOpenWindow, &scannerScreen);
    return true;
}();

} // namespace
} // namespace quorvane
