#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "Platform/Image.h"

namespace quorvane::platform {

/// Why there is no picture: one sentence for who chose the file, without a full stop.
struct ImageError {
    std::string message;
};

/// Makes pictures of files and pixels. What it makes holds red, green and blue in three bytes a pixel. Any thread; no
/// application object is needed, but for drawings such as SVG, which may hold text: these are refused where there is no
/// `QGuiApplication`. Nothing throws.
class QtImages {
public:
    using Result = std::variant<std::shared_ptr<Image>, ImageError>;

    /// A file that says it has more pixels is refused before any of them is decoded.
    static constexpr std::int64_t mostPixels = 100'000'000;
    static constexpr std::size_t mostFileBytes = std::size_t{512} << 20U;

    /// The picture in a JPEG, PNG, GIF, BMP or other file that Qt's plugins read, recognised by its content, turned
    /// upright as its camera noted, on white where it is transparent; the first one of an animation. A JPEG or PNG file
    /// that was cut off is refused.
    [[nodiscard]] static Result decode(std::string_view file);

    /// The same for a file on disk; the path stands before the sentence.
    [[nodiscard]] static Result read(const std::string& path);

    /// A picture of @p pixels: rows from top to bottom without gaps, each pixel red, green, blue.
    [[nodiscard]] static Result fromPixels(int width, int height, std::string_view pixels);
};

} // namespace quorvane::platform
