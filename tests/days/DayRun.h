#pragma once

#include <string>

#include "testing/DecisionLog.h"

namespace quorvane::days {

/// Lives through the day `FOLDER/NAME.day` on a simulated phone: the user starts an application with the library in it,
/// which signs in and begins to track, puts the phone away, and goes where the track goes. Answers the decision log.
[[nodiscard]] std::string runDay(const std::string& folder, const std::string& name,
                                 quorvane::testing::DecisionLog::Format format);

} // namespace quorvane::days
