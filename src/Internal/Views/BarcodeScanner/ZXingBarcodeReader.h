#pragma once

#include <optional>
#include <vector>

#include "Internal/Views/BarcodeScanner/CodeSearch.h"
#include "Internal/Views/BarcodeScanner/GrayPicture.h"
#include "Platform/BarcodeReader.h"

namespace quorvane::capture {

/// Reads barcodes with ZXing-C++.
class ZXingBarcodeReader final : public platform::BarcodeReader {
public:
    explicit ZXingBarcodeReader(const std::vector<platform::BarcodeType>& types) : codes(types) {}

    [[nodiscard]] std::vector<platform::Barcode> read(const platform::VideoFrame& frame,
                                                      const std::optional<Area>& aim) override;

private:
    CodeSearch codes;
    GrayPicture picture;
    /// In the frame before.
    Sightings seen;
};

} // namespace quorvane::capture
