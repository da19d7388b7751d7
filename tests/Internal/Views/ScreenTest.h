#pragma once

#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPointingDevice>
#include <QQuickItem>
#include <QQuickWindow>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Internal/Views/AnimationClock.h"
#include "Internal/Views/Capture.h"
#include "Internal/Views/FakeReader.h"
#include "Platform/SystemSound.h"
#include "testing/InstalledPlatform.h"
#include "testing/SimulatedCamera.h"

namespace quorvane::capture {

/// Keeps which sounds were asked for.
class RecordedSounds final : public platform::SystemSound {
public:
    std::vector<Identifier> played;
    std::function<void()> whenPlayed;

    void play(Identifier sound) override {
        played.push_back(sound);
        if (whenPlayed) {
            whenPlayed();
        }
    }
};

/// A user who wants texts twice as large, as long as it lives.
class LargeFont {
public:
    LargeFont() {
        QFont large = usual;
        large.setPointSizeF(2 * usual.pointSizeF());
        QGuiApplication::setFont(large);
    }
    LargeFont(const LargeFont&) = delete;
    LargeFont& operator=(const LargeFont&) = delete;
    ~LargeFont() { QGuiApplication::setFont(usual); }

private:
    const QFont usual = QGuiApplication::font();
};

/// A test with a window of the host on a screen that nobody sees, on a virtual clock; animations have a clock of their
/// own.
class ScreenTest : public ::testing::Test {
protected:
    ScreenTest();
    ~ScreenTest() override;

    static constexpr QSize usualSize{360, 640};

    /// With the fakes below.
    [[nodiscard]] Devices devices() const;

    void resize(QSize size);
    /// What the window shows, in device pixels.
    [[nodiscard]] QImage picture();
    [[nodiscard]] QColor colorAt(QPoint point);
    /// The same of a picture that was taken of it.
    [[nodiscard]] QColor colorIn(const QImage& shown, QPointF point) const;

    /// A finger on the middle of an item.
    void tap(QQuickItem& item);
    void tap(QPoint point);
    void press(int key);

    /// Time passes for the library, and not for animations.
    void advance(std::chrono::nanoseconds duration);
    /// What can run now does: work that is posted, and events of the toolkit.
    void settle();

    /// Whether the application would end when it is asked to.
    [[nodiscard]] static bool quits();

    testing::InstalledPlatform world;
    AnimationClock animations;
    const std::shared_ptr<testing::SimulatedCameras> cameras =
        std::make_shared<testing::SimulatedCameras>(world->mainQueue());
    const std::shared_ptr<FakeReaders> readers = std::make_shared<FakeReaders>();
    const std::shared_ptr<RecordedSounds> sounds = std::make_shared<RecordedSounds>();
    std::unique_ptr<QQuickWindow> window;

private:
    /// The toolkit keeps it.
    QPointingDevice* const finger;
};

} // namespace quorvane::capture
