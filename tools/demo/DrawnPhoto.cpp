#include "tools/demo/DrawnPhoto.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "tools/Pictures.h"

namespace quorvane::tool {
namespace {

constexpr int photoWidth = 1600;
constexpr int photoHeight = 1200;

using Color = std::array<int, 3>;

struct Box {
    int left;
    int top;
    int right;
    int bottom;
    Color color;

    [[nodiscard]] constexpr bool holds(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
};

/// From the front to the back.
constexpr std::array<Box, 9> boxes{{
    {1200, 820, 1230, 870, {220, 190, 70}},  // the handle of the door
    {980, 600, 1220, 800, {170, 200, 215}},  // its pane
    {950, 560, 1250, 1050, {110, 40, 40}},   // the door
    {265, 725, 785, 740, {60, 70, 80}},      // a shelf
    {265, 575, 785, 885, {170, 200, 215}},   // the pane of the window
    {250, 560, 800, 900, {60, 70, 80}},      // the window
    {250, 400, 1350, 500, {40, 80, 120}},    // the sign
    {150, 300, 1450, 330, {90, 60, 40}},     // the eaves
    {150, 300, 1450, 1050, {196, 164, 132}}, // the wall
}};

Color colorAt(int x, int y) {
    for (const Box& box : boxes) {
        if (box.holds(x, y)) {
            return box.color;
        }
    }
    const bool isStreet = y >= 1050;
    return isStreet ? Color{120, 120, 118} : Color{130 + y / 12, 170 + y / 20, 225};
}

} // namespace

std::shared_ptr<platform::Image> drawnPhoto() {
    std::string pixels;
    pixels.reserve(std::size_t{3} * photoWidth * photoHeight);
    std::uint32_t grain = 1;
    for (int y = 0; y < photoHeight; ++y) {
        for (int x = 0; x < photoWidth; ++x) {
            // Some grain, as every sensor has.
            grain = grain * 1664525U + 1013904223U;
            for (const int channel : colorAt(x, y)) {
                pixels += static_cast<char>(std::clamp(channel + static_cast<int>(grain >> 28U) - 8, 0, 255));
            }
        }
    }
    return pictureOf(photoWidth, photoHeight, pixels);
}

} // namespace quorvane::tool
