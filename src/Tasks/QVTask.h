#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Models/QVOwners.h"
#include "Places/QVAddress.h"
#include "Tasks/QVEstimatedTime.h"
#include "Tasks/QVQuestion.h"
#include "Tasks/QVReward.h"
#include "Tasks/QVTaskState.h"

namespace quorvane {

/// A questionnaire that a user claims and answers at a place. Time stamps are as the service sends them.
class QVTask {
public:
    using State = QVTaskState;

    /// Whether the task is reserved for associates.
    bool associatesOnly = false;
    /// Miles; replaces the library's own limit on the distance at which the task can be claimed.
    std::optional<double> claimDistanceOverride;
    std::optional<std::int64_t> created;
    std::optional<std::int64_t> completed;
    std::optional<std::string> description;
    /// Miles from the point of the search, by the service's reckoning.
    double distance = 0;
    std::optional<std::int64_t> due;
    std::optional<std::string> key;
    /// Where the task is to be done.
    std::shared_ptr<QVAddress> location;
    /// The key of the task's place.
    std::string locationKey;
    /// The URL of an image.
    std::optional<std::string> logo;
    std::optional<std::int64_t> modified;
    /// The key of the question to show next.
    std::optional<std::string> nextQuestion;
    std::shared_ptr<QVOwners> owners;
    std::vector<std::shared_ptr<QVQuestion>> questions;
    std::vector<std::shared_ptr<QVReward>> rewards;
    State state = State::unknown;
    /// Sentences.
    std::vector<std::string> taskRequirements;
    std::shared_ptr<QVEstimatedTime> time;
    std::optional<std::string> title;
    std::optional<std::int64_t> version;

    /// "2.00 miles away". With @p metric the distance is converted to kilometres, and the unit word stays "miles":
    /// hosts show this text as it is.
    [[nodiscard]] std::string distanceText(bool metric) const;

    /// Two tasks of one campaign at one place are the same task, whatever their keys. Without owners a task has no
    /// campaign, which equals no campaign.
    friend bool operator==(const QVTask& a, const QVTask& b);

    static constexpr auto codingKeys = json::keys(
        json::key("associatesOnly", &QVTask::associatesOnly),
        json::key("claimDistanceOverride", &QVTask::claimDistanceOverride), json::key("created", &QVTask::created),
        json::key("completed", &QVTask::completed), json::key("description", &QVTask::description),
        json::key("distance", &QVTask::distance), json::key("due", &QVTask::due), json::key("key", &QVTask::key),
        json::key("location", &QVTask::location), json::key("locationKey", &QVTask::locationKey),
        json::key("logo", &QVTask::logo), json::key("modified", &QVTask::modified),
        json::key("nextQuestion", &QVTask::nextQuestion), json::key("owners", &QVTask::owners),
        json::key("questions", &QVTask::questions), json::key("rewards", &QVTask::rewards),
        json::key("state", &QVTask::state), json::key("taskRequirements", &QVTask::taskRequirements),
        json::key("time", &QVTask::time), json::key("title", &QVTask::title), json::key("version", &QVTask::version));
};

} // namespace quorvane
