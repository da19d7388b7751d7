#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/VideoFrame.h"

namespace quorvane::platform {

/// The kinds of barcode that a platform tells apart.
enum class BarcodeType : std::uint8_t {
    aztec,
    code128,
    /// Without and with a check character.
    code39,
    code39Mod43,
    code93,
    dataMatrix,
    interleaved2of5,
    /// Interleaved 2 of 5 with fourteen digits of which the last is a check digit.
    itf14,
    qr,
    ean8,
    /// UPC-A too, with a leading zero.
    ean13,
    pdf417,
    /// Eight digits.
    upce,
};

/// A barcode that was read.
struct Barcode {
    BarcodeType type = BarcodeType::qr;
    /// As the code holds it, in UTF-8; none when it holds what is no text.
    std::optional<std::string> text;

    friend bool operator==(const Barcode&, const Barcode&) = default;
};

/// Finds barcodes in a stream of pictures. Remembers what it saw in the frame before, so there is one for each stream.
/// Used by one thread at a time, which may be any; never throws.
class BarcodeReader {
public:
    /// A part of the upright picture; all from 0 to 1, from the top left.
    struct Area {
        double x = 0;
        double y = 0;
        double width = 1;
        double height = 1;
    };

    BarcodeReader() = default;
    BarcodeReader(const BarcodeReader&) = delete;
    BarcodeReader& operator=(const BarcodeReader&) = delete;
    virtual ~BarcodeReader() = default;

    /// The barcodes that this frame and the one before it both show, the likeliest first. @p aim: where the user aims;
    /// the whole picture if none.
    [[nodiscard]] virtual std::vector<Barcode> read(const VideoFrame& frame, const std::optional<Area>& aim) = 0;
};

/// Makes readers. Main thread only.
class BarcodeReaders {
public:
    BarcodeReaders() = default;
    BarcodeReaders(const BarcodeReaders&) = delete;
    BarcodeReaders& operator=(const BarcodeReaders&) = delete;
    virtual ~BarcodeReaders() = default;

    /// A reader of @p types only; null when it knows none of them.
    [[nodiscard]] virtual std::unique_ptr<BarcodeReader> make(const std::vector<BarcodeType>& types) = 0;
};

} // namespace quorvane::platform
