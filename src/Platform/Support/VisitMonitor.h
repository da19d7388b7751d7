#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "Platform/LocationManagerDelegate.h"

namespace quorvane::platform {

/// Finds out from fixes when the device stays at a place. Plain value.
///
/// A stay is told when all fixes of five minutes lie within 100 metres around their mean, and its end when the device
/// has left that circle: by two fixes in a row outside of it, or one whose accuracy circle lies outside as a whole. A
/// fix whose accuracy circle holds the middle of the stay says nothing against it.
///
/// Where silence means that the device does not move, a stay lasts without further fixes too: `due` says when to look.
class VisitMonitor {
public:
    /// Metres.
    static constexpr double radius = 100;
    static constexpr std::chrono::nanoseconds shortest = std::chrono::minutes(5);

    /// The arrival or the departure that @p fix shows. Its coordinate and its accuracy are valid. @p now is monotonic
    /// time, so that no clock that is set makes a stay longer or shorter.
    [[nodiscard]] std::optional<Visit> receive(const Location& fix, std::chrono::nanoseconds now);

    /// When the stay has lasted long enough to be told, should no fix come before; none while there is nothing to tell,
    /// and while the last fix lay outside.
    [[nodiscard]] std::optional<std::chrono::nanoseconds> due() const;
    /// The arrival that is due at @p now without a fix.
    [[nodiscard]] std::optional<Visit> look(std::chrono::nanoseconds now);

    /// Begins anew with the next fix. A visit that lasts is forgotten.
    void reset() { *this = {}; }

private:
    [[nodiscard]] std::optional<Visit> arrival(std::chrono::nanoseconds now);
    void begin(const Location& fix, std::chrono::nanoseconds now);
    void add(const Location& fix);

    /// The stay as a visit, which is told once it has lasted. No fixes: there is none.
    Visit stay;
    std::int64_t fixes = 0;
    std::chrono::nanoseconds since{0};
    bool isTold = false;
    /// The last fix, where it lay outside and may have strayed.
    std::optional<Location> doubt;
};

} // namespace quorvane::platform
