#include <QDir>
#include <QGuiApplication>
#include <QTranslator>
#include <memory>

#include "Internal/Views/BarcodeScanner/ScannerTest.h"
#include "Internal/Views/CameraOverlay/OverlayTest.h"

// They stand outside of any namespace.
static void removeBundle() {
    Q_CLEANUP_RESOURCE(capture);
}
static void restoreBundle() {
    Q_INIT_RESOURCE(capture);
}

namespace quorvane::capture {
namespace {

class OverlayFilesTest : public OverlayTest {
protected:
    std::shared_ptr<CameraOverlayView> load(const char* name) { return CameraOverlayView::load(accelerometer, name); }
};
using OverlayFilesDeathTest = OverlayFilesTest;

class ScannerFilesTest : public ScannerTest {};

/// Says everything twice.
class TwiceTranslator final : public QTranslator {
public:
    [[nodiscard]] QString translate(const char*, const char* source, const char*, int) const override {
        return QString("%1 %1").arg(source);
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

TEST_F(OverlayFilesTest, AMissingInterfaceFileIsAPickerWithoutAnOverlay) {
    static_cast<void>(bundlePath(""));
    removeBundle();
    create();
    restoreBundle();

    EXPECT_EQ(picker->cameraOverlayView(), nullptr);
    capture::present(*picker, *window, false);
    resize({640, 360});
    picker->takePicture();
    settle();
    picker->dismiss(false);
    EXPECT_EQ(delegate->calls, (std::vector<std::string>{"took", "dismissed"}));
}

TEST_F(OverlayFilesTest, ThereIsNoOverlayOfAnUnknownFile) {
    EXPECT_EQ(load("NoSuchView"), nullptr);
}

TEST_F(OverlayFilesTest, ThereIsNoOverlayOfAFileThatHoldsNoView) {
    EXPECT_EQ(load("NotAnItem"), nullptr);
}

TEST_F(OverlayFilesDeathTest, AMissingConnectionIsFatal) {
    EXPECT_DEATH(load("NoConnections"), "must hold each connection");
}

TEST_F(OverlayFilesDeathTest, EachMissingConnectionIsFatal) {
    for (const char* name : {"imageOverlay", "tiltLabel", "cameraButton", "flashButton", "cancelButton"}) {
        QGuiApplication::setApplicationDisplayName(name);
        EXPECT_DEATH(load("OverlayWithout"), "must hold each connection") << name;
    }
    QGuiApplication::setApplicationDisplayName("");
    EXPECT_NE(load("OverlayWithout"), nullptr);
}

TEST_F(OverlayFilesDeathTest, AMissingDrawingIsFatal) {
    PictureView view;
    EXPECT_DEATH(view.setImage("no-such-drawing"), "must be a drawing of the bundle");
}

TEST_F(OverlayFilesTest, TextsAreEnglishUnlessTheHostTranslatesThem) {
    create();
    EXPECT_EQ(tiltLabel().property("text"), "Hold the phone level");
    EXPECT_EQ(shutter().property("text"), "Take photo");
    EXPECT_EQ(cancelButton().property("text"), "Cancel");
    EXPECT_EQ(flashButton().property("text"), "Flash");

    TwiceTranslator translator;
    QCoreApplication::installTranslator(&translator);
    create();
    QCoreApplication::removeTranslator(&translator);

    EXPECT_EQ(tiltLabel().property("text"), "Hold the phone level Hold the phone level");
    EXPECT_EQ(shutter().property("text"), "Take photo Take photo");
    EXPECT_EQ(cancelButton().property("text"), "Cancel Cancel");
    EXPECT_EQ(flashButton().property("text"), "Flash Flash");
}

TEST_F(ScannerFilesTest, WithoutItsInterfaceFileThereIsNoScanner) {
    static_cast<void>(bundlePath(""));
    removeBundle();
    EXPECT_EQ(Quorvane::createBarcodeScanner(), nullptr);
    restoreBundle();
    EXPECT_NE(Quorvane::createBarcodeScanner(), nullptr);
}

TEST_F(ScannerFilesTest, TextsAreEnglishUnlessTheHostTranslatesThem) {
    EXPECT_EQ(hint(), "Point the camera at a barcode");
    EXPECT_EQ(item("cancelControl").property("text"), "Cancel");

    TwiceTranslator translator;
    QCoreApplication::installTranslator(&translator);
    newScanner();
    EXPECT_EQ(hint(), "Point the camera at a barcode Point the camera at a barcode");
    EXPECT_EQ(item("cancelControl").property("text"), "Cancel Cancel");
    QCoreApplication::removeTranslator(&translator);
}

} // namespace
} // namespace quorvane::capture
