#pragma once

#include <memory>
#include <string>

#include "Facade/Quorvane.h"
#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"
#include "Internal/Views/BarcodeScanner/RecordingScannerDelegate.h"
#include "Internal/Views/ScreenTest.h"

namespace quorvane::capture {

/// A test with the scanner as a host gets it, and with a camera and a reader that do what the test says.
class ScannerTest : public ScreenTest {
protected:
    ScannerTest() {
        capture::install(devices());
        newScanner();
    }

    /// As a host gets one.
    void newScanner() {
        scanner = std::dynamic_pointer_cast<BarcodeScannerViewController>(Quorvane::createBarcodeScanner());
        ASSERT_NE(scanner, nullptr);
        scanner->BarcodeScannerViewControllerType::delegate = host;
    }

    void present() { capture::present(*scanner, *window, false); }

    [[nodiscard]] QQuickItem& item(const char* name) { return connection(scanner->view(), name); }
    [[nodiscard]] QColor scanlineColor() { return item("scanlineView").property("color").value<QColor>(); }
    [[nodiscard]] double frameWidth() {
        return connection<QObject>(scanner->view(), "scannerFrameWidth").property("constant").toDouble();
    }
    [[nodiscard]] QString hint() { return item("hintLabel").property("text").toString(); }

    /// A frame that holds a code; it is read and its stop told.
    void scan(const std::string& code) {
        const std::size_t before = host->calls.size();
        readers->find({qrCode(code)});
        cameras->camera->show(testing::plainFrame(64, 48, 128));
        EXPECT_TRUE(world->runUntil([&] { return host->calls.size() > before; }));
    }

    const std::shared_ptr<RecordingScannerDelegate> host = std::make_shared<RecordingScannerDelegate>();
    std::shared_ptr<BarcodeScannerViewController> scanner;
};

} // namespace quorvane::capture
