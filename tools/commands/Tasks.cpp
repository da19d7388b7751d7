#include "tools/commands/Tasks.h"

#include <CLI/CLI.hpp>

#include "tools/Failure.h"
#include "tools/commands/TaskActions.h"
#include "tools/commands/TaskOptions.h"

namespace quorvane::tool {

void addTasks(CLI::App& program, Command& chosen) {
    CLI::App* const verb = program.add_subcommand("tasks", "Claim a task, read what it asks, and answer it");
    verb->fallthrough();
    verb->require_subcommand(0, 1);
    const auto add = [&](const char* name, const char* description, TaskInput input, TaskAction action) {
        addTaskCommand(*verb, chosen, name, description, input, action);
    };
    add("claim", "Take a task on, where you are", TaskInput::place, claimTask);
    add("requirements", "What a task asks of you, in sentences", TaskInput::task, showRequirements);
    add("questions", "The questions of a task and their choices", TaskInput::task, showQuestions);
    add("next", "The question whose parent is the one that is named", TaskInput::question, showNext);
    add("check", "Whether an answer fits its question; nothing is sent", TaskInput::answer, checkEntry);
    add("answer", "Send the answer to one question of a claimed task", TaskInput::answer, submitEntry);
    verb->final_callback([&chosen] {
        if (!chosen) {
            throw WrongForm("name what to do with a task: claim, requirements, questions, next, check or answer");
        }
    });
}

} // namespace quorvane::tool
