#pragma once

#include <string_view>

#include "Core/Enumerations.h"

namespace quorvane {

/// The case's name; "UNKNOWN" for `UNKNOWN` and whatever is no case.
[[nodiscard]] std::string_view nameOf(QVLocationSource source);

/// Whether somebody asked for the location: it was requested, or handed in by the host.
[[nodiscard]] constexpr bool isForced(QVLocationSource source) {
    return source == QVLocationSource::FOREGROUND_LOCATION || source == QVLocationSource::MANUAL_LOCATION;
}

} // namespace quorvane
