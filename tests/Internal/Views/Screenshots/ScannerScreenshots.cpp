#include <tuple>

#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"
#include "Internal/Views/ScreenTest.h"
#include "Internal/Views/Screenshots/Screenshot.h"

namespace quorvane::capture {
namespace {

enum class ScannerState { scanning, found, failed };

const char* nameOf(ScannerState state) {
    switch (state) {
        case ScannerState::scanning:
            return "scanning";
        case ScannerState::found:
            return "found";
        case ScannerState::failed:
            break;
    }
    return "failed";
}

class ScannerScreenshots : public ScreenTest, public ::testing::WithParamInterface<std::tuple<ScannerState, QSize>> {};

TEST_P(ScannerScreenshots, AreKept) {
    const auto& [state, size] = GetParam();
    resize(size);
    for (const Surroundings surroundings : {Surroundings::light, Surroundings::dark}) {
        const auto scanner = BarcodeScannerViewController::make(devices());
        scanner->present(*window, false);
        cameras->camera->show(scene(surroundings));
        settle();
        animations.pass(300);
        if (state == ScannerState::found) {
            scanner->scanningSucceeded("4006381333931");
            animations.pass(BarcodeScannerViewController::greenMilliseconds);
        } else if (state == ScannerState::failed) {
            cameras->hasCamera = false;
            scanner->dismiss(false);
            scanner->present(*window, false);
            cameras->hasCamera = true;
        }
        const QString name = QString("scanner-%1-%2-%3").arg(nameOf(state), textOf(size), nameOf(surroundings));
        keepScreenshot(picture(), name, size, window->effectiveDevicePixelRatio());
    }
}

INSTANTIATE_TEST_SUITE_P(Scanner, ScannerScreenshots,
                         ::testing::Combine(::testing::Values(ScannerState::scanning, ScannerState::found,
                                                              ScannerState::failed),
                                            ::testing::ValuesIn(screenshotSizes)),
                         [](const auto& one) {
                             return std::string(nameOf(std::get<0>(one.param))) + "_" +
                                    textOf(std::get<1>(one.param)).toStdString();
                         });

} // namespace
} // namespace quorvane::capture
