#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvane::capture {

/// Where a point of a picture that was made from another lies in that other one.
struct Placement {
    double originX = 0;
    double originY = 0;
    /// How far one pixel to the right, and one pixel down, go.
    double rightX = 1;
    double rightY = 0;
    double downX = 0;
    double downY = 1;

    [[nodiscard]] double x(double column, double row) const { return originX + column * rightX + row * downX; }
    [[nodiscard]] double y(double column, double row) const { return originY + column * rightY + row * downY; }
};

/// Brightness, row by row without gaps. Kept from frame to frame, so that its memory is.
struct GrayPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
    Placement placement;

    void resize(int newWidth, int newHeight) {
        width = newWidth;
        height = newHeight;
        pixels.resize(count());
    }
    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }
    [[nodiscard]] std::size_t count() const {
        return isEmpty() ? 0 : static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
    [[nodiscard]] std::uint8_t* row(int y) {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

} // namespace quorvane::capture
