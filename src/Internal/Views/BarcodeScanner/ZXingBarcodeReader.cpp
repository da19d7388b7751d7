#include "Internal/Views/BarcodeScanner/ZXingBarcodeReader.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "Internal/Views/BarcodeScanner/FrameBrightness.h"

namespace quorvane::capture {

std::vector<platform::Barcode> ZXingBarcodeReader::read(const platform::VideoFrame& frame,
                                                        const std::optional<Area>& aim) {
    std::vector<platform::Barcode> barcodes;
    try {
        takeBrightness(frame, aim, picture);
        Sightings now = codes.search(picture);
        for (const Sighting& sighting : now) {
            const auto isSame = [&](const Sighting& before) { return before.agreesWith(sighting); };
            if (std::any_of(seen.begin(), seen.end(), isSame)) {
                barcodes.push_back(sighting.barcode);
            }
        }
        seen = std::move(now);
    } catch (const std::exception&) {
        // The recogniser gave up, or there is no memory: a frame without codes.
        seen.clear();
        barcodes.clear();
    }
    return barcodes;
}

} // namespace quorvane::capture
