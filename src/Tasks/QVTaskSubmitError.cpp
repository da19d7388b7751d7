#include "Tasks/QVTaskSubmitError.h"

namespace quorvane {
namespace {

// The articles before "barcode" and "date" are as hosts know them.
std::string messageOf(QVTaskSubmitError::Failure failure) {
    using Failure = QVTaskSubmitError::Failure;
    switch (failure) {
        case Failure::invalidNumberFormat:
            return "Unable to convert to numeric format.";
        case Failure::invalidValue:
            return "Unable to determine value.";
        case Failure::missingBarcode:
            return "An barcode must be provided!";
        case Failure::missingDate:
            return "An date must be provided!";
        case Failure::missingPhoto:
            return "A photo is required for this question.";
        case Failure::missingRating:
            return "A rating is required for this question.";
        case Failure::missingTime:
            return "A time is required for this question.";
        case Failure::missingTaskKey:
            return "A task key is required.";
        case Failure::unknown:
            break;
    }
    return "An unknown error occurred saving this answer.";
}

std::string messageOf(const QVTaskSubmitError::InvalidRange& range) {
    const bool answers = range.what == QVTaskSubmitError::RangeOf::answers;
    const bool characters = range.what == QVTaskSubmitError::RangeOf::characters;
    return std::string(answers ? "Selected answers" : "Answer") + " must be between " + std::to_string(range.min) +
           " and " + std::to_string(range.max) + (characters ? " characters." : ".");
}

} // namespace

QVTaskSubmitError QVTaskSubmitError::INVALID_RANGE_ANSWER(std::int64_t min, std::int64_t max) {
    return QVTaskSubmitError(InvalidRange{RangeOf::answers, min, max});
}

QVTaskSubmitError QVTaskSubmitError::INVALID_RANGE_CHARACTERS(std::int64_t min, std::int64_t max) {
    return QVTaskSubmitError(InvalidRange{RangeOf::characters, min, max});
}

QVTaskSubmitError QVTaskSubmitError::INVALID_RANGE_NUMBER(std::int64_t min, std::int64_t max) {
    return QVTaskSubmitError(InvalidRange{RangeOf::number, min, max});
}

QVTaskSubmitError QVTaskSubmitError::INVALID_NUMBER_FORMAT() {
    return QVTaskSubmitError(Failure::invalidNumberFormat);
}
QVTaskSubmitError QVTaskSubmitError::INVALID_VALUE() {
    return QVTaskSubmitError(Failure::invalidValue);
}
QVTaskSubmitError QVTaskSubmitError::MISSING_BARCODE() {
    return QVTaskSubmitError(Failure::missingBarcode);
}
QVTaskSubmitError QVTaskSubmitError::MISSING_DATE() {
    return QVTaskSubmitError(Failure::missingDate);
}
QVTaskSubmitError QVTaskSubmitError::MISSING_PHOTO() {
    return QVTaskSubmitError(Failure::missingPhoto);
}
QVTaskSubmitError QVTaskSubmitError::MISSING_RATING() {
    return QVTaskSubmitError(Failure::missingRating);
}
QVTaskSubmitError QVTaskSubmitError::MISSING_TIME() {
    return QVTaskSubmitError(Failure::missingTime);
}
QVTaskSubmitError QVTaskSubmitError::MISSING_TASK_KEY() {
    return QVTaskSubmitError(Failure::missingTaskKey);
}
QVTaskSubmitError QVTaskSubmitError::UNKNOWN() {
    return QVTaskSubmitError(Failure::unknown);
}

std::string QVTaskSubmitError::message() const {
    return std::visit([](const auto& failed) { return messageOf(failed); }, value);
}

} // namespace quorvane
