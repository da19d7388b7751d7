#include "Internal/Views/CameraPreview.h"
#include "Internal/Views/FrameImage.h"
#include "Internal/Views/ItemPointer.h"
#include "Internal/Views/ScreenTest.h"

namespace quorvane::capture {
namespace {

class CameraPreviewTest : public ScreenTest {
protected:
    CameraPreviewTest() {
        resize({100, 200});
        preview->setParentItem(window->contentItem());
        preview->setSize({100, 200});
    }

    /// Left half red, right half blue.
    [[nodiscard]] static platform::VideoFrame twoColors(int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int y = 0; y < height; ++y) {
            for (int x = width / 2; x < width; ++x) {
                image.setPixelColor(x, y, Qt::blue);
            }
        }
        return frameOf(image);
    }

    const ItemPointer<CameraPreview> preview{new CameraPreview};
};

TEST_F(CameraPreviewTest, ShowsNothingBeforeTheFirstFrame) {
    EXPECT_EQ(colorAt({50, 100}), Qt::white);
}

TEST_F(CameraPreviewTest, AFrameFillsTheItemAndKeepsItsProportions) {
    preview->show(twoColors(400, 200));
    const QImage shown = picture();
    EXPECT_EQ(colorIn(shown, {2, 2}), Qt::red);
    EXPECT_EQ(colorIn(shown, {2, 197}), Qt::red);
    EXPECT_EQ(colorIn(shown, {47, 100}), Qt::red);
    EXPECT_EQ(colorIn(shown, {52, 100}), Qt::blue);
    EXPECT_EQ(colorIn(shown, {97, 197}), Qt::blue);
}

TEST_F(CameraPreviewTest, AFrameThatLiesOnItsSideIsShownUpright) {
    platform::VideoFrame frame = twoColors(400, 200);
    frame.rotation = 90;
    preview->show(frame);
    const QImage shown = picture();
    EXPECT_EQ(colorIn(shown, {50, 97}), Qt::red);
    EXPECT_EQ(colorIn(shown, {50, 103}), Qt::blue);
}

TEST_F(CameraPreviewTest, TheNextFrameReplacesTheOneThatIsShownWhateverItsSize) {
    preview->show(twoColors(400, 200));
    static_cast<void>(picture());
    preview->show(testing::plainFrame(33, 17, 128));
    EXPECT_EQ(colorAt({2, 2}), QColor(128, 128, 128));
    EXPECT_EQ(preview->pictureSize(), QSizeF(33, 17));
}

TEST_F(CameraPreviewTest, AnEmptyFrameLeavesWhatIsShown) {
    preview->show(testing::plainFrame(10, 10, 128));
    preview->show({});
    EXPECT_EQ(colorAt({50, 100}), QColor(128, 128, 128));
}

TEST_F(CameraPreviewTest, FollowsTheSizeOfTheItem) {
    preview->show(twoColors(100, 100));
    static_cast<void>(picture());
    preview->setSize({50, 50});
    const QImage shown = picture();
    EXPECT_EQ(colorIn(shown, {22, 48}), Qt::red);
    EXPECT_EQ(colorIn(shown, {27, 48}), Qt::blue);
    EXPECT_EQ(colorIn(shown, {52, 25}), Qt::white);
}

TEST_F(CameraPreviewTest, IsEmptyAgainAfterItWasCleared) {
    preview->show(testing::plainFrame(10, 10, 128));
    static_cast<void>(picture());
    preview->clear();
    EXPECT_EQ(colorAt({50, 100}), Qt::white);
    EXPECT_TRUE(preview->pictureSize().isEmpty());
}

} // namespace
} // namespace quorvane::capture
