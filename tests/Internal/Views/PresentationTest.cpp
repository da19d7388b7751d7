#include <QPointer>
#include <QTest>
#include <algorithm>
#include <array>

#include "Internal/Views/OwnWindow.h"
#include "Internal/Views/ScreenTest.h"
#include "Internal/Views/ViewController.h"
#include "Platform/Platform.h"

namespace quorvane::capture {
namespace {

using Steps = std::vector<std::string>;

class SomeController final : public ViewController {
public:
    explicit SomeController(Steps& theSteps) : ViewController(InterfaceFile::named("Plain")), steps(theSteps) {}

    std::function<void()> whenAppearing;

protected:
    void viewDidLoad() override { steps.push_back("loaded at " + sizeText(content()->size())); }
    void viewWillAppear() override {
        steps.emplace_back("appears");
        if (whenAppearing) {
            whenAppearing();
        }
    }
    void viewWillLayoutSubviews() override {
        steps.push_back("lays out " + sizeText(view().size()) + " from " + sizeText(content()->size()));
    }
    void viewDidLayoutSubviews() override { steps.push_back("laid out " + sizeText(content()->size())); }
    void viewDidDisappear() override { steps.emplace_back("gone"); }

private:
    static std::string sizeText(const QSizeF& size) {
        return std::to_string(static_cast<int>(size.width())) + "x" + std::to_string(static_cast<int>(size.height()));
    }

    Steps& steps;
};

/// An item of a host that knows who listens to it.
class CountingItem final : public QQuickItem {
public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] int listeners() const { return receivers(SIGNAL(enabledChanged())); }
};

class PresentationTest : public ScreenTest {
protected:
    PresentationTest() { resize({200, 300}); }

    [[nodiscard]] Steps newSteps() { return std::exchange(steps, {}); }

    Steps steps;
    std::shared_ptr<SomeController> controller = std::make_shared<SomeController>(steps);
};

TEST_F(PresentationTest, AScreenIsLoadedAppearsAndIsLaidOutInThisOrder) {
    EXPECT_EQ(newSteps(), Steps{});
    controller->present(*window, false);
    EXPECT_EQ(newSteps(), (Steps{"loaded at 200x300", "appears", "lays out 200x300 from 200x300", "laid out 200x300"}));
    EXPECT_TRUE(controller->isPresented());
    EXPECT_EQ(colorAt({100, 150}), Qt::blue);
}

TEST_F(PresentationTest, AScreenIsLoadedOnceAndAppearsEachTime) {
    controller->present(*window, false);
    controller->dismiss(false);
    EXPECT_EQ(newSteps().back(), "gone");
    EXPECT_EQ(colorAt({100, 150}), Qt::white);
    controller->present(*window, false);
    EXPECT_EQ(newSteps().front(), "appears");
    EXPECT_EQ(colorAt({100, 150}), Qt::blue);
}

TEST_F(PresentationTest, AScreenFollowsTheSizeOfWhatItIsShownIn) {
    controller->present(*window, false);
    static_cast<void>(newSteps());
    resize({300, 200});
    EXPECT_EQ(newSteps().back(), "laid out 300x200");
    EXPECT_EQ(colorAt({290, 190}), Qt::blue);
}

TEST_F(PresentationTest, AScreenIsShownAllOverAnItemAndNoFurther) {
    QQuickItem item(window->contentItem());
    item.setPosition({50, 60});
    item.setSize({100, 100});
    controller->present(item, false);
    const QImage shown = picture();
    EXPECT_EQ(colorIn(shown, {51, 61}), Qt::blue);
    EXPECT_EQ(colorIn(shown, {148, 158}), Qt::blue);
    EXPECT_EQ(colorIn(shown, {49, 61}), Qt::white);
    EXPECT_EQ(colorIn(shown, {152, 100}), Qt::white);
}

TEST_F(PresentationTest, AScreenFadesInAndOutAndTakesNoInputOnItsWayOut) {
    controller->present(*window, true);
    EXPECT_EQ(controller->view().opacity(), 0);
    animations.pass(ViewController::transitionMilliseconds / 2);
    EXPECT_NEAR(controller->view().opacity(), 0.5, 0.1);
    animations.pass(ViewController::transitionMilliseconds);
    EXPECT_EQ(controller->view().opacity(), 1);
    static_cast<void>(newSteps());

    controller->dismiss(true);
    EXPECT_FALSE(controller->isPresented());
    EXPECT_FALSE(controller->view().isEnabled());
    animations.pass(ViewController::transitionMilliseconds / 2);
    EXPECT_NEAR(controller->view().opacity(), 0.5, 0.1);
    EXPECT_EQ(newSteps(), Steps{});
    animations.pass(ViewController::transitionMilliseconds);
    EXPECT_EQ(newSteps(), Steps{"gone"});
    EXPECT_EQ(controller->view().parentItem(), nullptr);
}

TEST_F(PresentationTest, AScreenThatIsShownStaysWhereItIs) {
    QQuickItem item(window->contentItem());
    controller->present(*window, false);
    static_cast<void>(newSteps());
    controller->present(item, false);
    controller->present(false);
    EXPECT_EQ(controller->view().parentItem(), window->contentItem());
    EXPECT_EQ(newSteps(), Steps{});
}

TEST_F(PresentationTest, DismissedTwiceOrBeforeItIsShownAScreenGoesOnceOrNotAtAll) {
    controller->dismiss(true);
    EXPECT_EQ(newSteps(), Steps{});
    controller->present(*window, false);
    static_cast<void>(newSteps());
    controller->dismiss(true);
    controller->dismiss(false);
    animations.pass(1000);
    controller->dismiss(true);
    EXPECT_EQ(newSteps(), Steps{"gone"});
}

TEST_F(PresentationTest, AScreenThatFadesOutCanBeShownAtOnce) {
    controller->present(*window, false);
    controller->dismiss(true);
    static_cast<void>(newSteps());
    controller->present(*window, false);
    EXPECT_EQ(newSteps()[0], "gone");
    animations.pass(1000);
    EXPECT_TRUE(controller->isPresented());
    EXPECT_TRUE(controller->view().isEnabled());
    EXPECT_EQ(controller->view().opacity(), 1);
    EXPECT_EQ(colorAt({100, 150}), Qt::blue);
}

TEST_F(PresentationTest, AScreenThatIsDismissedWhileItAppearsIsNotShown) {
    for (const bool animated : {false, true}) {
        controller->whenAppearing = [&] { controller->dismiss(animated); };
        controller->present(*window, true);
        animations.pass(1000);
        EXPECT_EQ(newSteps().back(), "gone");
        EXPECT_FALSE(controller->isPresented());
        EXPECT_EQ(colorAt({100, 150}), Qt::white);
    }
}

TEST_F(PresentationTest, AScreenThatIsLetGoOfWhileItAppearsIsGoneAfterwards) {
    controller->whenAppearing = [&] { controller.reset(); };
    controller->present(*window, false);
    EXPECT_EQ(controller, nullptr);
    EXPECT_EQ(colorAt({100, 150}), Qt::white);
}

TEST_F(PresentationTest, AScreenGoesAtOnceWithTheLastPointerToIt) {
    controller->present(*window, false);
    controller->dismiss(true);
    controller.reset();
    EXPECT_EQ(colorAt({100, 150}), Qt::white);
    animations.pass(1000);
}

TEST_F(PresentationTest, AScreenIsGoneWithTheWindowOrItemThatItIsShownIn) {
    controller->present(*window, false);
    static_cast<void>(newSteps());
    window.reset();
    EXPECT_EQ(newSteps(), Steps{"gone"});
    EXPECT_FALSE(controller->isPresented());

    auto item = std::make_unique<QQuickItem>();
    item->setSize({10, 10});
    controller->present(*item, false);
    item.reset();
    controller->dismiss(false);
    EXPECT_EQ(newSteps().back(), "gone");
}

TEST_F(PresentationTest, AScreenInAWindowOfItsOwnGoesWhenTheUserClosesIt) {
    controller->present(false);
    const QPointer<QQuickWindow> own = controller->window();
    ASSERT_NE(own, nullptr);
    EXPECT_NE(own, window.get());
    EXPECT_TRUE(own->isVisible());
    EXPECT_EQ(newSteps().front(), "loaded at 412x732");
    EXPECT_EQ(own->grabWindow().pixelColor(10, 10), Qt::blue);
    static_cast<void>(newSteps());
    own->close();
    EXPECT_EQ(newSteps(), Steps{"gone"});
    EXPECT_FALSE(own->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(own, nullptr);
}

TEST_F(PresentationTest, TheApplicationMayQuitWhileAScreenIsInAWindowOfItsOwn) {
    for (const bool isOnItsWayOut : {false, true}) {
        SCOPED_TRACE(isOnItsWayOut);
        controller->present(false);
        static_cast<void>(newSteps());
        if (isOnItsWayOut) {
            controller->dismiss(true);
        }
        EXPECT_EQ(newSteps(), Steps{});

        EXPECT_TRUE(quits());

        EXPECT_EQ(newSteps(), Steps{"gone"});
        EXPECT_FALSE(controller->isPresented());
        animations.pass(1000);
        EXPECT_EQ(newSteps(), Steps{});
    }
}

TEST_F(PresentationTest, AWindowOfItsOwnThatIsLeftOverClosesNoScreen) {
    controller->present(false);
    controller->dismiss(false);
    controller->present(*window, false);
    static_cast<void>(newSteps());

    EXPECT_TRUE(quits());

    EXPECT_TRUE(controller->isPresented());
    EXPECT_EQ(newSteps(), Steps{});
}

TEST_F(PresentationTest, AWindowOfItsOwnMayOutliveTheScreen) {
    controller->present(false);
    controller.reset();
    EXPECT_TRUE(quits());
}

TEST_F(PresentationTest, WhatLiesBehindAScreenGetsNoTouchesAndHasItsFocusBackAfterwards) {
    const auto behind = InterfaceFile::named("Plain")->instantiate();
    behind->setParentItem(window->contentItem());
    behind->setSize({200, 300});
    int taps = 0;
    connectAction(*behind, "button", [&] { ++taps; });
    behind->forceActiveFocus();
    tap(QPoint(20, 20));
    EXPECT_EQ(taps, 1);

    controller->present(*window, false);
    EXPECT_FALSE(behind->hasActiveFocus());
    tap(QPoint(20, 20));
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(taps, 1);

    controller->dismiss(false);
    EXPECT_TRUE(behind->hasActiveFocus());
    tap(QPoint(20, 20));
    EXPECT_EQ(taps, 2);
}

TEST_F(PresentationTest, WhatLiesBehindAScreenStaysAsTheHostWantsIt) {
    QQuickItem left(window->contentItem());
    QQuickItem unused(window->contentItem());
    QQuickItem changed(window->contentItem());
    QQuickItem enabled(window->contentItem());
    unused.setEnabled(false);
    controller->present(*window, false);
    EXPECT_FALSE(left.isEnabled());

    changed.setEnabled(true);
    changed.setEnabled(false);
    enabled.setEnabled(true);
    controller->dismiss(false);

    EXPECT_TRUE(left.isEnabled());
    EXPECT_FALSE(unused.isEnabled());
    EXPECT_FALSE(changed.isEnabled());
    EXPECT_TRUE(enabled.isEnabled());
}

TEST_F(PresentationTest, WhatLiesBehindTwoScreensIsEnabledByTheLastOfThem) {
    QQuickItem behind(window->contentItem());
    for (const bool isLowerFirst : {false, true}) {
        const auto upper = std::make_shared<SomeController>(steps);
        controller->present(*window, false);
        upper->present(*window, false);
        ViewController& first = isLowerFirst ? *controller : *upper;
        ViewController& last = isLowerFirst ? *upper : *controller;

        first.dismiss(false);
        EXPECT_FALSE(behind.isEnabled());
        last.dismiss(false);
        EXPECT_TRUE(behind.isEnabled());
    }
}

TEST_F(PresentationTest, OfSeveralScreensTheTopmostTakesInputWhicheverGoes) {
    const QQuickItem behind(window->contentItem());
    std::array<std::size_t, 3> order{0, 1, 2};
    for (const bool isLetGoOf : {false, true}) {
        do {
            SCOPED_TRACE(::testing::PrintToString(order) + (isLetGoOf ? " are let go of" : " are dismissed"));
            std::array<std::shared_ptr<SomeController>, 3> screens;
            for (std::size_t i = screens.size(); i-- > 0;) {
                // Made in another order than they are shown in.
                screens.at(i) = std::make_shared<SomeController>(steps);
            }
            for (const auto& screen : screens) {
                screen->present(*window, false);
            }
            for (const std::size_t leaving : order) {
                screens.at(leaving)->dismiss(isLetGoOf);
                screens.at(leaving) = nullptr;

                bool isTopmost = true;
                for (std::size_t i = screens.size(); i-- > 0;) {
                    if (screens.at(i)) {
                        EXPECT_EQ(screens.at(i)->view().isEnabled(), std::exchange(isTopmost, false)) << i;
                    }
                }
                EXPECT_EQ(behind.isEnabled(), isTopmost);
            }
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST_F(PresentationTest, AScreenListensToNothingOfTheHostOnceItIsGone) {
    CountingItem left(window->contentItem());
    CountingItem changed(window->contentItem());
    for (int i = 0; i < 2; ++i) {
        controller->present(*window, false);
        EXPECT_EQ(left.listeners(), 1);
        changed.setEnabled(true);
        controller->dismiss(false);
        EXPECT_EQ(left.listeners(), 0);
        EXPECT_EQ(changed.listeners(), 0);
    }
    controller->present(*window, false);
    changed.setEnabled(true);
    controller->dismiss(false);
    controller.reset();
    // What the screen was made of is there still.
    changed.setEnabled(false);
    EXPECT_FALSE(changed.isEnabled());
}

TEST_F(PresentationTest, TheTabulatorDoesNotLeaveAScreen) {
    QQuickItem behind(window->contentItem());
    behind.setActiveFocusOnTab(true);
    controller->present(*window, false);
    for (const int key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        press(key);
        EXPECT_FALSE(behind.hasActiveFocus());
        EXPECT_TRUE(controller->view().hasActiveFocus() || controller->view().isAncestorOf(window->activeFocusItem()));
    }
}

TEST_F(PresentationTest, AScreenGoesWithoutAWordWhenThePlatformIsTakenOutOfUse) {
    controller->present(*window, false);
    static_cast<void>(newSteps());

    platform::install(nullptr);

    EXPECT_EQ(newSteps(), Steps{});
    EXPECT_FALSE(controller->isPresented());
    EXPECT_EQ(colorAt({100, 150}), Qt::white);
    controller->dismiss(false);
    EXPECT_EQ(newSteps(), Steps{});
}

TEST_F(PresentationTest, AHostMayLetGoOfAScreenThatGoesWithThePlatform) {
    const QQuickItem behind(window->contentItem());
    controller->present(*window, false);
    const std::weak_ptr<SomeController> held = controller;
    bool isHeldWhileItGoes = false;
    QObject::connect(&behind, &QQuickItem::enabledChanged, &behind, [&] {
        controller.reset();
        isHeldWhileItGoes = !held.expired();
    });

    platform::install(nullptr);

    EXPECT_TRUE(isHeldWhileItGoes);
    EXPECT_TRUE(held.expired());
    EXPECT_TRUE(behind.isEnabled());
}

} // namespace
} // namespace quorvane::capture
