#include "Cache/Utils.h"

#include <cstddef>
#include <cstdint>

#include "Platform/Digest.h"
#include "Platform/Platform.h"

namespace quorvane::QVCache {

std::string Utils::MD5(std::string_view text) {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (const std::uint8_t byte : platform::current().digest().md5(text)) {
        hex += digits[byte >> 4U];
        hex += digits[byte & 0x0FU];
    }
    return hex;
}

std::string_view Utils::pathExtension(std::string_view path) {
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return {};
    }
    path = path.substr(0, end + 1);
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

} // namespace quorvane::QVCache
