#include "Internal/Views/AnimationClock.h"

#include <QCoreApplication>

namespace quorvane::capture {

AnimationClock::AnimationClock() {
    install();
}

AnimationClock::~AnimationClock() {
    uninstall();
}

void AnimationClock::start() {
    startedAt = now;
    QAnimationDriver::start();
}

void AnimationClock::pass(int milliseconds) {
    // An animation that was started is entered in one event and begins in another.
    for (int i = 0; i < 2; ++i) {
        QCoreApplication::sendPostedEvents();
        advance();
    }
    now += milliseconds;
    advance();
    QCoreApplication::processEvents();
}

} // namespace quorvane::capture
