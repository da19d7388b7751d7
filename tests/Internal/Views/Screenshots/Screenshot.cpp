#include "Internal/Views/Screenshots/Screenshot.h"

#include <QDir>
#include <QPainter>

#include <gtest/gtest.h>

#include "Internal/Views/FrameImage.h"

namespace quorvane::capture {
namespace {

constexpr QSize sceneSize{1200, 1600};

bool isOfOneColor(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

const char* nameOf(Surroundings surroundings) {
    return surroundings == Surroundings::light ? "light" : "dark";
}

QString textOf(QSize size) {
    return QString("%1x%2").arg(size.width()).arg(size.height());
}

platform::VideoFrame scene(Surroundings surroundings) {
    const bool isLight = surroundings == Surroundings::light;
    QImage image(sceneSize, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient wall(0, 0, sceneSize.width(), sceneSize.height());
    wall.setColorAt(0, isLight ? QColor("#fbfcfd") : QColor("#14181d"));
    wall.setColorAt(1, isLight ? QColor("#d5e1ec") : QColor("#2a2521"));
    painter.fillRect(image.rect(), wall);
    painter.setPen(Qt::NoPen);
    const QColor wood(isLight ? "#e6d3b3" : "#3a2e22");
    for (int shelf = 1; shelf <= 3; ++shelf) {
        painter.fillRect(0, shelf * 440, sceneSize.width(), 36, wood);
        for (int thing = 0; thing < 7; ++thing) {
            const int height = 180 + (thing * 97 + shelf * 53) % 150;
            const QColor color =
                QColor::fromHsv((thing * 61 + shelf * 29) % 360, 110, isLight ? 240 : 90 - 8 * (thing % 3));
            painter.setBrush(color);
            painter.drawRoundedRect(60 + thing * 160, shelf * 440 - height, 120, height, 14, 14);
        }
    }
    painter.end();
    return frameOf(image);
}

void keepScreenshot(const QImage& picture, const QString& name, QSize points, double ratio) {
    EXPECT_EQ(picture.size(), points * ratio) << name.toStdString();
    EXPECT_FALSE(isOfOneColor(picture)) << name.toStdString();
    const QDir folder(QUORVANE_SCREENSHOTS);
    EXPECT_TRUE(folder.mkpath("."));
    const QString file = folder.filePath(QString("%1@%2x.png").arg(name).arg(ratio));
    // The fastest compression: these are many.
    EXPECT_TRUE(picture.save(file, "PNG", 80)) << file.toStdString();
}

} // namespace quorvane::capture
