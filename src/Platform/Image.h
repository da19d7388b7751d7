#pragma once

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
};

} // namespace quorvane::platform
