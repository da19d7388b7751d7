#include "Tasks/QVTaskService.h"

#include <algorithm>

#include "API/QuorvaneAPI.h"
#include "Core/Configured.h"
#include "JSON/NumberText.h"
#include "Platform/LocationManager.h"
#include "Platform/Platform.h"
#include "Tasks/ClaimRule.h"
#include "Tasks/ImageText.h"
#include "Tasks/Strings.h"
#include "Tasks/TaskEndpoints.h"
#include "Tasks/TaskQuestions.h"

namespace quorvane {
namespace {

constexpr double photoQuality = 0.9;

/// Half the photo as a data URL; none when no picture comes out of it.
std::optional<std::string> photoText(const platform::Image& image) {
    const std::shared_ptr<const platform::Image> half = image.half();
    return half ? toBase64(*half, ImageType::JPEG(photoQuality)) : std::nullopt;
}

} // namespace

void QVTaskService::claim(const QVTask& task, const ClaimCompletion& completion) {
    if (!isConfigured()) {
        completion(QVStatus::ERROR_PUBLISHABLE_KEY, nullptr);
        return;
    }
    const std::optional<platform::Location> device = platform::current().locationManagers().make()->location();
    if (!device) {
        completion(QVStatus::ERROR_LOCATION, nullptr);
        return;
    }
    if (!ClaimRule::allows(device->distance(getTaskLocation(task)), task.claimDistanceOverride)) {
        completion(QVStatus::ERROR_TASK_OUT_OF_RANGE, nullptr);
        return;
    }
    QuorvaneAPI::shared().request(ClaimTaskEndpoint(task),
                                  [completion](QVStatus status, const auto&, const std::shared_ptr<QVTask>& claimed) {
                                      completion(status, claimed);
                                  });
}

void QVTaskService::submit(const QVTask& task, const std::shared_ptr<QVQuestion>& question,
                           const std::optional<std::vector<std::string>>& answers,
                           const std::optional<std::string>& answer, const std::shared_ptr<platform::Image>& image,
                           const SubmitCompletion& completion) {
    using Error = QVTaskResponse::SubmitError;
    if (!isConfigured()) {
        completion(QVStatus::ERROR_PUBLISHABLE_KEY, nullptr, Error::UNKNOWN());
        return;
    }
    if (!task.key) {
        completion(QVStatus::ERROR_BAD_REQUEST, nullptr, Error::MISSING_TASK_KEY());
        return;
    }
    if (question && needsPhoto(*question) && !image) {
        completion(QVStatus::ERROR_QUESTION_SUBMIT_FAILURE, nullptr, Error::MISSING_PHOTO());
        return;
    }

    QVTaskResponse response;
    response.answers = answers;
    response.owners = task.owners;
    response.question = question;
    response.taskKey = *task.key;
    response.userAnswer = answer;
    if (image) {
        response.base64 = photoText(*image);
    }
    QuorvaneAPI::shared().request(
        CreateTaskResponseEndpoint(response),
        [completion](QVStatus status, const auto&, const std::shared_ptr<QVTaskResponse>& stored) {
            if (status == QVStatus::SUCCESS) {
                completion(status, stored, std::nullopt);
            } else {
                completion(QVStatus::ERROR_TASK_RESPONSE_SUBMIT_FAILURE, nullptr, Error::UNKNOWN());
            }
        });
}

std::vector<std::string> QVTaskService::getRequirements(const QVTask& task) const {
    std::vector<std::string> requirements;
    if (!isConfigured()) {
        return requirements;
    }
    if (!task.questions.empty()) {
        requirements.push_back(Strings::questionRequirement(task.questions.size()));
    }
    const auto photos =
        std::ranges::count_if(task.questions, [](const auto& question) { return question && needsPhoto(*question); });
    if (photos > 0) {
        requirements.push_back(Strings::photoRequirement(static_cast<std::size_t>(photos)));
    }
    if (task.claimDistanceOverride) {
        requirements.push_back("I will have to accept and complete the task while within " +
                               json::textOf(*task.claimDistanceOverride) + " mile(s) of the location");
    }
    requirements.insert(requirements.end(), task.taskRequirements.begin(), task.taskRequirements.end());
    return requirements;
}

platform::Location QVTaskService::getTaskLocation(const QVTask& task) const {
    platform::Location location;
    if (task.location && task.location->coordinate && task.location->coordinate->isValid()) {
        location.coordinate = *task.location->coordinate;
    }
    return location;
}

std::shared_ptr<QVQuestion> QVTaskService::nextQuestion(const QVTask& task, const std::string& key) const {
    const auto found = std::ranges::find_if(
        task.questions, [&](const auto& question) { return question && question->parentKey == key; });
    return found == task.questions.end() ? nullptr : *found;
}

} // namespace quorvane
