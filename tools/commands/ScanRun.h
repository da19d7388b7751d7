#pragma once

#include <string>

#include "tools/Options.h"

namespace quorvane::tool {

struct ScanOptions {
    /// A picture or a video; empty: the device's camera.
    std::string file;
    /// Shows the screen to the user.
    bool hasWindow = false;
};

/// Opens the barcode scanner and waits for its code. Throws a `NothingFound` when it found none, and a `Failure` when
/// it could not look for one; in builds without the camera screens that is always so.
[[nodiscard]] std::string scan(const ScanOptions& options, const GlobalOptions& global, Terminal& terminal);

} // namespace quorvane::tool
