#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Tasks/QVQuestion.h"
#include "Tasks/QVTask.h"
#include "Tasks/QVTaskSubmitError.h"

namespace quorvane {

/// What a user entered on an answer screen.
struct AnswerInput {
    /// The keys of the picked choices.
    std::vector<std::string> picked;
    /// What was typed, rated or scanned, as text; blank counts as nothing.
    std::string text;
    bool hasPhoto = false;
};

/// Checks an answer against its question before it is submitted: the error to show, or none. For answer screens; the
/// library's own submit operation does not call it, and checks less. Any thread.
///
/// In this order:
/// - A task without a key: `MISSING_TASK_KEY`. A required photo that is missing: `MISSING_PHOTO`, for an optional
///   question too. After that, nothing entered for an optional question is right.
/// - A date, time, barcode or rating must be there (`MISSING_DATE`, `MISSING_TIME`, `MISSING_BARCODE`,
///   `MISSING_RATING`). A rating is a whole number (`INVALID_NUMBER_FORMAT`) from 1 to the number of stars
///   (`INVALID_RANGE_NUMBER`).
/// - A number must be there (`INVALID_VALUE`), parse, with decimals only where the question allows them
///   (`INVALID_NUMBER_FORMAT`), and lie between the question's bounds (`INVALID_RANGE_NUMBER`).
/// - A text must be there (`INVALID_VALUE`), be as long, in Unicode characters, as the bounds say
///   (`INVALID_RANGE_CHARACTERS`), and be one of the suggestions where it must be (`INVALID_VALUE`).
/// - Picked choices must be keys of the question's choices (`INVALID_VALUE`) and as many as asked for
///   (`INVALID_RANGE_ANSWER`): one for a single answer, else between the bounds, at least one. A key picked twice
///   counts once. Where a question has an "other" choice, a text counts as one more pick.
/// - A question of no known type: `UNKNOWN`.
///
/// Where one bound is missing, the error carries 0 below or the largest integer above. A number without a lower bound
/// may be negative.
[[nodiscard]] std::optional<QVTaskSubmitError> checkAnswer(const QVTask& task, const QVQuestion& question,
                                                           const AnswerInput& input);

} // namespace quorvane
