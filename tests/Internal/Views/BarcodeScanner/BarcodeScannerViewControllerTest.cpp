#include <QAccessible>
#include <QGuiApplication>
#include <QQmlProperty>
#include <cmath>
#include <string>
#include <vector>

#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"
#include "Internal/Views/BarcodeScanner/ScannerTest.h"

namespace quorvane::capture {
namespace {

using namespace std::chrono_literals;
using platform::BarcodeType;

using BarcodeScannerViewControllerTest = ScannerTest;
using BarcodeScannerViewControllerDeathTest = ScannerTest;

TEST_F(BarcodeScannerViewControllerTest, TheScannerRecognisesAllThirteenTypesInTheirOrder) {
    present();
    EXPECT_EQ(readers->typesAsked().back(),
              (std::vector<BarcodeType>{
                  BarcodeType::aztec, BarcodeType::code128, BarcodeType::code39, BarcodeType::code39Mod43,
                  BarcodeType::code93, BarcodeType::dataMatrix, BarcodeType::interleaved2of5, BarcodeType::itf14,
                  BarcodeType::qr, BarcodeType::ean8, BarcodeType::ean13, BarcodeType::pdf417, BarcodeType::upce}));
}

TEST_F(BarcodeScannerViewControllerTest, TheCameraViewFillsTheScreenBehindEverythingElse) {
    present();
    EXPECT_EQ(scanner->barcodeScannerView().size(), QSizeF(360, 640));
    EXPECT_EQ(scanner->view().childItems().first(), &scanner->barcodeScannerView());
    resize({640, 360});
    EXPECT_EQ(scanner->barcodeScannerView().size(), QSizeF(640, 360));
}

TEST_F(BarcodeScannerViewControllerTest, TheFrameIsASquareOfThreeQuartersOfTheContainersWidth) {
    present();
    EXPECT_EQ(frameWidth(), 270);
    EXPECT_EQ(item("scannerFrameView").size(), QSizeF(270, 270));
    resize({640, 360});
    EXPECT_EQ(frameWidth(), 270);
}

TEST_F(BarcodeScannerViewControllerTest, OnAWideScreenTheFrameKeepsWithinIt) {
    resize({1280, 800});
    present();
    EXPECT_EQ(frameWidth(), 960);
    const QQuickItem& frame = item("scannerFrameView");
    EXPECT_EQ(frame.width(), frame.height());
    EXPECT_GE(frame.y(), 0);
    EXPECT_LE(frame.y() + frame.height(), 800);
}

TEST_F(BarcodeScannerViewControllerTest, TheFrameHasAWhiteBorderOnePointWide) {
    present();
    EXPECT_EQ(QQmlProperty::read(&item("scannerFrameView"), "border.width").toDouble(), 1.0);
    EXPECT_EQ(QQmlProperty::read(&item("scannerFrameView"), "border.color").value<QColor>(), Qt::white);
    const QPointF corner = item("scannerFrameView").position();
    EXPECT_EQ(colorAt((corner + QPointF(0, 100)).toPoint()), Qt::white);
}

TEST_F(BarcodeScannerViewControllerTest, TheContainerIsDarkAroundTheFrameAndOpenWithinIt) {
    for (const QSize size : {QSize(360, 640), QSize(800, 500)}) {
        resize(size);
        present();
        cameras->camera->show(testing::plainFrame(64, 48, 200));
        settle();
        const QRectF frame = item("scannerFrameView").mapRectToScene(item("scannerFrameView").boundingRect());
        const QImage shown = picture();
        EXPECT_EQ(colorIn(shown, frame.topLeft() + QPointF(5, 5)), QColor(200, 200, 200));
        EXPECT_EQ(colorIn(shown, frame.bottomRight() - QPointF(6, 6)), QColor(200, 200, 200));
        EXPECT_LT(colorIn(shown, frame.topLeft() - QPointF(5, 5)).lightness(), 100);
        EXPECT_LT(colorIn(shown, frame.bottomRight() + QPointF(5, 5)).lightness(), 100);
        EXPECT_LT(colorIn(shown, QPointF(2, size.height() - 3)).lightness(), 100);
    }
}

TEST_F(BarcodeScannerViewControllerTest, TheReaderIsToldWhereTheFrameIs) {
    present();
    cameras->camera->show(testing::plainFrame(360, 640, 0));
    ASSERT_TRUE(readers->waitForReads(1));
    const auto aim = readers->reads()[0].aim;
    ASSERT_TRUE(aim.has_value());
    // Between pixels of the device there is no frame.
    const double pixel = 0.51 / window->effectiveDevicePixelRatio();
    EXPECT_NEAR(aim->x, 45.0 / 360, pixel / 360);
    EXPECT_NEAR(aim->y, 185.0 / 640, pixel / 640);
    EXPECT_NEAR(aim->width, 270.0 / 360, pixel / 360);
    EXPECT_NEAR(aim->height, 270.0 / 640, pixel / 640);
}

TEST_F(BarcodeScannerViewControllerTest, AHostHearsTheStopAtOnceAndTheSuccessHalfASecondLaterAfterTheDismissal) {
    present();
    std::vector<bool> wasPresented;
    host->whenCalled = [&](const std::string&) { wasPresented.push_back(scanner->isPresented()); };
    scan("4006381333931");
    EXPECT_EQ(host->calls, Calls{"stopped"});
    EXPECT_EQ(sounds->played.size(), 1U);
    advance(499'999'999ns);
    EXPECT_EQ(host->calls, Calls{"stopped"});
    EXPECT_TRUE(scanner->isPresented());
    advance(1ns);
    EXPECT_EQ(host->calls, (Calls{"stopped", "succeeded 4006381333931"}));
    EXPECT_EQ(wasPresented, (std::vector<bool>{true, false}));
    advance(10s);
    EXPECT_EQ(host->calls.size(), 2U);
}

TEST_F(BarcodeScannerViewControllerTest, TheScanLineTurnsGreenWithinAFifthOfASecond) {
    present();
    const QColor before = scanlineColor();
    EXPECT_NE(before, Qt::green);
    scan("green");
    animations.pass(100);
    EXPECT_NE(scanlineColor(), before);
    EXPECT_NE(scanlineColor(), Qt::green);
    animations.pass(99);
    EXPECT_NE(scanlineColor(), Qt::green);
    animations.pass(1);
    EXPECT_EQ(scanlineColor(), Qt::green);
    EXPECT_EQ(hint(), "Barcode found");
}

TEST_F(BarcodeScannerViewControllerTest, TheScreenFadesAwayAfterASuccess) {
    present();
    scan("animated");
    advance(500ms);
    EXPECT_NE(scanner->view().parentItem(), nullptr);
    animations.pass(ViewController::transitionMilliseconds);
    EXPECT_EQ(scanner->view().parentItem(), nullptr);
    EXPECT_EQ(colorAt({180, 320}), Qt::white);
}

TEST_F(BarcodeScannerViewControllerTest, WithoutACameraTheHostIsToldAndTheScreenStays) {
    cameras->hasCamera = false;
    present();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_TRUE(scanner->isPresented());
    EXPECT_TRUE(scanner->barcodeScannerView().captureSession->isRunning());
    EXPECT_EQ(hint(), "The camera cannot be used");
    capture::dismiss(*scanner, false);
    EXPECT_FALSE(scanner->isPresented());
    EXPECT_EQ(host->calls, Calls{"failed"});
}

TEST_F(BarcodeScannerViewControllerTest, NothingOfTheHostShowsWhereThereIsNoPicture) {
    cameras->hasCamera = false;
    present();
    EXPECT_EQ(colorAt({180, 320}), Qt::black);
}

TEST_F(BarcodeScannerViewControllerTest, ACameraThatIsUnpluggedWhileScanningIsToldAndTheScreenStays) {
    present();
    cameras->camera->unplug();
    settle();
    EXPECT_EQ(host->calls, Calls{"failed"});
    EXPECT_TRUE(scanner->isPresented());
    EXPECT_EQ(hint(), "The camera cannot be used");
    tap(item("cancelControl"));
    EXPECT_EQ(host->calls, (Calls{"failed", "stopped"}));
}

TEST_F(BarcodeScannerViewControllerTest, CancelIsAButtonWithANameThatIsLargeEnoughForAFinger) {
    for (const QSize size : {QSize(360, 640), QSize(640, 360), QSize(412, 915), QSize(1280, 800)}) {
        resize(size);
        present();
        QQuickItem& cancel = item("cancelControl");
        EXPECT_GE(cancel.width(), 44);
        EXPECT_GE(cancel.height(), 44);
        const QRectF area = cancel.mapRectToScene(cancel.boundingRect());
        EXPECT_TRUE(QRectF(QPointF(), QSizeF(size)).contains(area));
        EXPECT_FALSE(area.intersects(item("scannerFrameView").mapRectToScene(item("scannerFrameView").boundingRect())));
        EXPECT_TRUE(cancel.hasActiveFocus());
    }
    QAccessible::setActive(true);
    QAccessibleInterface* const button = QAccessible::queryAccessibleInterface(&item("cancelControl"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), "Cancel");
}

TEST_F(BarcodeScannerViewControllerTest, TheFocusStaysOnTheScreen) {
    QQuickItem behind(window->contentItem());
    behind.setActiveFocusOnTab(true);
    present();
    for (const int key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        press(key);
        EXPECT_TRUE(item("cancelControl").hasActiveFocus());
    }
}

TEST_F(BarcodeScannerViewControllerTest, TextsAreAsLargeAsTheUserWantsThemAndLieOverNothing) {
    const double usualHeight = item("hintLabel").height();
    const LargeFont large;
    newScanner();
    for (const QSize size : {QSize(360, 640), QSize(640, 360), QSize(412, 915), QSize(1280, 800)}) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        resize(size);
        present();
        EXPECT_GE(item("hintLabel").height(), 1.5 * usualHeight);
        std::vector<QRectF> places;
        for (const char* const name : {"scannerFrameView", "hintLabel", "cancelControl"}) {
            const QRectF place = item(name).mapRectToScene(item(name).boundingRect());
            EXPECT_TRUE(QRectF(QPointF(), size).contains(place)) << name;
            for (const QRectF& other : places) {
                EXPECT_FALSE(place.intersects(other)) << name;
            }
            places.push_back(place);
        }
        EXPECT_GE(places[0].width(), 100);
    }
}

TEST_F(BarcodeScannerViewControllerTest, TheFrameLiesOnWholePixelsOfTheDevice) {
    for (const QSize size : {QSize(361, 641), QSize(413, 915), QSize(1279, 801)}) {
        resize(size);
        present();
        const QRectF frame = item("scannerFrameView").mapRectToScene(item("scannerFrameView").boundingRect());
        const double ratio = window->effectiveDevicePixelRatio();
        for (const double length : {frame.x(), frame.y(), frame.width(), frame.height()}) {
            EXPECT_NEAR(length * ratio, std::round(length * ratio), 1e-6);
        }
    }
}

TEST_F(BarcodeScannerViewControllerDeathTest, EachMissingConnectionIsFatal) {
    const auto load = [&] {
        std::make_shared<BarcodeScannerViewController>(InterfaceFile::named("ScannerWithout").value(), devices())
            ->present(*window, false);
    };
    for (const char* name :
         {"containerView", "scanlineView", "scannerFrameView", "scannerFrameWidth", "cancelControl"}) {
        QGuiApplication::setApplicationDisplayName(name);
        EXPECT_DEATH(load(), "must hold each connection") << name;
    }
    QGuiApplication::setApplicationDisplayName("");
    load();
}

TEST_F(BarcodeScannerViewControllerDeathTest, ScreensOfOthersCannotBePresented) {
    class OtherScreen : public BarcodeScannerViewControllerType {};
    OtherScreen other;
    EXPECT_DEATH(capture::present(other, *window), "must come from Quorvane::Capture");
}

} // namespace
} // namespace quorvane::capture
