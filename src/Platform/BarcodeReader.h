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
    /// With whatever last character.
    code39,
    /// Code 39 whose last character checks the others. Told from `code39` only where it is asked for; the text has the
    /// check character.
    code39Mod43,
    code93,
    dataMatrix,
    /// Of six digits or more.
    interleaved2of5,
    /// Interleaved 2 of 5 with fourteen digits of which the last checks the others. Told from `interleaved2of5` only
    /// where it is asked for.
    itf14,
    qr,
    ean8,
    /// UPC-A too, with a leading zero.
    ean13,
    pdf417,
    /// Its eight digits, not the twelve that they stand for.
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

    /// The barcodes that this frame and the one before it both show: same type, same content. Those with a text come
    /// first, and of those the nearest to the middle. Of codes of bars there may be only one even where the frame shows
    /// more. @p aim: where the user aims; the whole picture if none. An empty or broken frame shows nothing.
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
