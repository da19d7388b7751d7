#include "Platform/Support/SignificantChangeMonitor.h"

#include <utility>

namespace quorvane::platform {

bool SignificantChangeMonitor::receive(const Location& fix, std::chrono::nanoseconds now) {
    if (!last) {
        last = fix;
        return false;
    }
    const double away = fix.distance(*last);
    if (away <= farthest) {
        isDoubted = false;
        return false;
    }
    const bool wasDoubted = std::exchange(isDoubted, true);
    const bool isCertain = away - fix.horizontalAccuracy > farthest;
    if ((!isCertain && !wasDoubted) || (toldAt && now - *toldAt < pause)) {
        return false;
    }
    last = fix;
    toldAt = now;
    isDoubted = false;
    return true;
}

} // namespace quorvane::platform
