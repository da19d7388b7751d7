#pragma once

#include <fstream>
#include <string>

#include "tools/Pictures.h"

namespace quorvane::tool {

/// Makes a JPEG file of one colour, in a build that knows pictures; its path.
inline std::string drawnFile(const std::string& path, int width, int height) {
    const auto picture = pictureOf(width, height, std::string(std::size_t{3} * width * height, '\x80'));
    std::ofstream(path, std::ios::binary) << picture->jpeg(0.9).value_or("");
    return path;
}

} // namespace quorvane::tool
