#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Image.h"

namespace quorvane::platform::contract {

/// How one implementation comes by its pictures.
struct ImageMaker {
    /// A picture of rows of red, green and blue bytes; null when there can be none.
    std::function<std::shared_ptr<Image>(int width, int height, std::string_view pixels)> fromPixels;
    /// The picture in a file; null when there is none in it.
    std::function<std::shared_ptr<Image>(std::string_view file)> decode;
};

class ImageContract : public ::testing::TestWithParam<ImageMaker> {
protected:
    [[nodiscard]] static std::shared_ptr<Image> make(int width, int height, std::string_view pixel = "\x40\x80\xC0") {
        std::string pixels;
        for (std::int64_t i = 0; i < std::int64_t{width} * height; ++i) {
            pixels += pixel;
        }
        return GetParam().fromPixels(width, height, pixels);
    }

    static void expectSize(const std::shared_ptr<const Image>& image, int width, int height) {
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->width(), width);
        EXPECT_EQ(image->height(), height);
    }

    /// The size of @p file after it is decoded.
    static void expectFile(const std::optional<std::string>& file, std::string_view signature, int width, int height) {
        ASSERT_TRUE(file.has_value());
        EXPECT_TRUE(file->starts_with(signature));
        expectSize(GetParam().decode(*file), width, height);
    }

    static constexpr std::string_view jpegSignature = "\xFF\xD8\xFF";
    static constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";
};

TEST_P(ImageContract, KnowsItsSize) {
    expectSize(make(7, 3), 7, 3);
}

TEST_P(ImageContract, EachLengthIsHalvedAndRoundedDownToAtLeastOnePixel) {
    struct Size {
        int width;
        int height;
    };
    const std::vector<std::pair<Size, Size>> halves{
        {{1, 1}, {1, 1}}, {{2, 2}, {1, 1}},         {{3, 3}, {1, 1}},         {{4, 6}, {2, 3}},
        {{5, 7}, {2, 3}}, {{1, 30000}, {1, 15000}}, {{30000, 1}, {15000, 1}}, {{640, 480}, {320, 240}}};
    for (const auto& [whole, half] : halves) {
        SCOPED_TRACE(std::to_string(whole.width) + " x " + std::to_string(whole.height));
        expectSize(make(whole.width, whole.height)->half(), half.width, half.height);
    }
}

TEST_P(ImageContract, ThePictureThatWasHalvedStaysAsItIs) {
    const auto image = make(8, 8);
    const auto before = image->png();

    static_cast<void>(image->half());

    EXPECT_EQ(image->png(), before);
    expectSize(image, 8, 8);
}

TEST_P(ImageContract, EncodesAsAJPEGFileOfItsSizeWhateverItsShape) {
    for (const auto& [width, height] : {std::pair(1, 1), {1, 30000}, {30000, 1}, {33, 17}}) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
        expectFile(make(width, height)->jpeg(0.9), jpegSignature, width, height);
    }
}

TEST_P(ImageContract, EncodesAsAPNGFileOfItsSizeWhateverItsShape) {
    for (const auto& [width, height] : {std::pair(1, 1), {1, 30000}, {70000, 1}, {33, 17}}) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
        expectFile(make(width, height)->png(), pngSignature, width, height);
    }
}

TEST_P(ImageContract, ALengthThatJPEGCannotTellIsNoFile) {
    EXPECT_EQ(make(70000, 1)->jpeg(0.9), std::nullopt);
}

TEST_P(ImageContract, ALowerQualityIsASmallerFileAndOneOutOfRangeIsTheNearest) {
    std::string noise;
    for (unsigned i = 0; i < 64 * 64 * 3; ++i) {
        noise += static_cast<char>(i * i * 2654435761U >> 24U);
    }
    const auto image = GetParam().fromPixels(64, 64, noise);

    const auto size = [&](double quality) { return image->jpeg(quality).value_or("").size(); };

    EXPECT_LT(size(0.1), size(0.5));
    EXPECT_LT(size(0.5), size(0.9));
    EXPECT_LT(size(0.9), size(1));
    EXPECT_EQ(image->jpeg(-1), image->jpeg(0));
    EXPECT_EQ(image->jpeg(7), image->jpeg(1));
    EXPECT_EQ(image->jpeg(std::numeric_limits<double>::quiet_NaN()), image->jpeg(0));
}

TEST_P(ImageContract, AnyThreadMayUseOnePictureAtOnce) {
    const std::shared_ptr<const Image> image = make(640, 480);
    const auto expected = image->half()->jpeg(0.9);
    std::vector<std::optional<std::string>> made(4);
    std::vector<std::thread> threads;

    threads.reserve(made.size());
    for (auto& one : made) {
        threads.emplace_back([&one, image] { one = image->half()->jpeg(0.9); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_TRUE(expected.has_value());
    EXPECT_EQ(made, std::vector(4, expected));
}

} // namespace quorvane::platform::contract
