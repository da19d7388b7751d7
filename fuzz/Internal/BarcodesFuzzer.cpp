#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Internal/Views/BarcodeScanner/ZXingBarcodeReader.h"
#include "fuzz/Bytes.h"
#include "fuzz/Require.h"

namespace {

using quorvane::capture::ZXingBarcodeReader;
using quorvane::fuzz::Bytes;
using quorvane::platform::Barcode;
using quorvane::platform::BarcodeType;
using quorvane::platform::VideoFrame;
using Area = quorvane::platform::BarcodeReader::Area;

std::vector<BarcodeType> askedTypes(Bytes& bytes) {
    std::vector<BarcodeType> types;
    const unsigned mask = bytes.next() | static_cast<unsigned>(bytes.next()) << 8U;
    for (unsigned i = 0; i <= static_cast<unsigned>(BarcodeType::upce); ++i) {
        if ((mask >> i & 1U) == 0) {
            types.push_back(static_cast<BarcodeType>(i));
        }
    }
    return types;
}

/// Rows of runs of one brightness, each repeated some times: what codes are made of. The memory ends where the frame
/// does.
std::vector<std::uint8_t> memory(Bytes& bytes, std::size_t size, std::size_t stride) {
    std::vector<std::uint8_t> pixels;
    pixels.reserve(size);
    while (pixels.size() < size) {
        const std::size_t begin = pixels.size();
        const std::size_t module = 1 + bytes.below(8);
        while (pixels.size() < begin + stride) {
            const std::uint8_t run = bytes.next();
            pixels.insert(pixels.end(), module * (1U + run % 8U), run);
        }
        pixels.resize(begin + stride);
        const std::size_t copies = bytes.isEmpty() ? size / stride + 1 : bytes.below(40);
        for (std::size_t i = 0; i < copies && pixels.size() < size; ++i) {
            const std::size_t row = pixels.size();
            pixels.resize(row + stride);
            std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(begin), stride,
                        pixels.begin() + static_cast<std::ptrdiff_t>(row));
        }
    }
    pixels.resize(size);
    pixels.shrink_to_fit();
    return pixels;
}

} // namespace

/// Frames of any size, stride, format and rotation, aimed at anywhere, are read without a fault, and nothing is
/// reported that nobody asked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const std::vector<BarcodeType> types = askedTypes(bytes);
    if (types.empty()) {
        return 0;
    }
    VideoFrame frame;
    frame.format = static_cast<VideoFrame::Format>(bytes.below(8));
    frame.width = bytes.next() * 2 - 1;
    frame.height = bytes.next() - 1;
    frame.rotation = static_cast<int>(bytes.below(5)) * 90;
    frame.planes[0].bytesPerLine =
        static_cast<std::size_t>(std::max(frame.width, 0)) * (1 + bytes.below(4)) + bytes.below(3);
    std::optional<Area> aim;
    if (bytes.flag()) {
        const auto share = [&] { return (bytes.next() - 40) / 160.0; };
        aim = Area{share(), share(), share(), share()};
    }
    const auto rows = static_cast<std::size_t>(std::max(frame.height, 0));
    const std::vector<std::uint8_t> pixels =
        memory(bytes, rows * frame.planes[0].bytesPerLine, std::max<std::size_t>(frame.planes[0].bytesPerLine, 1));
    frame.planes[0].data = pixels.data();

    ZXingBarcodeReader reader(types);
    quorvane::fuzz::require(reader.read(frame, aim).empty());
    for (const Barcode& barcode : reader.read(frame, aim)) {
        quorvane::fuzz::require(std::find(types.begin(), types.end(), barcode.type) != types.end());
    }
    return 0;
}
