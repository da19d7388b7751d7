#pragma once

#include "Tasks/QVQuestion.h"
#include "tools/Operations.h"

namespace quorvane::tool {

/// An answer that fits the question, but for its photo.
[[nodiscard]] Entry fittingAnswer(const QVQuestion& question);

/// What a user may enter first, and what does not fit.
[[nodiscard]] Entry wrongAnswer(const QVQuestion& question);

} // namespace quorvane::tool
