#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "JSON/CodingKeys.h"
#include "Models/QVOwners.h"
#include "Tasks/QVPhotoCaptureOptions.h"

namespace quorvane {

/// One answer choice of a question.
class QVAnswer {
public:
    std::int64_t answerOrder = 0;
    std::string clientReference;
    std::optional<std::int64_t> created;
    std::string displayText;
    std::string displayTextKey;
    std::optional<std::string> key;
    std::optional<std::int64_t> modified;
    /// The question to go to when this choice is picked.
    std::string nextQuestionKey;
    std::shared_ptr<QVOwners> owners;
    std::shared_ptr<QVPhotoCaptureOptions> photoCaptureOptions;
    std::string questionKey;
    std::optional<std::int64_t> score;
    std::optional<std::int64_t> version;

    static constexpr auto codingKeys = json::keys(
        json::key("answerOrder", &QVAnswer::answerOrder), json::key("clientReference", &QVAnswer::clientReference),
        json::key("created", &QVAnswer::created), json::key("displayText", &QVAnswer::displayText),
        json::key("displayTextKey", &QVAnswer::displayTextKey), json::key("key", &QVAnswer::key),
        json::key("modified", &QVAnswer::modified), json::key("nextQuestionKey", &QVAnswer::nextQuestionKey),
        json::key("owners", &QVAnswer::owners), json::key("photoCaptureOptions", &QVAnswer::photoCaptureOptions),
        json::key("questionKey", &QVAnswer::questionKey), json::key("score", &QVAnswer::score),
        json::key("version", &QVAnswer::version));
};

} // namespace quorvane
