#pragma once

#include <memory>

#include "Platform/Image.h"

namespace quorvane::tool {

/// A picture of a shop front, drawn pixel by pixel: 1600 by 1200. Throws a `Failure` where this build knows no
/// pictures.
[[nodiscard]] std::shared_ptr<platform::Image> drawnPhoto();

} // namespace quorvane::tool
