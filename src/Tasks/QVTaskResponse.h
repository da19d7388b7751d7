#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Models/QVOwners.h"
#include "Tasks/QVQuestion.h"
#include "Tasks/QVTaskState.h"
#include "Tasks/QVTaskSubmitError.h"

namespace quorvane {

/// A user's answer to one question of a task, as sent to the service and as returned by it.
class QVTaskResponse {
public:
    using State = QVTaskState;
    using SubmitError = QVTaskSubmitError;

    /// The keys of the picked choices.
    std::optional<std::vector<std::string>> answers;
    /// The photo as a data URL.
    std::optional<std::string> base64;
    std::optional<std::int64_t> created;
    std::optional<std::string> key;
    std::optional<std::int64_t> modified;
    /// The key of the next question, as the service decided.
    std::optional<std::string> nextKey;
    std::shared_ptr<QVOwners> owners;
    /// Where the service keeps the photo.
    std::optional<std::string> photoUrl;
    std::shared_ptr<QVQuestion> question;
    std::optional<std::int64_t> score;
    State state = State::continue_;
    std::string taskKey;
    /// What was typed, picked or scanned, as text.
    std::optional<std::string> userAnswer;
    std::optional<std::int64_t> version;

    static constexpr auto codingKeys = json::keys(
        json::key("answers", &QVTaskResponse::answers), json::key("base64", &QVTaskResponse::base64),
        json::key("created", &QVTaskResponse::created), json::key("key", &QVTaskResponse::key),
        json::key("modified", &QVTaskResponse::modified), json::key("nextKey", &QVTaskResponse::nextKey),
        json::key("owners", &QVTaskResponse::owners), json::key("photoUrl", &QVTaskResponse::photoUrl),
        json::key("question", &QVTaskResponse::question), json::key("score", &QVTaskResponse::score),
        json::key("state", &QVTaskResponse::state), json::key("taskKey", &QVTaskResponse::taskKey),
        json::key("userAnswer", &QVTaskResponse::userAnswer), json::key("version", &QVTaskResponse::version));
};

} // namespace quorvane
