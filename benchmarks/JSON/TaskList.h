#pragma once

#include <string>

#include "API/JSONResponseList.h"
#include "Tasks/QVTask.h"

namespace quorvane {

using TaskList = JSONResponseList<QVTask>;

/// A list answer of @p count tasks as a service would send it: eight questions each, with choices, texts, an address
/// and a reward. The same text for the same count, made once.
const std::string& taskListText(int count);

} // namespace quorvane
