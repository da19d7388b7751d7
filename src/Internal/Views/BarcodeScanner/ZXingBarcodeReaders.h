#pragma once

#include <memory>
#include <vector>

#include "Platform/BarcodeReader.h"

namespace quorvane::capture {

/// Makes readers that know all types.
class ZXingBarcodeReaders final : public platform::BarcodeReaders {
public:
    [[nodiscard]] std::unique_ptr<platform::BarcodeReader> make(
        const std::vector<platform::BarcodeType>& types) override;
};

} // namespace quorvane::capture
