#include "Internal/Views/ItemPointer.h"
#include "Internal/Views/PictureView.h"
#include "Internal/Views/ScreenTest.h"

namespace quorvane::capture {
namespace {

class PictureViewTest : public ScreenTest {
protected:
    PictureViewTest() {
        view->setParentItem(window->contentItem());
        view->setPosition({40, 60});
        view->setSize({100, 60});
    }

    /// Pixels of the picture that are neither one of the two colours.
    static int between(const QImage& image, const QColor& one, const QColor& other) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                count += color != one && color != other ? 1 : 0;
            }
        }
        return count;
    }

    const ItemPointer<PictureView> view{new PictureView};
};

TEST_F(PictureViewTest, WithoutAnImageAndABorderItShowsNothing) {
    EXPECT_EQ(colorAt({90, 90}), QColor(Qt::white));
    EXPECT_EQ(view->implicitWidth(), 0);
    EXPECT_TRUE(view->drawn(1).isNull());
}

TEST_F(PictureViewTest, ItsOwnSizeIsThatOfTheDrawing) {
    view->setImage("rectangle_horizontal");
    EXPECT_EQ(QSizeF(view->implicitWidth(), view->implicitHeight()), QSizeF(300, 200));

    view->setImage("");
    EXPECT_EQ(QSizeF(view->implicitWidth(), view->implicitHeight()), QSizeF(0, 0));
}

TEST_F(PictureViewTest, ADrawingIsAsLargeAsFitsAndCentred) {
    view->setImage("circle");

    const QImage drawn = view->drawn(1);

    ASSERT_EQ(drawn.size(), QSize(100, 60));
    EXPECT_EQ(drawn.pixelColor(10, 30).alpha(), 0);
    EXPECT_GT(drawn.pixelColor(22, 30).alpha(), 30);
    EXPECT_GT(drawn.pixelColor(77, 30).alpha(), 30);
    EXPECT_EQ(drawn.pixelColor(89, 30).alpha(), 0);
}

TEST_F(PictureViewTest, ItIsDrawnForThePixelsOfTheScreen) {
    view->setBorderWidth(4);
    view->setBorderColor(Qt::red);
    for (const qreal scale : {1.0, 1.5, 2.0, 3.0}) {
        const QImage drawn = view->drawn(scale);

        EXPECT_EQ(drawn.size(), QSize(static_cast<int>(100 * scale), static_cast<int>(60 * scale)));
        // Sharp edges: nothing between the border and what it surrounds.
        EXPECT_EQ(between(drawn, Qt::red, QColor(0, 0, 0, 0)), 0) << scale;
        EXPECT_EQ(drawn.pixelColor(static_cast<int>(4 * scale) - 1, drawn.height() / 2), QColor(Qt::red));
        EXPECT_EQ(drawn.pixelColor(static_cast<int>(4 * scale), drawn.height() / 2).alpha(), 0);
    }
}

TEST_F(PictureViewTest, ItsGroundAndItsBorderHaveRoundCorners) {
    PictureView round;
    round.setSize({40, 40});
    round.setColor(Qt::blue);
    round.setRadius(20);
    round.setBorderWidth(4);
    round.setBorderColor(Qt::red);
    for (const int scale : {1, 3}) {
        const QImage drawn = round.drawn(scale);

        EXPECT_EQ(drawn.pixelColor(2 * scale, 2 * scale).alpha(), 0);
        EXPECT_EQ(drawn.pixelColor(2 * scale, 20 * scale), QColor(Qt::red));
        EXPECT_EQ(drawn.pixelColor(20 * scale, 20 * scale), QColor(Qt::blue));
    }
}

TEST_F(PictureViewTest, WhatTheWindowShowsIsTheDrawingPixelByPixel) {
    view->setImage("bubble");
    const double scale = window->effectiveDevicePixelRatio();
    QImage expected(view->drawn(scale).size(), QImage::Format_RGB32);
    expected.fill(Qt::white);
    const QImage drawn = view->drawn(scale);

    const QImage shown = picture();

    int differences = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            const QColor ink = drawn.pixelColor(x, y);
            const QColor seen = shown.pixelColor(static_cast<int>(40 * scale) + x, static_cast<int>(60 * scale) + y);
            const int red = 255 + (ink.red() - 255) * ink.alpha() / 255;
            differences += std::abs(seen.red() - red) > 2 ? 1 : 0;
        }
    }
    EXPECT_EQ(differences, 0);
    EXPECT_FALSE(drawn.isNull());
}

TEST_F(PictureViewTest, AnotherImageBorderOrSizeIsDrawnAnew) {
    view->setBorderWidth(4);
    view->setBorderColor(Qt::red);
    EXPECT_EQ(colorAt({41, 90}), QColor(Qt::red));

    view->setBorderColor(Qt::green);
    EXPECT_EQ(colorAt({41, 90}), QColor(Qt::green));
    view->setSize({100, 120});
    EXPECT_EQ(colorAt({90, 178}), QColor(Qt::green));
    view->setBorderWidth(0);
    EXPECT_EQ(colorAt({41, 90}), QColor(Qt::white));
    view->setImage("bubble");
    EXPECT_NE(colorAt({90, 120}), QColor(Qt::white));
    view->setSize({});
    EXPECT_EQ(colorAt({90, 120}), QColor(Qt::white));
}

} // namespace
} // namespace quorvane::capture
