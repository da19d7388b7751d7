#pragma once

#include "Core/Configured.h"
#include "Core/QVStatus.h"

namespace quorvane {

/// What an operation answers that is not provided: that no key is configured, or else `ERROR_UNIMPLEMENTED`.
[[nodiscard]] inline QVStatus unimplementedStatus() {
    return isConfigured() ? QVStatus::ERROR_UNIMPLEMENTED : QVStatus::ERROR_PUBLISHABLE_KEY;
}

} // namespace quorvane
