#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "JSON/CodingKeys.h"
#include "Models/QVOwners.h"
#include "Tasks/QVAnswer.h"
#include "Tasks/QVKeyedListPointer.h"
#include "Tasks/QVPhotoCaptureOptions.h"
#include "Tasks/QVQuestionType.h"
#include "Tasks/QVScoreInterval.h"
#include "Tasks/QVTaskResponseCount.h"

namespace quorvane {

/// One question of a task. Its bounds are for the answer screens of the host: `checkAnswer` applies them, submitting
/// does not.
class QVQuestion {
public:
    using QuestionType = QVQuestionType;

    bool allowDecimals = false;
    std::string answerOrder;
    std::vector<std::shared_ptr<QVAnswer>> answers;
    std::optional<std::string> clientReference;
    std::optional<std::int64_t> created;
    std::vector<std::string> criticalAnswers;
    /// "dragonID" in JSON, unlike the place's "dragonId".
    std::optional<std::string> dragonId;
    std::optional<bool> hasOther;
    std::optional<std::string> highValueLabel;
    std::vector<std::string> images;
    std::optional<bool> isOptional;
    std::optional<std::string> key;
    std::optional<bool> lastAnswerPositionPinned;
    std::optional<std::string> lowValueLabel;
    std::optional<std::int64_t> maxMultipleAnswers;
    std::optional<std::int64_t> maxScore;
    /// The largest number, or the longest text in characters.
    std::optional<std::int64_t> maxValue;
    std::optional<std::int64_t> minMultipleAnswers;
    /// The smallest number, or the shortest text in characters.
    std::optional<std::int64_t> minValue;
    std::optional<std::int64_t> modified;
    std::optional<bool> mustPickSuggestion;
    /// Steps of a rating scale.
    std::optional<std::int64_t> numStars;
    std::optional<std::string> openTextPlaceholder;
    std::vector<std::string> openTextSuggestions;
    std::optional<std::int64_t> order;
    std::shared_ptr<QVOwners> owners;
    /// The question that leads to this one.
    std::optional<std::string> parentKey;
    std::shared_ptr<QVPhotoCaptureOptions> photoCaptureOptions;
    std::shared_ptr<QVKeyedListPointer> pointers;
    /// The text that is asked.
    std::string question;
    std::shared_ptr<QVTaskResponseCount> responseCount;
    std::vector<std::shared_ptr<QVScoreInterval>> scoreIntervals;
    std::optional<std::string> sentimentText;
    bool showUnitsOnLeft = false;
    std::optional<bool> singleLineResponse;
    std::vector<std::string> thresholdAnswers;
    QuestionType type = QuestionType::undefined;
    std::optional<std::string> unitOfMeasurementLabel;
    std::optional<std::int64_t> version;
    std::optional<std::string> videoId;

    static constexpr auto codingKeys = json::keys(
        json::key("allowDecimals", &QVQuestion::allowDecimals), json::key("answerOrder", &QVQuestion::answerOrder),
        json::key("answers", &QVQuestion::answers), json::key("clientReference", &QVQuestion::clientReference),
        json::key("created", &QVQuestion::created), json::key("criticalAnswers", &QVQuestion::criticalAnswers),
        json::key("dragonID", &QVQuestion::dragonId), json::key("hasOther", &QVQuestion::hasOther),
        json::key("highValueLabel", &QVQuestion::highValueLabel), json::key("images", &QVQuestion::images),
        json::key("isOptional", &QVQuestion::isOptional), json::key("key", &QVQuestion::key),
        json::key("lastAnswerPositionPinned", &QVQuestion::lastAnswerPositionPinned),
        json::key("lowValueLabel", &QVQuestion::lowValueLabel),
        json::key("maxMultipleAnswers", &QVQuestion::maxMultipleAnswers), json::key("maxScore", &QVQuestion::maxScore),
        json::key("maxValue", &QVQuestion::maxValue), json::key("minMultipleAnswers", &QVQuestion::minMultipleAnswers),
        json::key("minValue", &QVQuestion::minValue), json::key("modified", &QVQuestion::modified),
        json::key("mustPickSuggestion", &QVQuestion::mustPickSuggestion), json::key("numStars", &QVQuestion::numStars),
        json::key("openTextPlaceholder", &QVQuestion::openTextPlaceholder),
        json::key("openTextSuggestions", &QVQuestion::openTextSuggestions), json::key("order", &QVQuestion::order),
        json::key("owners", &QVQuestion::owners), json::key("parentKey", &QVQuestion::parentKey),
        json::key("photoCaptureOptions", &QVQuestion::photoCaptureOptions),
        json::key("pointers", &QVQuestion::pointers), json::key("question", &QVQuestion::question),
        json::key("responseCount", &QVQuestion::responseCount),
        json::key("scoreIntervals", &QVQuestion::scoreIntervals),
        json::key("sentimentText", &QVQuestion::sentimentText),
        json::key("showUnitsOnLeft", &QVQuestion::showUnitsOnLeft),
        json::key("singleLineResponse", &QVQuestion::singleLineResponse),
        json::key("thresholdAnswers", &QVQuestion::thresholdAnswers), json::key("type", &QVQuestion::type),
        json::key("unitOfMeasurementLabel", &QVQuestion::unitOfMeasurementLabel),
        json::key("version", &QVQuestion::version), json::key("videoId", &QVQuestion::videoId));
};

} // namespace quorvane
