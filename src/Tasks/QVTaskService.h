#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Core/QVStatus.h"
#include "Core/SharedService.h"
#include "Platform/Image.h"
#include "Platform/Location.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"

namespace quorvane {

/// Claims tasks, submits their answers and reads what they ask. Stateless apart from its delegate; main thread only.
class QVTaskService : public SharedService<QVTaskService> {
public:
    using ClaimCompletion = std::function<void(QVStatus, const std::shared_ptr<QVTask>&)>;
    using SubmitCompletion = std::function<void(QVStatus, const std::shared_ptr<QVTaskResponse>&,
                                                const std::optional<QVTaskResponse::SubmitError>&)>;

    /// Takes on a task where the device is. Answers once: before it returns, and without a request,
    /// `ERROR_PUBLISHABLE_KEY` without a key, `ERROR_LOCATION` while the device's location is not known, and
    /// `ERROR_TASK_OUT_OF_RANGE` by the `ClaimRule`; else the service's status and its task, on the main queue.
    void claim(const QVTask& task, const ClaimCompletion& completion);

    /// Sends the answer to one question: the keys of the picked choices, what was typed, picked or scanned, and a
    /// photo, of which half the width and height is sent as JPEG. Answers once: before it returns, and without a
    /// request, `ERROR_PUBLISHABLE_KEY` with `UNKNOWN` without a key, `ERROR_BAD_REQUEST` with `MISSING_TASK_KEY`,
    /// `ERROR_QUESTION_SUBMIT_FAILURE` with `MISSING_PHOTO`, in this order; else, on the main queue, `SUCCESS` with the
    /// service's response, or `ERROR_TASK_RESPONSE_SUBMIT_FAILURE` with `UNKNOWN` for any failure.
    ///
    /// Only the question's own photo options count, not those of the picked choices. See `checkAnswer` for the checks
    /// that an answer screen makes before.
    void submit(const QVTask& task, const std::shared_ptr<QVQuestion>& question,
                const std::optional<std::vector<std::string>>& answers, const std::optional<std::string>& answer,
                const std::shared_ptr<platform::Image>& image, const SubmitCompletion& completion);

    /// What the task asks of the user, in sentences; nothing without a key. The sentence about the distance has no full
    /// stop, unlike the others.
    [[nodiscard]] std::vector<std::string> getRequirements(const QVTask& task) const;

    /// Where the task is to be done; latitude and longitude 0 when it does not say, or says an invalid coordinate.
    [[nodiscard]] platform::Location getTaskLocation(const QVTask& task) const;

    /// The first question whose parent is the question with the key @p key; null when there is none.
    [[nodiscard]] std::shared_ptr<QVQuestion> nextQuestion(const QVTask& task, const std::string& key) const;
};

} // namespace quorvane
