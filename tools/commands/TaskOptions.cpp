#include "tools/commands/TaskOptions.h"

#include <CLI/CLI.hpp>

#include "Tasks/TaskQuestions.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/Pictures.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

using Options = std::shared_ptr<TaskOptions>;

void addTask(CLI::App& verb, const Options& options) {
    verb.add_option_function<std::string>(
            "--task", [options](const std::string& text) { options->file = textIn("--task", text); },
            "A file with the task, or with what search tasks or tasks claim printed with --json; - is standard input")
        ->type_name("FILE")
        ->required();
    verb.add_option_function<std::string>(
            "--number", [options](const std::string& text) { options->number = ordinalIn("--number", text); },
            "Which of the tasks in the file, as search tasks counts them (the only one)")
        ->type_name("N");
}

void addAt(CLI::App& verb, const Options& options) {
    verb.add_option_function<std::string>(
            "--at", [options](const std::string& text) { options->at = coordinateIn("--at", text); },
            "Where you are, in degrees (where the device is)")
        ->type_name("LAT,LNG");
}

void addQuestion(CLI::App& verb, const Options& options) {
    verb.add_option_function<std::string>(
            "--question", [options](const std::string& text) { options->question = textIn("--question", text); },
            "The key of a question")
        ->type_name("KEY")
        ->required();
}

void addAnswer(CLI::App& verb, const Options& options) {
    verb.add_option_function<std::string>(
            "--answers", [options](const std::string& text) { options->answers = listIn("--answers", text); },
            "The keys of the picked choices")
        ->type_name("KEY,KEY");
    verb.add_option_function<std::string>(
            "--answer", [options](const std::string& text) { options->answer = text; },
            "What was typed, rated or scanned")
        ->type_name("TEXT");
    verb.add_option_function<std::string>(
            "--photo", [options](const std::string& text) { options->photo = textIn("--photo", text); },
            "A file with a photo")
        ->type_name("PICTURE");
}

} // namespace

std::shared_ptr<QVTask> TaskOptions::task() const {
    const std::vector<std::string> tasks = objectsIn(file, "task", {"key", "questions"});
    const std::string holds = nameOfFile(file) + " holds " + counted(tasks.size(), "task");
    if (!number && tasks.size() > 1) {
        throw Failure(holds + "; choose one with --number");
    }
    const std::size_t chosen = number.value_or(1);
    if (chosen > tasks.size()) {
        throw Failure(holds + "; there is no number " + std::to_string(chosen));
    }
    return modelIn<QVTask>(file, tasks[chosen - 1]);
}

std::shared_ptr<QVQuestion> TaskOptions::questionOf(const QVTask& task) const {
    std::shared_ptr<QVQuestion> found = quorvane::questionOf(task, question);
    if (!found) {
        throw Failure("the task has no question \"" + printable(question) + "\"; tasks questions lists those it has");
    }
    return found;
}

Entry TaskOptions::entry() const {
    return {.picked = answers, .text = answer, .photo = photo ? pictureIn(*photo) : nullptr};
}

void addTaskCommand(CLI::App& tasks, Command& chosen, const std::string& name, const std::string& description,
                    TaskInput input, TaskAction action) {
    const auto options = std::make_shared<TaskOptions>();
    CLI::App* const verb = tasks.add_subcommand(name, description);
    verb->fallthrough();
    addTask(*verb, options);
    if (input == TaskInput::place) {
        addAt(*verb, options);
    }
    if (input == TaskInput::question || input == TaskInput::answer) {
        addQuestion(*verb, options);
    }
    if (input == TaskInput::answer) {
        addAnswer(*verb, options);
    }
    verb->callback([options, action, &chosen] {
        chosen = [options = *options, action](const GlobalOptions& global, Terminal& terminal) {
            return action(options, global, terminal);
        };
    });
}

} // namespace quorvane::tool
