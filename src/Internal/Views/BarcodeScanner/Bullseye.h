#pragma once

#include <vector>

#include "Internal/Views/BarcodeScanner/GrayPicture.h"

namespace quorvane::capture {

/// The middle of what looks like the rings at the middle of an Aztec code, turned by whatever angle.
struct Bullseye {
    double x = 0;
    double y = 0;
    /// The width of one ring, in pixels.
    double module = 0;
};

/// At most @p most of them, from the top.
[[nodiscard]] std::vector<Bullseye> findBullseyes(const GrayPicture& picture, std::size_t most);

} // namespace quorvane::capture
