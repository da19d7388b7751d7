#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Core/QVStatus.h"
#include "Platform/Image.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"

namespace quorvane {

/// `Quorvane::Tasks`: claims tasks and answers them. Main thread only.
///
/// In this version the operations check the key and answer `ERROR_UNIMPLEMENTED` at once, or an empty result.
class QVTasks {
public:
    using ClaimCallback = std::function<void(QVStatus, const std::shared_ptr<QVTask>&)>;
    using ResponseCallback = std::function<void(QVStatus, const std::shared_ptr<QVTaskResponse>&,
                                                const std::optional<QVTaskResponse::SubmitError>&)>;

    QVTasks() = delete;

    static void claim(const std::shared_ptr<QVTask>& task, const ClaimCallback& callback);

    /// @p answers are the keys of the picked choices, @p answer what was typed, picked or scanned.
    static void saveResponse(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVQuestion>& question,
                             const std::optional<std::vector<std::string>>& answers,
                             const std::optional<std::string>& answer, const std::shared_ptr<platform::Image>& image,
                             const ResponseCallback& callback);

    /// What the task asks of the user, in sentences.
    [[nodiscard]] static std::vector<std::string> getRequirements(const std::shared_ptr<QVTask>& task);

    /// The question whose parent has the key @p key.
    [[nodiscard]] static std::shared_ptr<QVQuestion> nextQuestion(const std::shared_ptr<QVTask>& task,
                                                                  const std::string& key);
};

} // namespace quorvane
