#pragma once

#include <memory>

#include "JSON/AnyCodable.h"
#include "Platform/Location.h"
#include "Tasks/QVTask.h"

namespace quorvane::tool {

class Stage;

// The way of a task, from the search that finds it to its reward. Each step throws a `Failure` when it fails.

/// The task around a point that asks in the most ways.
[[nodiscard]] std::shared_ptr<QVTask> findTask(Stage& stage, const platform::Coordinate& near);

/// Tries to claim it from too far away, then claims it at its place. Answers the claimed task.
[[nodiscard]] std::shared_ptr<QVTask> claimTask(Stage& stage, const std::shared_ptr<QVTask>& task);

/// Its requirements, and its questions as they follow each other in the task.
AnyCodable::Dictionary readTask(Stage& stage, const std::shared_ptr<QVTask>& task);

/// What the task has earned, as the service tells it now.
AnyCodable::List collectRewards(Stage& stage, const QVTask& task);

} // namespace quorvane::tool
