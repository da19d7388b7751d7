#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Qt/BoxAverage.h"

namespace quorvane::platform::qt {
namespace {

/// Three bytes a pixel, in rows with some bytes between them.
class Pixels {
public:
    Pixels(int theWidth, int theHeight) : width(theWidth), height(theHeight), bytes(std::size_t(stride()) * height) {}

    [[nodiscard]] std::ptrdiff_t stride() const { return width * 3 + 5; }
    [[nodiscard]] std::uint8_t& at(int x, int y, int channel) { return bytes[y * stride() + x * 3 + channel]; }

    [[nodiscard]] Pixels half() const {
        Pixels smaller(halfOf(width), halfOf(height));
        halve({bytes.data(), width, height, stride()}, smaller.bytes.data(), smaller.stride());
        return smaller;
    }

    int width;
    int height;
    std::vector<std::uint8_t> bytes;
};

/// The same by its definition.
int average(Pixels& pixels, int x, int y, int channel) {
    const auto end = [](int at, int length) { return at == halfOf(length) - 1 ? length : at * 2 + 2; };
    int sum = 0;
    int count = 0;
    for (int fromY = y * 2; fromY < end(y, pixels.height); ++fromY) {
        for (int fromX = x * 2; fromX < end(x, pixels.width); ++fromX) {
            sum += pixels.at(fromX, fromY, channel);
            ++count;
        }
    }
    return (sum + count / 2) / count;
}

TEST(BoxAverage, EveryPixelIsTheAverageOfThoseItStandsFor) {
    for (int width = 1; width <= 9; ++width) {
        for (int height = 1; height <= 9; ++height) {
            Pixels pixels(width, height);
            unsigned number = 1;
            for (std::uint8_t& byte : pixels.bytes) {
                number = number * 1103515245U + 12345U;
                byte = static_cast<std::uint8_t>(number >> 16U);
            }

            Pixels half = pixels.half();

            for (int y = 0; y < half.height; ++y) {
                for (int x = 0; x < half.width; ++x) {
                    for (int channel = 0; channel < 3; ++channel) {
                        ASSERT_EQ(half.at(x, y, channel), average(pixels, x, y, channel))
                            << width << " x " << height << " at " << x << ", " << y << ", " << channel;
                    }
                }
            }
        }
    }
}

TEST(BoxAverage, WhiteStaysWhiteAndNothingIsWrittenBetweenTheRows) {
    Pixels pixels(7, 7);
    pixels.bytes.assign(pixels.bytes.size(), 255);

    Pixels half = pixels.half();

    for (std::size_t i = 0; i < half.bytes.size(); ++i) {
        EXPECT_EQ(half.bytes[i], i % static_cast<std::size_t>(half.stride()) < 9 ? 255 : 0) << i;
    }
}

} // namespace
} // namespace quorvane::platform::qt
