#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Core/QVStatus.h"
#include "Platform/Image.h"
#include "Platform/Location.h"
#include "Search/QVSearchService.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"

namespace quorvane::tool {

class Session;

// The library's operations, each carried out to its answer.

struct PlacesFound {
    QVStatus status = QVStatus::ERROR_UNKNOWN;
    QVPlaceList places;
};
[[nodiscard]] PlacesFound findPlaces(Session& session, const platform::Coordinate& near, int radius);

struct TasksFound {
    QVStatus status = QVStatus::ERROR_UNKNOWN;
    QVTaskList tasks;
};
[[nodiscard]] TasksFound findTasks(Session& session, const platform::Coordinate& near, int radius);

struct Claimed {
    QVStatus status = QVStatus::ERROR_UNKNOWN;
    std::shared_ptr<QVTask> task;
};
/// With the device at @p here, or nowhere that it knows.
[[nodiscard]] Claimed claim(Session& session, const std::shared_ptr<QVTask>& task,
                            const std::optional<platform::Coordinate>& here);

/// What a user answers to a question.
struct Entry {
    std::optional<std::vector<std::string>> picked;
    std::optional<std::string> text;
    std::shared_ptr<platform::Image> photo;
};

struct Submitted {
    QVStatus status = QVStatus::ERROR_UNKNOWN;
    std::shared_ptr<QVTaskResponse> response;
    std::optional<QVTaskResponse::SubmitError> error;
};
[[nodiscard]] Submitted submit(Session& session, const std::shared_ptr<QVTask>& task,
                               const std::shared_ptr<QVQuestion>& question, const Entry& entry);

/// What is wrong with an answer, as an answer screen finds out before it submits it; none when nothing is.
[[nodiscard]] std::optional<QVTaskResponse::SubmitError> check(const QVTask& task, const QVQuestion& question,
                                                               const Entry& entry);

/// "it is 412 m away and can be claimed within 161 m".
[[nodiscard]] std::string rangeText(const QVTask& task, const platform::Coordinate& here);

} // namespace quorvane::tool
