#include "Platform/Qt/PictureEnd.h"

#include <cstddef>

namespace quorvane::platform::qt {
namespace {

// The second byte of the markers of JPEG, which all begin with FF.
constexpr std::size_t stuffed = 0x00;
constexpr std::size_t temporary = 0x01;
constexpr std::size_t firstRestart = 0xD0;
constexpr std::size_t startOfPicture = 0xD8;
constexpr std::size_t endOfPicture = 0xD9;
constexpr std::size_t fill = 0xFF;

constexpr std::string_view jpegSignature = "\xFF\xD8\xFF";
constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";

/// A number of @p count bytes, the highest first, in a file that is long enough.
std::size_t numberAt(std::string_view file, std::size_t at, int count) {
    std::size_t number = 0;
    for (int i = 0; i < count; ++i) {
        number = number * 256 + static_cast<unsigned char>(file[at++]);
    }
    return number;
}

bool standsAlone(std::size_t marker) {
    return marker == stuffed || marker == temporary || (marker >= firstRestart && marker <= startOfPicture);
}

bool hasJPEGEnd(std::string_view file) {
    std::size_t at = 2;
    // Compressed data stands between two markers and has no FF that is not followed by 00 or a restart. Other segments
    // tell their length, and what is in them does not count: a preview has an end of its own.
    while ((at = file.find('\xFF', at)) != std::string_view::npos && at + 1 < file.size()) {
        const std::size_t marker = numberAt(file, at + 1, 1);
        if (marker == endOfPicture) {
            return true;
        }
        if (marker == fill) {
            ++at;
        } else if (standsAlone(marker)) {
            at += 2;
        } else if (at + 3 < file.size()) {
            at += 2 + numberAt(file, at + 2, 2);
        } else {
            return false;
        }
    }
    return false;
}

bool hasPNGEnd(std::string_view file) {
    // Length of the data, type, data, checksum.
    constexpr std::size_t around = 12;
    std::size_t at = pngSignature.size();
    while (at + around <= file.size()) {
        const std::size_t size = numberAt(file, at, 4);
        if (file.substr(at + 4, 4) == "IEND") {
            return size + around <= file.size() - at;
        }
        at += around + size;
    }
    return false;
}

} // namespace

bool isCutOff(std::string_view file) {
    return (file.starts_with(jpegSignature) && !hasJPEGEnd(file)) ||
           (file.starts_with(pngSignature) && !hasPNGEnd(file));
}

} // namespace quorvane::platform::qt
