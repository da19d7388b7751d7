#pragma once

#include "Core/Enumerations.h"

namespace quorvane {

/// The level that the host chose; `NONE` when nothing or no level is stored. Safe from any thread.
[[nodiscard]] QVLogLevel storedLogLevel();

} // namespace quorvane
