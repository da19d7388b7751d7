#include <QDir>
#include <QTranslator>

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

class OverlayFilesTest : public OverlayTest {};
using OverlayFilesDeathTest = OverlayFilesTest;

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
    EXPECT_EQ(CameraOverlayView::load(accelerometer, "NoSuchView"), nullptr);
}

TEST_F(OverlayFilesDeathTest, AMissingConnectionIsFatal) {
    EXPECT_DEATH(CameraOverlayView::load(accelerometer, "NoConnections"), "must hold each connection");
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

} // namespace
} // namespace quorvane::capture
