#include "Internal/Views/ScreenTest.h"

#include <QGuiApplication>
#include <QTest>
#include <QTimer>

namespace quorvane::capture {

ScreenTest::ScreenTest() : window(std::make_unique<QQuickWindow>()), finger(QTest::createTouchDevice()) {
    window->setColor(Qt::white);
    resize(usualSize);
    window->show();
    window->requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

ScreenTest::~ScreenTest() {
    window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Devices ScreenTest::devices() const {
    return {cameras, readers, nullptr, sounds};
}

void ScreenTest::resize(QSize size) {
    window->resize(size);
    settle();
}

QImage ScreenTest::picture() {
    return window->grabWindow();
}

QColor ScreenTest::colorAt(QPoint point) {
    return colorIn(picture(), point);
}

QColor ScreenTest::colorIn(const QImage& shown, QPointF point) const {
    return shown.pixelColor((point * window->effectiveDevicePixelRatio()).toPoint());
}

void ScreenTest::tap(QQuickItem& item) {
    tap(item.mapToScene(item.boundingRect().center()).toPoint());
}

void ScreenTest::tap(QPoint point) {
    QTest::touchEvent(window.get(), finger).press(0, point, window.get());
    QTest::touchEvent(window.get(), finger).release(0, point, window.get());
    settle();
}

void ScreenTest::press(int key) {
    QTest::keyClick(window.get(), static_cast<Qt::Key>(key));
    settle();
}

void ScreenTest::advance(std::chrono::nanoseconds duration) {
    EXPECT_TRUE(world->advance(duration));
    QCoreApplication::processEvents();
}

void ScreenTest::settle() {
    EXPECT_TRUE(world->runUntilIdle());
    QCoreApplication::processEvents();
}

bool ScreenTest::quits() {
    bool isAccepted = false;
    QTimer::singleShot(0, [&] {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
        isAccepted = quit.isAccepted();
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
    return isAccepted;
}

} // namespace quorvane::capture
