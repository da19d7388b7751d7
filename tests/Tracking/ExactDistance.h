#pragma once

#include "Platform/Location.h"

namespace quorvane {

/// A point north of @p origin whose distance from it is that many metres to the last bit. There is one near the
/// equator, where a latitude's last bit is finer than the distance's.
[[nodiscard]] inline platform::Coordinate pointExactly(double metres, const platform::Coordinate& origin) {
    constexpr double metresOfOneDegree = 111'195.08;
    double tooNear = origin.latitude;
    double tooFar = tooNear + 2 * metres / metresOfOneDegree;
    platform::Coordinate point = origin;
    for (int halving = 0; halving < 100 && platform::distance(origin, point) != metres; ++halving) {
        point.latitude = (tooNear + tooFar) / 2;
        (platform::distance(origin, point) < metres ? tooNear : tooFar) = point.latitude;
    }
    return point;
}

/// An origin for it.
inline constexpr platform::Coordinate nearTheEquator{1e-12, 14.5};

} // namespace quorvane
