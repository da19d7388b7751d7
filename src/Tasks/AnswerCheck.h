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
/// - Picked choices must be keys of the question's choices, whatever its type (`INVALID_VALUE`).
/// - A date, time, barcode or rating must be there (`MISSING_DATE`, `MISSING_TIME`, `MISSING_BARCODE`,
///   `MISSING_RATING`). A rating is a whole number (`INVALID_NUMBER_FORMAT`) from 1 to the number of stars
///   (`INVALID_RANGE_NUMBER`).
/// - A number must be there (`INVALID_VALUE`), be written in digits, with a point only where the question allows
///   decimals (`INVALID_NUMBER_FORMAT`), and lie between the question's bounds, compared digit by digit
///   (`INVALID_RANGE_NUMBER`). Without a lower bound it may be negative.
/// - A text must be there (`INVALID_VALUE`), be as long, in Unicode characters, as the bounds say
///   (`INVALID_RANGE_CHARACTERS`), and be one of the suggestions where it must be (`INVALID_VALUE`).
/// - As many choices must be picked as asked for (`INVALID_RANGE_ANSWER`): one for a single answer; for several answers
///   as many as the bounds say, and at least one unless the question itself has a lower bound of 0. A key picked twice
///   counts once. Where a question has an "other" choice, a text counts as one more pick.
/// - A question of no known type: `UNKNOWN`.
///
/// The three errors about a range carry both bounds. One that the question does not have stands there as 0 below, also
/// where nothing picked is the error, or as the largest integer above, which no number exceeds.
[[nodiscard]] std::optional<QVTaskSubmitError> checkAnswer(const QVTask& task, const QVQuestion& question,
                                                           const AnswerInput& input);

} // namespace quorvane
