#include <QAccessible>

#include "Internal/Views/CameraOverlay/CameraOverlayView.h"
#include "Internal/Views/CameraOverlay/OverlayTest.h"

namespace quorvane::capture {
namespace {

class CameraOverlayViewTest : public OverlayTest {};

TEST_F(CameraOverlayViewTest, EachOverlayTypeShowsTheImageOfItsName) {
    const std::vector<std::pair<OverlayType, QString>> names{
        {OverlayType::none, ""},
        {OverlayType::circle, "circle"},
        {OverlayType::circle_square, "circle_square"},
        {OverlayType::rectangle_horizontal, "rectangle_horizontal"},
        {OverlayType::rectangle_vertical, "rectangle_vertical"},
        {OverlayType::square, "square"}};
    for (const auto& [type, name] : names) {
        SCOPED_TRACE(name.toStdString());
        options.photoOverlayType = type;
        create();

        EXPECT_EQ(imageOverlay().image(), name);
        EXPECT_EQ(imageOverlay().implicitWidth() > 0, !name.isEmpty());
    }
}

TEST_F(CameraOverlayViewTest, WithoutALevelTheShutterIsEnabledAndNeverDisabledAndTheLabelStaysAsInTheInterfaceFile) {
    show();
    const bool inFile = InterfaceFile::named("CameraOverlayView")
                            ->instantiate()
                            ->findChild<QQuickItem*>("tiltLabel")
                            ->property("visible")
                            .toBool();

    hold(2, 2);

    EXPECT_EQ(overlay().levelingView(), nullptr);
    EXPECT_TRUE(shutter().isEnabled());
    EXPECT_EQ(tiltLabel().isVisible(), inFile);
    EXPECT_FALSE(inFile);
    EXPECT_EQ(imageOverlay().borderWidth(), 0);
    EXPECT_EQ(accelerometer->samplesTaken(), 0U);
}

TEST_F(CameraOverlayViewTest, VerticalIsALevelWithTheReticleAtTheTopAndFlatOneInTheMiddle) {
    options.photoLevelType = LevelType::vertical;
    create();
    EXPECT_EQ(overlay().levelingView()->reticleType(), LevelingView::ReticleType::top);

    options.photoLevelType = LevelType::flat;
    create();
    EXPECT_EQ(overlay().levelingView()->reticleType(), LevelingView::ReticleType::middle);
}

TEST_F(CameraOverlayViewTest, ALevelBeginsWithTheShutterDisabledARedBorderAndTheTiltLabel) {
    options.photoLevelType = LevelType::flat;
    show();

    EXPECT_FALSE(shutter().isEnabled());
    EXPECT_EQ(imageOverlay().borderWidth(), 4.0);
    EXPECT_EQ(imageOverlay().borderColor(), QColor(Qt::red));
    EXPECT_TRUE(tiltLabel().isVisible());
    EXPECT_EQ(overlay().levelingView()->parentItem(), &imageOverlay());
}

TEST_F(CameraOverlayViewTest, TheShutterAndTheBorderFollowTheLevel) {
    options.photoLevelType = LevelType::vertical;
    show();

    hold(0, -1);
    EXPECT_TRUE(shutter().isEnabled());
    EXPECT_EQ(imageOverlay().borderColor(), QColor(Qt::green));

    hold(0.5, -1);
    EXPECT_FALSE(shutter().isEnabled());
    EXPECT_EQ(imageOverlay().borderColor(), QColor(Qt::red));

    hold(0.1, -1.05);
    EXPECT_TRUE(shutter().isEnabled());
    EXPECT_EQ(imageOverlay().borderColor(), QColor(Qt::green));
}

TEST_F(CameraOverlayViewTest, TheShutterIsEnabledByTheSampleThatMakesItLevelAndNoEarlier) {
    options.photoLevelType = LevelType::vertical;
    accelerometer->setReading(platform::Acceleration{0, -1, 0});
    show();

    advance(std::chrono::milliseconds(633));
    EXPECT_FALSE(shutter().isEnabled());
    advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(shutter().isEnabled());
}

TEST_F(CameraOverlayViewTest, TheBorderIsDrawnAroundTheImageInsideItsEdges) {
    options.photoLevelType = LevelType::flat;
    show();
    const QPoint corner = imageOverlay().mapToScene({}).toPoint();

    EXPECT_EQ(colorAt(corner + QPoint(1, 40)), QColor(Qt::red));
    EXPECT_EQ(colorAt(corner + QPoint(3, 40)), QColor(Qt::red));
    EXPECT_EQ(colorAt(corner + QPoint(4, 40)), QColor(Qt::black));
    EXPECT_EQ(colorAt(corner + QPoint(-1, 40)), QColor(Qt::black));
    hold(0, 0);
    EXPECT_EQ(colorAt(corner + QPoint(1, 40)), QColor(Qt::green));
}

TEST_F(CameraOverlayViewTest, WithoutAnAccelerometerTheShutterStaysDisabled) {
    accelerometer->setAvailable(false);
    options.photoLevelType = LevelType::flat;
    show();

    advance(std::chrono::minutes(1));
    tap(shutter());

    EXPECT_FALSE(shutter().isEnabled());
    EXPECT_EQ(delegate->calls, std::vector<std::string>{});
}

TEST_F(CameraOverlayViewTest, TheLevelFillsTheFramingImageAtAnySize) {
    options.photoLevelType = LevelType::flat;
    options.photoOverlayType = OverlayType::rectangle_horizontal;
    show();
    for (const QSize size : {QSize(360, 640), QSize(1280, 800), QSize(640, 360)}) {
        resize(size);

        EXPECT_GT(imageOverlay().width(), 0);
        EXPECT_EQ(overlay().levelingView()->size(), imageOverlay().size());
        EXPECT_EQ(overlay().levelingView()->position(), QPointF(0, 0));
    }
}

TEST_F(CameraOverlayViewTest, ConfiguringAgainReplacesTheLevel) {
    options.photoLevelType = LevelType::flat;
    show();
    const QPointer<QQuickItem> former = overlay().levelingView();
    options.photoLevelType = LevelType::vertical;

    overlay().configure(options, picker);

    EXPECT_NE(overlay().levelingView(), former);
    EXPECT_EQ(former->parentItem(), nullptr);
    EXPECT_EQ(imageOverlay().findChildren<LevelingView*>().size(), 0);
    EXPECT_EQ(imageOverlay().childItems().size(), 1);
    hold(0, 0);
    EXPECT_FALSE(shutter().isEnabled());
    hold(0, -1);
    EXPECT_TRUE(shutter().isEnabled());
}

TEST_F(CameraOverlayViewTest, ConfiguringAgainWithoutALevelLeavesNothingOfIt) {
    options.photoLevelType = LevelType::flat;
    options.photoOverlayType = OverlayType::circle;
    show();
    hold(1, 1);
    EXPECT_FALSE(shutter().isEnabled());
    options.photoLevelType = LevelType::none;
    options.photoOverlayType = OverlayType::none;

    overlay().configure(options, picker);

    EXPECT_EQ(overlay().levelingView(), nullptr);
    EXPECT_EQ(imageOverlay().childItems().size(), 0);
    EXPECT_EQ(imageOverlay().image(), "");
    EXPECT_EQ(imageOverlay().borderWidth(), 0);
    EXPECT_FALSE(tiltLabel().isVisible());
    EXPECT_TRUE(shutter().isEnabled());
    hold(-1, 1);
    EXPECT_TRUE(shutter().isEnabled());
    tap(shutter());
    EXPECT_EQ(delegate->calls, std::vector<std::string>{"took"});
}

TEST_F(CameraOverlayViewTest, WhetherThePhoneIsLevelIsSaidInWordsToo) {
    options.photoLevelType = LevelType::flat;
    show();
    const auto nameOf = [](QQuickItem& labelled, QAccessible::Text what) {
        return QAccessible::queryAccessibleInterface(&labelled)->text(what);
    };
    for (const bool isLevel : {false, true, false}) {
        hold(isLevel ? 0 : 1, 0);
        const QString words = isLevel ? "The phone is level" : "Hold the phone level";
        EXPECT_EQ(tiltLabel().property("text"), words);
        EXPECT_EQ(nameOf(tiltLabel(), QAccessible::Name), words);
        EXPECT_EQ(nameOf(shutter(), QAccessible::Description), words);
    }

    options.photoLevelType = LevelType::none;
    overlay().configure(options, picker);
    EXPECT_EQ(nameOf(shutter(), QAccessible::Description), "");
}

TEST_F(CameraOverlayViewTest, AnAllowedFlashButtonIsOpaqueAndTakesTouches) {
    options.allowFlashToggle = true;
    show();

    EXPECT_TRUE(flashButton().isEnabled());
    EXPECT_EQ(flashButton().opacity(), 1.0);
    EXPECT_FALSE(flashIsSelected());
}

TEST_F(CameraOverlayViewTest, AForbiddenFlashButtonIsDimmedAndIgnoresTouchesWhateverTheFlashIs) {
    options.defaultFlashState = true;
    show();

    tap(flashButton());

    EXPECT_FALSE(flashButton().isEnabled());
    EXPECT_EQ(flashButton().opacity(), 0.8);
    EXPECT_TRUE(flashIsSelected());
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::on);
}

TEST_F(CameraOverlayViewTest, WithoutAFlashTheButtonIsDimmedLikeAForbiddenOne) {
    cameras->camera->flash = false;
    options.allowFlashToggle = true;
    show();

    tap(flashButton());

    EXPECT_FALSE(flashButton().isEnabled());
    EXPECT_EQ(flashButton().opacity(), 0.8);
    EXPECT_FALSE(flashIsSelected());
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::off);
}

TEST_F(CameraOverlayViewTest, EachTapOnTheFlashButtonFlipsItAndTheFlashMode) {
    options.allowFlashToggle = true;
    options.defaultFlashState = true;
    show();
    EXPECT_TRUE(flashIsSelected());

    tap(flashButton());
    EXPECT_FALSE(flashIsSelected());
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::off);

    tap(flashButton());
    EXPECT_TRUE(flashIsSelected());
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::on);
}

TEST_F(CameraOverlayViewTest, ATapFollowsTheButtonAndNotTheMode) {
    options.allowFlashToggle = true;
    show();
    picker->cameraFlashMode = FlashMode::on;

    tap(flashButton());

    EXPECT_TRUE(flashIsSelected());
    EXPECT_EQ(picker->cameraFlashMode, FlashMode::on);
}

TEST_F(CameraOverlayViewTest, TheShutterTakesAPicture) {
    show();

    tap(shutter());

    EXPECT_EQ(delegate->calls, std::vector<std::string>{"took"});
}

TEST_F(CameraOverlayViewTest, ADisabledShutterTakesNone) {
    options.photoLevelType = LevelType::flat;
    show();
    tap(shutter());
    EXPECT_EQ(delegate->calls, std::vector<std::string>{});

    hold(0, 0);
    tap(shutter());

    EXPECT_EQ(delegate->calls, std::vector<std::string>{"took"});
}

TEST_F(CameraOverlayViewTest, CancelDismissesThePickerAnimated) {
    show();

    tap(cancelButton());

    EXPECT_FALSE(picker->isPresented());
    EXPECT_NE(picker->window(), nullptr);
    animations.pass(ViewController::transitionMilliseconds);
    settle();
    EXPECT_EQ(picker->window(), nullptr);
    EXPECT_EQ(delegate->calls, std::vector<std::string>{"dismissed"});
}

TEST_F(CameraOverlayViewTest, ItsActionsDoNothingOnceThePickerIsGone) {
    options.allowFlashToggle = true;
    const auto alone = CameraOverlayView::load(accelerometer);
    create();
    alone->configure(options, picker);
    picker = nullptr;

    alone->takePhotoPressed();
    alone->cancelPressed();
    alone->flashButtonTapped();
    alone->updateFlash();

    EXPECT_EQ(delegate->calls, std::vector<std::string>{});
    EXPECT_TRUE(connection(alone->view(), "flashButton").property("selected").toBool());
}

TEST_F(CameraOverlayViewTest, ALevelThatOutlivesItsOverlayDoesNotReachIt) {
    options.photoLevelType = LevelType::flat;
    auto alone = CameraOverlayView::load(accelerometer);
    alone->configure(options, nullptr);
    const auto callback = alone->levelingView()->levelWithinThresholdChanged;

    alone = nullptr;
    callback(true);
    advance(std::chrono::seconds(1));

    EXPECT_EQ(delegate->calls, std::vector<std::string>{});
}

} // namespace
} // namespace quorvane::capture
