#pragma once

#include <string>

#include "Tasks/QVTask.h"
#include "sandbox/PlaceStore.h"
#include "sandbox/TaskStore.h"

namespace quorvane::sandbox {

/// A task as JSON for somebody who has not claimed it: its stored body, its state and its distance in miles.
[[nodiscard]] std::string taskText(const FoundTask& task);

/// The same for the user who has claimed it: "running", with the question that is due, or "completed", with the time
/// and what became of the rewards.
[[nodiscard]] std::string taskText(const FoundTask& task, const Claim& claim);

/// The stored task as a model; without a state and a distance of its own.
[[nodiscard]] QVTask modelOf(const FoundTask& task);

} // namespace quorvane::sandbox
