#include <QAccessible>
#include <QQmlProperty>
#include <cmath>

#include "Internal/Views/CameraOverlay/OverlayTest.h"

namespace quorvane::capture {
namespace {

class OverlayLayoutTest : public OverlayTest {
protected:
    static constexpr std::array sizes{QSize(320, 480), QSize(360, 640),  QSize(412, 915), QSize(640, 360),
                                      QSize(915, 412), QSize(1280, 800), QSize(800, 1280)};
    static constexpr std::array overlays{OverlayType::none,
                                         OverlayType::circle,
                                         OverlayType::circle_square,
                                         OverlayType::rectangle_horizontal,
                                         OverlayType::rectangle_vertical,
                                         OverlayType::square};

    [[nodiscard]] static QRectF placeOf(QQuickItem& item) { return item.mapRectToScene(item.boundingRect()); }
    [[nodiscard]] std::vector<QQuickItem*> buttons() { return {&shutter(), &flashButton(), &cancelButton()}; }

    void expectOrder(QSize size) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        resize(size);
        std::vector<QRectF> places{placeOf(imageOverlay()), placeOf(tiltLabel())};
        for (QQuickItem* const button : buttons()) {
            places.push_back(placeOf(*button));
        }
        for (std::size_t i = 0; i < places.size(); ++i) {
            EXPECT_TRUE(QRectF(QPointF(), size).contains(places[i])) << i;
            for (std::size_t other = 0; other < i; ++other) {
                EXPECT_FALSE(places[i].intersects(places[other])) << i << " " << other;
            }
        }
    }
    void expectWholePixels(QQuickItem& thing) {
        const QPointF place = placeOf(thing).topLeft() * window->effectiveDevicePixelRatio();
        EXPECT_NEAR(place.x(), std::round(place.x()), 1e-6);
        EXPECT_NEAR(place.y(), std::round(place.y()), 1e-6);
    }
};

TEST_F(OverlayLayoutTest, NothingLiesOutsideOrOverAnythingElseAtAnySize) {
    for (const OverlayType type : overlays) {
        options.photoOverlayType = type;
        options.photoLevelType = LevelType::vertical;
        show();
        for (const QSize size : sizes) {
            expectOrder(size);
        }
        picker->dismiss(false);
    }
}

TEST_F(OverlayLayoutTest, TextsAreAsLargeAsTheUserWantsThemAndLieOverNothing) {
    options.photoLevelType = LevelType::vertical;
    show();
    const double usualHeight = tiltLabel().height();
    picker->dismiss(false);
    const LargeFont large;
    show();

    EXPECT_GT(tiltLabel().height(), usualHeight);
    for (const QSize size : sizes) {
        expectOrder(size);
    }
}

TEST_F(OverlayLayoutTest, TheFramingImageKeepsTheProportionsOfItsDrawingAndIsLarge) {
    for (const OverlayType type : overlays) {
        options.photoOverlayType = type;
        show();
        for (const QSize size : sizes) {
            resize(size);
            const double proportion = type == OverlayType::rectangle_horizontal ? 1.5
                                      : type == OverlayType::rectangle_vertical ? 2.0 / 3
                                                                                : 1;
            EXPECT_NEAR(imageOverlay().width(), imageOverlay().height() * proportion, 3);
            EXPECT_GE(std::max(imageOverlay().width(), imageOverlay().height()),
                      0.5 * std::min(size.width(), size.height()));
        }
        picker->dismiss(false);
    }
}

TEST_F(OverlayLayoutTest, ThingsStandOnWholePixelsOfTheDevice) {
    for (const LevelType level : {LevelType::flat, LevelType::vertical}) {
        options.photoLevelType = level;
        for (const OverlayType type : {OverlayType::square, OverlayType::rectangle_horizontal}) {
            options.photoOverlayType = type;
            show();
            for (const QSize size : {QSize(361, 641), QSize(413, 915), QSize(1279, 801), QSize(915, 412)}) {
                resize(size);
                LevelingView& leveling = *overlay().levelingView();
                for (QQuickItem* const thing :
                     {&shutter(), &flashButton(), &cancelButton(), static_cast<QQuickItem*>(&imageOverlay()),
                      static_cast<QQuickItem*>(&leveling.reticleView())}) {
                    expectWholePixels(*thing);
                }
                for (const double tilt : {0.0, 0.0137, 0.21, -0.377, 0.9}) {
                    hold(tilt, tilt / 2 - 0.5);
                    expectWholePixels(leveling.bubbleView());
                }
            }
            picker->dismiss(false);
        }
    }
}

TEST_F(OverlayLayoutTest, EachButtonIsAtLeastFortyFourPointsEachWay) {
    show();
    for (QQuickItem* const button : buttons()) {
        EXPECT_GE(button->width(), 44) << button->objectName().toStdString();
        EXPECT_GE(button->height(), 44) << button->objectName().toStdString();
    }
}

TEST_F(OverlayLayoutTest, EachButtonHasARoleAndANameForThoseWhoDoNotSeeIt) {
    show();
    const std::vector<std::pair<QQuickItem*, QString>> names{
        {&shutter(), "Take photo"}, {&flashButton(), "Flash"}, {&cancelButton(), "Cancel"}};
    for (const auto& [button, name] : names) {
        QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(button);
        ASSERT_NE(accessible, nullptr);
        EXPECT_EQ(accessible->text(QAccessible::Name), name);
        EXPECT_EQ(accessible->role(), QAccessible::Button);
        EXPECT_TRUE(accessible->state().focusable);
    }
}

TEST_F(OverlayLayoutTest, TheFlashButtonSaysWhetherItIsOn) {
    options.allowFlashToggle = true;
    show();
    const auto checked = [this] { return QAccessible::queryAccessibleInterface(&flashButton())->state().checked; };
    EXPECT_FALSE(checked());

    tap(flashButton());

    EXPECT_TRUE(checked());
}

TEST_F(OverlayLayoutTest, TheTabulatorReachesEachButtonAndStaysOnTheScreen) {
    options.allowFlashToggle = true;
    show();
    EXPECT_EQ(window->activeFocusItem(), &shutter());

    for (QQuickItem* const next : {&flashButton(), &cancelButton(), &shutter()}) {
        press(Qt::Key_Tab);
        EXPECT_EQ(window->activeFocusItem(), next);
    }
    for (QQuickItem* const next : {&cancelButton(), &flashButton(), &shutter()}) {
        press(Qt::Key_Backtab);
        EXPECT_EQ(window->activeFocusItem(), next);
    }
}

TEST_F(OverlayLayoutTest, TheTabulatorPassesOverWhatCannotBeUsed) {
    options.photoLevelType = LevelType::flat;
    show();
    EXPECT_NE(window->activeFocusItem(), &shutter());

    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), &cancelButton());
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), &cancelButton());

    hold(0, 0);
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), &shutter());
}

TEST_F(OverlayLayoutTest, EnterAndSpaceUseTheButtonThatHasTheFocus) {
    options.allowFlashToggle = true;
    show();

    press(Qt::Key_Space);
    press(Qt::Key_Return);
    press(Qt::Key_Tab);
    press(Qt::Key_Enter);

    EXPECT_EQ(delegate->calls, (std::vector<std::string>{"took", "took"}));
    EXPECT_TRUE(flashIsSelected());
}

TEST_F(OverlayLayoutTest, EscapeAndBackCancelWhereverTheFocusIs) {
    options.photoLevelType = LevelType::flat;
    for (const int key : {Qt::Key_Escape, Qt::Key_Back}) {
        show();
        press(key);
        EXPECT_FALSE(picker->isPresented());
        animations.pass(ViewController::transitionMilliseconds);

        show();
        press(Qt::Key_Tab);
        press(key);
        EXPECT_FALSE(picker->isPresented());
        animations.pass(ViewController::transitionMilliseconds);
    }
}

TEST_F(OverlayLayoutTest, AFailureIsSaidInPlaceOfTheFramingImage) {
    cameras->hasCamera = false;
    options.photoOverlayType = OverlayType::circle;
    options.photoLevelType = LevelType::flat;
    show();

    EXPECT_EQ(imageOverlay().opacity(), 0);
    EXPECT_EQ(tiltLabel().opacity(), 0);
    EXPECT_TRUE(item("failureLabel").isVisible());
    EXPECT_TRUE(QRectF(QPointF(), usualSize).contains(placeOf(item("failureLabel"))));
}

TEST_F(OverlayLayoutTest, NothingThatIsTappedBesideTheButtonsReachesTheHost) {
    QQuickItem behind(window->contentItem());
    behind.setSize(window->size());
    show();

    tap(QPoint(180, 100));

    EXPECT_EQ(delegate->calls, std::vector<std::string>{});
    EXPECT_TRUE(picker->isPresented());
}

} // namespace
} // namespace quorvane::capture
