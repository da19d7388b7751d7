#include "Internal/Views/BarcodeScanner/ZXingBarcodeReaders.h"

#include "Internal/Views/BarcodeScanner/ZXingBarcodeReader.h"

namespace quorvane::capture {

std::unique_ptr<platform::BarcodeReader> ZXingBarcodeReaders::make(const std::vector<platform::BarcodeType>& types) {
    return types.empty() ? nullptr : std::make_unique<ZXingBarcodeReader>(types);
}

} // namespace quorvane::capture
