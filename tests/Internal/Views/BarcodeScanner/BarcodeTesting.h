#pragma once

#include <QImage>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "Platform/BarcodeReader.h"
#include "Platform/VideoFrame.h"

namespace quorvane::testing {

using platform::Barcode;
using platform::BarcodeType;

/// The platform's thirteen types.
[[nodiscard]] const std::vector<BarcodeType>& allBarcodeTypes();

/// A frame that shares the picture's pixels; gray8.
[[nodiscard]] platform::VideoFrame grayFrame(const QImage& picture);

[[nodiscard]] std::unique_ptr<platform::BarcodeReader> barcodeReader(const std::vector<BarcodeType>& types);

/// What a new reader says to the second of two equal frames.
[[nodiscard]] std::vector<Barcode> readTwice(const platform::VideoFrame& frame,
                                             const std::vector<BarcodeType>& types = allBarcodeTypes(),
                                             const std::optional<platform::BarcodeReader::Area>& aim = std::nullopt);
[[nodiscard]] std::vector<Barcode> readTwice(const QImage& picture,
                                             const std::vector<BarcodeType>& types = allBarcodeTypes());

/// What a new reader says first, if it says anything to the first @p count equal frames.
[[nodiscard]] std::vector<Barcode> readWithin(int count, const QImage& picture,
                                              const std::vector<BarcodeType>& types = allBarcodeTypes());

/// Black on white with a quiet zone, drawn by the recogniser's own writer: @p module pixels to a module, @p height
/// pixels high if it is made of bars.
[[nodiscard]] QImage drawnCode(BarcodeType type, const std::string& text, int module = 3, int height = 90);

/// A QR code that holds bytes and names no character set.
[[nodiscard]] QImage codeOfBytes(const std::vector<std::uint8_t>& bytes);

/// On light gray, in the middle but for an offset, turned clockwise.
[[nodiscard]] QImage placed(const QImage& code, double degrees, QSize size = {1280, 720}, QPoint offset = {});

/// With noise of a normal distribution, the same in each run.
[[nodiscard]] QImage noisy(const QImage& picture, double deviation, unsigned seed = 1);

/// A text for each type, as it is delivered.
struct Sample {
    BarcodeType type;
    std::string text;
};
[[nodiscard]] const std::vector<Sample>& sampleCodes();

} // namespace quorvane::testing
