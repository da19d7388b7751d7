#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "Tasks/QVTask.h"
#include "Tasks/QVTaskResponse.h"

namespace quorvane::sandbox {

/// The key of the question after @p question, empty at the end: where the first of the picked choices, in the order of
/// the question, leads; else the first question whose parent it is; else the one behind it in the list. Never one that
/// was @p answered already.
[[nodiscard]] std::string nextQuestion(const QVTask& task, const QVQuestion& question,
                                       const std::vector<std::string>& picked, const std::set<std::string>& answered);

/// What an answer earns: the scores of the picked choices, and for a number or a rating the score of the first interval
/// that holds it; at most the question's own maximum.
[[nodiscard]] std::int64_t scoreOf(const QVQuestion& question, const QVTaskResponse& response);

/// Gives the rewards of a completed task to @p user: "earned", or "lost" in a random draw, whose outcome is the same
/// each time.
void decideRewards(QVTask& task, const std::string& user);

} // namespace quorvane::sandbox
