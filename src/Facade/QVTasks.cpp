#include "Facade/QVTasks.h"

#include "Facade/Gate.h"

namespace quorvane {

void QVTasks::claim(const std::shared_ptr<QVTask>&, const ClaimCallback& callback) {
    callback(unimplementedStatus(), nullptr);
}

void QVTasks::saveResponse(const std::shared_ptr<QVTask>&, const std::shared_ptr<QVQuestion>&,
                           const std::optional<std::vector<std::string>>&, const std::optional<std::string>&,
                           const std::shared_ptr<platform::Image>&, const ResponseCallback& callback) {
    if (isConfigured()) {
        callback(QVStatus::ERROR_UNIMPLEMENTED, nullptr, std::nullopt);
    } else {
        callback(QVStatus::ERROR_PUBLISHABLE_KEY, nullptr, QVTaskResponse::SubmitError::UNKNOWN());
    }
}

std::vector<std::string> QVTasks::getRequirements(const std::shared_ptr<QVTask>&) {
    return {};
}

std::shared_ptr<QVQuestion> QVTasks::nextQuestion(const std::shared_ptr<QVTask>&, const std::string&) {
    return nullptr;
}

} // namespace quorvane
