#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "Internal/Views/ItemPointer.h"
#include "Internal/Views/LevelingView/LevelingView.h"
#include "Internal/Views/PictureView.h"
#include "Internal/Views/ScreenTest.h"
#include "testing/SimulatedAccelerometer.h"

namespace quorvane::capture {
namespace {

using namespace std::chrono_literals;
using platform::Acceleration;

/// One thirtieth of a second, rounded up.
constexpr std::chrono::nanoseconds sampleInterval{33'333'334};

class LevelingViewTest : public ScreenTest {
protected:
    void make(ReticleType reticle, QSizeF size = {200, 200}) {
        view.reset(new LevelingView(reticle, &accelerometer));
        view->setParentItem(window->contentItem());
        view->setPosition({50, 100});
        view->setSize(size);
        view->levelWithinThresholdChanged = [this](bool isLevel) { changes.push_back(isLevel); };
    }
    void sample(double x, double y) { sample(Acceleration{x, y, 0}); }
    void sample(testing::SimulatedAccelerometer::Reading reading) {
        accelerometer.setReading(reading);
        advance(sampleInterval);
    }
    [[nodiscard]] double pixelsPerPoint() const { return window->effectiveDevicePixelRatio(); }
    [[nodiscard]] QPointF bubbleCentre() const {
        return view->bubbleView().position() + QPointF(view->bubbleView().width() / 2, view->bubbleView().height() / 2);
    }

    testing::SimulatedAccelerometer accelerometer{*world};
    std::vector<bool> changes;
    ItemPointer<LevelingView> view;
};

TEST_F(LevelingViewTest, ItBeginsNotLevelWithNothingMeasured) {
    make(ReticleType::middle);

    EXPECT_FALSE(view->levelIsWithinThreshold());
    EXPECT_EQ(view->reading().x, 0);
    EXPECT_EQ(view->reading().y, 0);
    EXPECT_EQ(view->reading().k, 0.9);
    EXPECT_EQ(bubbleCentre(), QPointF(100, 100));
}

TEST_F(LevelingViewTest, ItsPicturesAreTheBubbleAndTheReticleOfItsType) {
    make(ReticleType::top);
    EXPECT_EQ(view->bubbleView().image(), "bubble");
    EXPECT_EQ(view->reticleView().image(), "level_top");
    EXPECT_EQ(view->reading().reticleType, ReticleType::top);

    make(ReticleType::middle);
    EXPECT_EQ(view->bubbleView().image(), "bubble");
    EXPECT_EQ(view->reticleView().image(), "level");
    EXPECT_EQ(view->reading().reticleType, ReticleType::middle);
}

TEST_F(LevelingViewTest, ASampleIsTakenThirtyTimesASecond) {
    make(ReticleType::middle);

    advance(1s + 1us);

    EXPECT_EQ(accelerometer.samplesTaken(), 30U);
}

TEST_F(LevelingViewTest, EachSampleIsFiltered) {
    make(ReticleType::middle);

    sample(1, -0.5);
    sample(0, 1);

    EXPECT_DOUBLE_EQ(view->reading().x, 0.09);
    EXPECT_DOUBLE_EQ(view->reading().y, 0.055);
}

TEST_F(LevelingViewTest, ASampleThatCouldNotBeReadChangesNothing) {
    make(ReticleType::middle);
    sample(1, 1);
    const double before = view->reading().x;

    sample(std::nullopt);
    sample(std::numeric_limits<double>::quiet_NaN(), 0);
    sample(0, std::numeric_limits<double>::infinity());

    EXPECT_EQ(view->reading().x, before);
    EXPECT_EQ(changes, std::vector<bool>{true});
}

TEST_F(LevelingViewTest, TheCallbackIsCalledOnChangesAndNotOnEverySample) {
    make(ReticleType::middle);

    sample(0, 0);
    EXPECT_EQ(changes, (std::vector<bool>{true}));
    sample(0, 0);
    sample(0.1, 0.1);
    EXPECT_EQ(changes, (std::vector<bool>{true}));
    sample(2, 0);
    sample(2, 0);
    EXPECT_EQ(changes, (std::vector<bool>{true, false}));
    accelerometer.setReading(Acceleration{0, 0, 0});
    advance(2s);
    EXPECT_EQ(changes, (std::vector<bool>{true, false, true}));
    EXPECT_TRUE(view->levelIsWithinThreshold());
}

TEST_F(LevelingViewTest, UprightItIsLevelOnTheTopReticleOnceTheFilterHasSettled) {
    make(ReticleType::top);
    accelerometer.setReading(Acceleration{0, -1, 0});

    for (int n = 1; n <= 18; ++n) {
        advance(sampleInterval);
        EXPECT_FALSE(view->levelIsWithinThreshold()) << n;
    }
    advance(sampleInterval);

    EXPECT_TRUE(view->levelIsWithinThreshold());
    EXPECT_EQ(changes, std::vector<bool>{true});
}

TEST_F(LevelingViewTest, TheBubbleMovesAgainstXAndAlongYInWholeDevicePixels) {
    make(ReticleType::middle);
    const double s = pixelsPerPoint();

    sample(0.37, 0.73);

    // 3.7 and 7.3 points from the centre, truncated to whole device pixels.
    EXPECT_NEAR(bubbleCentre().x(), 100 - std::trunc(3.7 * s) / s, 1e-9);
    EXPECT_NEAR(bubbleCentre().y(), 100 + std::trunc(7.3 * s) / s, 1e-9);
}

TEST_F(LevelingViewTest, TheBubbleKeepsItsSize) {
    make(ReticleType::middle);
    const QSizeF size = view->bubbleView().size();

    sample(1, 1);
    view->setSize({300, 100});

    EXPECT_EQ(view->bubbleView().size(), size);
    EXPECT_EQ(size, QSizeF(view->bubbleView().implicitWidth(), view->bubbleView().implicitHeight()));
}

TEST_F(LevelingViewTest, AnotherSizePlacesTheBubbleAnew) {
    make(ReticleType::middle);

    view->setSize({300, 120});

    EXPECT_EQ(bubbleCentre(), QPointF(150, 60));
}

TEST_F(LevelingViewTest, TheTopReticleStandsAtTheTopEdgeInTheMiddleOfIt) {
    make(ReticleType::top, {300, 240});
    const QQuickItem& reticle = view->reticleView();

    EXPECT_EQ(reticle.y(), 0);
    EXPECT_EQ(reticle.x() + reticle.width() / 2, 150);
    EXPECT_EQ(reticle.size(), QSizeF(reticle.implicitWidth(), reticle.implicitHeight()));
}

TEST_F(LevelingViewTest, TheMiddleReticleStandsInTheMiddle) {
    make(ReticleType::middle, {300, 240});
    const QQuickItem& reticle = view->reticleView();

    EXPECT_EQ(reticle.y() + reticle.height() / 2, 120);
    EXPECT_EQ(reticle.x() + reticle.width() / 2, 150);
    EXPECT_EQ(reticle.size(), QSizeF(reticle.implicitWidth(), reticle.implicitHeight()));
}

TEST_F(LevelingViewTest, ItsOwnSizeIsWhatBothPicturesNeed) {
    make(ReticleType::top);

    EXPECT_EQ(view->implicitWidth(), std::max(view->reticleView().width(), view->bubbleView().width()));
    EXPECT_EQ(view->implicitHeight(), std::max(view->reticleView().height(), view->bubbleView().height()));
}

TEST_F(LevelingViewTest, WithoutAnAccelerometerItIsNeverLevel) {
    accelerometer.setAvailable(false);
    make(ReticleType::middle);
    advance(10s);
    EXPECT_FALSE(view->levelIsWithinThreshold());

    view.reset(new LevelingView(ReticleType::middle, nullptr));
    advance(10s);

    EXPECT_FALSE(view->levelIsWithinThreshold());
    EXPECT_EQ(changes, std::vector<bool>{});
    EXPECT_EQ(accelerometer.samplesTaken(), 0U);
}

TEST_F(LevelingViewTest, SamplesAreTakenForTheLifeOfTheViewInAWindowOrNot) {
    make(ReticleType::middle);
    view->setParentItem(nullptr);
    sample(0, 0);
    EXPECT_EQ(changes, std::vector<bool>{true});

    view.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const std::size_t before = accelerometer.samplesTaken();
    advance(1s);

    EXPECT_EQ(accelerometer.samplesTaken(), before);
}

TEST_F(LevelingViewTest, TheCallbackMayDestroyTheView) {
    make(ReticleType::middle);
    auto* const bare = view.release();
    int calls = 0;
    bare->levelWithinThresholdChanged = [&](bool) {
        ++calls;
        delete bare;
    };

    sample(0, 0);
    sample(5, 5);

    EXPECT_EQ(calls, 1);
}

TEST_F(LevelingViewTest, AMissingCallbackIsNone) {
    make(ReticleType::middle);
    view->levelWithinThresholdChanged = nullptr;

    sample(0, 0);

    EXPECT_TRUE(view->levelIsWithinThreshold());
}

} // namespace
} // namespace quorvane::capture
