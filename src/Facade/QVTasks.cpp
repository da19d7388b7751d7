#include "Facade/QVTasks.h"

#include "Core/Configured.h"
#include "Platform/Precondition.h"

namespace quorvane {
namespace {

/// The task that a host must hand over.
const QVTask& given(const std::shared_ptr<QVTask>& task) {
    QV_PRECONDITION(task != nullptr, "a task must be given");
    return *task;
}

} // namespace

void QVTasks::claim(const std::shared_ptr<QVTask>& task, const ClaimCallback& callback) {
    QVTaskService::shared().claim(given(task), callback);
}

void QVTasks::saveResponse(const std::shared_ptr<QVTask>& task, const std::shared_ptr<QVQuestion>& question,
                           const std::optional<std::vector<std::string>>& answers,
                           const std::optional<std::string>& answer, const std::shared_ptr<platform::Image>& image,
                           const ResponseCallback& callback) {
    QVTaskService::shared().submit(given(task), question, answers, answer, image, callback);
}

std::vector<std::string> QVTasks::getRequirements(const std::shared_ptr<QVTask>& task) {
    return QVTaskService::shared().getRequirements(given(task));
}

std::shared_ptr<QVQuestion> QVTasks::nextQuestion(const std::shared_ptr<QVTask>& task, const std::string& key) {
    const QVTask& asked = given(task);
    return isConfigured() ? QVTaskService::shared().nextQuestion(asked, key) : nullptr;
}

} // namespace quorvane
