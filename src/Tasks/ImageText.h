#pragma once

#include <optional>
#include <string>

#include "Platform/Image.h"

namespace quorvane {

/// How an image becomes a text.
class ImageType {
public:
    /// @p quality from 0 to 1.
    static ImageType JPEG(double quality) { return ImageType(quality); }
    static ImageType PNG() { return ImageType(std::nullopt); }

    /// None for PNG.
    std::optional<double> quality;

private:
    explicit ImageType(std::optional<double> theQuality) : quality(theQuality) {}
};

/// The image as a data URL ("data:image/jpeg;base64,..."); none when the platform cannot encode it.
[[nodiscard]] std::optional<std::string> toBase64(const platform::Image& image, ImageType type);

} // namespace quorvane
