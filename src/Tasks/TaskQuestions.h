#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

#include "Tasks/QVTask.h"

namespace quorvane {

/// The question of @p task with this key; null when there is none.
[[nodiscard]] inline std::shared_ptr<QVQuestion> questionOf(const QVTask& task, std::string_view key) {
    const auto found =
        std::ranges::find_if(task.questions, [key](const auto& question) { return question && question->key == key; });
    return found == task.questions.end() ? nullptr : *found;
}

/// Whether an answer to @p question has to come with a photo.
[[nodiscard]] inline bool needsPhoto(const QVQuestion& question) {
    return question.photoCaptureOptions && question.photoCaptureOptions->mustProvidePhoto;
}

} // namespace quorvane
