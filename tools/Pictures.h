#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Platform/Image.h"

namespace quorvane::tool {

/// Whether this build knows pictures; without Qt it knows none, and the functions below throw.
[[nodiscard]] bool knowsPictures();

/// The picture in a file. Throws a `Failure`.
[[nodiscard]] std::shared_ptr<platform::Image> pictureIn(const std::string& path);

/// A picture of rows of red, green and blue bytes. Throws a `Failure`.
[[nodiscard]] std::shared_ptr<platform::Image> pictureOf(int width, int height, std::string_view pixels);

} // namespace quorvane::tool
