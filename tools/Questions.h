#pragma once

#include <cstddef>
#include <string>

#include "JSON/AnyCodable.h"
#include "Tasks/QVTask.h"

namespace quorvane::tool {

class Terminal;

// Tasks and their questions as one reads them.

/// The task's title, or what else it is called.
[[nodiscard]] std::string titleOf(const QVTask& task);

/// What the answer has to be, in words: "number from 0 to 20", "1 to 3 choices, photo".
[[nodiscard]] std::string answerText(const QVQuestion& question);

/// "q1: Is the shop open?"; the key alone when the task has no such question.
[[nodiscard]] std::string questionText(const QVTask& task, const std::string& key);

/// The key, the text, what the answer has to be, and below it the choices by their keys.
void printQuestion(const QVQuestion& question, Terminal& terminal, std::size_t indent = 2);

/// The question by its own keys.
[[nodiscard]] AnyCodable documentOf(const QVQuestion& question);

} // namespace quorvane::tool
