#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Core/Enumerations.h"
#include "Platform/Accelerometer.h"
#include "Platform/Location.h"

namespace quorvane::tool {

// The values of options as they are typed. Each throws a `WrongForm` that names the option and what it takes.

/// "46.05,14.51": degrees north and east.
[[nodiscard]] platform::Coordinate coordinateIn(const std::string& option, const std::string& text);

/// "0,-1": gravity along the screen to the right and to the top, in units of standard gravity from -16 to 16.
[[nodiscard]] platform::Acceleration accelerationIn(const std::string& option, const std::string& text);

/// A whole number of metres from 0 on.
[[nodiscard]] int metresIn(const std::string& option, const std::string& text);

/// A whole number from 1 on.
[[nodiscard]] std::size_t ordinalIn(const std::string& option, const std::string& text);

/// "a1,a2": one text or more between commas, none of them empty.
[[nodiscard]] std::vector<std::string> listIn(const std::string& option, const std::string& text);

/// 1 to 65535.
[[nodiscard]] std::uint16_t portIn(const std::string& option, const std::string& text);

/// "none", "error", "warning", "info" or "debug".
[[nodiscard]] QVLogLevel logLevelIn(const std::string& option, const std::string& text);

/// Any text but an empty one.
[[nodiscard]] std::string textIn(const std::string& option, const std::string& text);

} // namespace quorvane::tool
