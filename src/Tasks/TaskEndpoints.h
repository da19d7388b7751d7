#pragma once

#include "API/Endpoint.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"

namespace quorvane {

/// Claims a task (POST "/tasks", the task as the body).
struct ClaimTaskEndpoint : Endpoint<QVTask> {
    explicit ClaimTaskEndpoint(const QVTask& task);
};

/// Submits an answer (POST "/tasks/{taskKey}/responses", the response as the body). The key stays one component of the
/// path whatever characters it has.
struct CreateTaskResponseEndpoint : Endpoint<QVTaskResponse> {
    explicit CreateTaskResponseEndpoint(const QVTaskResponse& taskResponse);
};

} // namespace quorvane
