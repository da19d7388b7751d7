#pragma once

#include <cstdint>
#include <memory>

#include "JSON/AnyCodable.h"
#include "Tasks/QVTask.h"

namespace quorvane::tool {

class Stage;

/// What became of a questionnaire.
struct Questionnaire {
    /// False where this build knows no pictures and a photo is asked for.
    bool isCompleted = false;
    std::int64_t score = 0;
    AnyCodable::List answers;
};

/// Answers the questions of a claimed task as the service leads from one to the next: each first wrong, as its check
/// tells, and then right, and submitted. Throws a `Failure` when one is not accepted, or when a type of question was
/// not among them.
[[nodiscard]] Questionnaire answerQuestions(Stage& stage, const std::shared_ptr<QVTask>& task);

} // namespace quorvane::tool
