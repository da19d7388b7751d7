#pragma once

#define ZX_USE_UTF8

#include <optional>
#include <string>
#include <vector>

#include <ZXing/BarcodeFormat.h>
#include <ZXing/Result.h>

#include "Platform/BarcodeReader.h"

namespace quorvane::capture {

/// The types that a reader is asked for, in the recogniser's terms.
class AskedTypes {
public:
    explicit AskedTypes(const std::vector<platform::BarcodeType>& types);

    /// Codes of bars.
    [[nodiscard]] ZXing::BarcodeFormats bars() const;
    /// Those of them that check themselves, or whose ends cannot stand in their middle; not Interleaved 2 of 5.
    [[nodiscard]] ZXing::BarcodeFormats sureBars() const;
    [[nodiscard]] ZXing::BarcodeFormats matrices() const;

    /// What a result is called; none when nobody asked for it.
    [[nodiscard]] std::optional<platform::BarcodeType> typeOf(const ZXing::Result& result) const;

private:
    [[nodiscard]] bool asksFor(platform::BarcodeType type) const;

    std::vector<platform::BarcodeType> asked;
    ZXing::BarcodeFormats formats;
};

/// As the code holds it, in UTF-8; none where it says that it holds bytes, or where its bytes are text in no character
/// set that a code without a declared one is written in.
[[nodiscard]] std::optional<std::string> textOf(const ZXing::Result& result);

} // namespace quorvane::capture
