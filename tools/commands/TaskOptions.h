#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Tasks/QVTask.h"
#include "tools/Operations.h"
#include "tools/Options.h"

namespace CLI {
class App;
}

namespace quorvane::tool {

/// What the commands about one task are told on the command line.
struct TaskOptions {
    std::string file;
    /// Which of the file's tasks, from 1.
    std::optional<std::size_t> number;
    std::optional<platform::Coordinate> at;
    std::string question;
    std::optional<std::vector<std::string>> answers;
    std::optional<std::string> answer;
    std::optional<std::string> photo;

    /// The task in the file. Throws a `Failure`.
    [[nodiscard]] std::shared_ptr<QVTask> task() const;
    /// The question of the task in the file. Throws a `Failure`.
    [[nodiscard]] std::shared_ptr<QVQuestion> questionOf(const QVTask& task) const;
    /// The answer, with its photo read. Throws a `Failure`.
    [[nodiscard]] Entry entry() const;
};

/// What of it a command takes beside the task itself.
enum class TaskInput { task, place, question, answer };

/// Carries out a command about a task.
using TaskAction = AnyCodable::Dictionary (*)(const TaskOptions&, const GlobalOptions&, Terminal&);

/// Adds a command about a task to @p tasks.
void addTaskCommand(CLI::App& tasks, Command& chosen, const std::string& name, const std::string& description,
                    TaskInput input, TaskAction action);

} // namespace quorvane::tool
