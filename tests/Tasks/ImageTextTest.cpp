#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "Tasks/ImageText.h"

namespace quorvane {
namespace {

/// A picture with the encodings that a test gives it.
class EncodedImage : public platform::Image {
public:
    [[nodiscard]] int width() const override { return 1; }
    [[nodiscard]] int height() const override { return 1; }
    [[nodiscard]] std::shared_ptr<const Image> half() const override { return nullptr; }
    [[nodiscard]] std::optional<std::string> jpeg(double quality) const override {
        askedQuality = quality;
        return jpegBytes;
    }
    [[nodiscard]] std::optional<std::string> png() const override { return pngBytes; }

    std::optional<std::string> jpegBytes;
    std::optional<std::string> pngBytes;
    mutable std::optional<double> askedQuality;
};

TEST(ImageText, AJPEGIsADataURLOfItsBytesAtTheQualityThatWasAskedFor) {
    EncodedImage image;
    image.jpegBytes = std::string("\xFF\xD8\xFF\xE0", 4);
    image.pngBytes = "not this one";

    EXPECT_EQ(toBase64(image, ImageType::JPEG(0.25)), "data:image/jpeg;base64,/9j/4A==");
    EXPECT_EQ(image.askedQuality, 0.25);
}

TEST(ImageText, APNGIsADataURLOfItsBytes) {
    EncodedImage image;
    image.jpegBytes = "not this one";
    image.pngBytes = std::string("\x89PNG\r\n\x1A\n", 8);

    EXPECT_EQ(toBase64(image, ImageType::PNG()), "data:image/png;base64,iVBORw0KGgo=");
    EXPECT_EQ(image.askedQuality, std::nullopt);
}

TEST(ImageText, AnImageThatCannotBeEncodedInOneWayHasATextInTheOtherOnly) {
    EncodedImage image;
    image.pngBytes = "png";
    EXPECT_EQ(toBase64(image, ImageType::JPEG(0.9)), std::nullopt);
    EXPECT_EQ(toBase64(image, ImageType::PNG()), "data:image/png;base64,cG5n");

    image.pngBytes = std::nullopt;
    image.jpegBytes = "jpeg";
    EXPECT_EQ(toBase64(image, ImageType::JPEG(0.9)), "data:image/jpeg;base64,anBlZw==");
    EXPECT_EQ(toBase64(image, ImageType::PNG()), std::nullopt);
}

} // namespace
} // namespace quorvane
