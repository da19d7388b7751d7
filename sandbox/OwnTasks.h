#pragma once

#include <string>
#include <vector>

#include "sandbox/PlaceStore.h"

namespace quorvane::sandbox {

/// Appends tasks that a program brings, each as the text of a JSON object. Throws a `std::invalid_argument` with a
/// sentence for a text that is no task with a key.
void addOwnTasks(std::vector<StoredTask>& tasks, const std::vector<std::string>& texts);

} // namespace quorvane::sandbox
