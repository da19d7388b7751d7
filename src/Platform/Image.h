#pragma once

#include <memory>
#include <optional>
#include <string>

namespace quorvane::platform {

/// A decoded picture, immutable and safe from any thread.
class Image {
public:
    Image() = default;
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    virtual ~Image() = default;

    /// Pixels.
    [[nodiscard]] virtual int width() const = 0;
    [[nodiscard]] virtual int height() const = 0;

    /// The picture at half its width and half its height, rounded down to at least one pixel each; null when none can
    /// be made. A new pixel is the average of those that it stands for.
    [[nodiscard]] virtual std::shared_ptr<const Image> half() const = 0;

    /// The picture as a JPEG file; @p quality from 0 to 1, another one counts as the nearest. None when it cannot be
    /// encoded: JPEG tells no length above 65,535.
    [[nodiscard]] virtual std::optional<std::string> jpeg(double quality) const = 0;

    /// The picture as a PNG file. None when it cannot be encoded.
    [[nodiscard]] virtual std::optional<std::string> png() const = 0;
};

} // namespace quorvane::platform
