#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Image.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"
#include "Tasks/QVTaskService.h"

namespace quorvane {

/// `Quorvane::Tasks`: claims tasks and answers them. Main thread only. The task that is handed over must be there.
///
/// What the operations do and answer is told by `QVTaskService`.
class QVTasks {
public:
    using ClaimCallback = QVTaskService::ClaimCompletion;
    using ResponseCallback = QVTaskService::SubmitCompletion;

    QVTasks() = delete;

    static void claim(const std::shared_ptr<QVTask>& task, const ClaimCallback& callback);

    /// @p answers are the keys of the picked choices, @p answer what was typed, picked or scanned.
    static void saveResponse(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVQuestion>& question,
                             const std::optional<std::vector<std::string>>& answers,
                             const std::optional<std::string>& answer, const std::shared_ptr<platform::Image>& image,
                             const ResponseCallback& callback);

    /// What the task asks of the user, in sentences.
    [[nodiscard]] static std::vector<std::string> getRequirements(const std::shared_ptr<QVTask>& task);

    /// The question whose parent has the key @p key; none when no key is configured.
    [[nodiscard]] static std::shared_ptr<QVQuestion> nextQuestion(const std::shared_ptr<QVTask>& task,
                                                                  const std::string& key);
};

} // namespace quorvane
