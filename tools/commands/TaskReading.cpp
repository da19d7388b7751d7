#include "Facade/Quorvane.h"
#include "tools/Questions.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/commands/TaskActions.h"

namespace quorvane::tool {

AnyCodable::Dictionary showRequirements(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const std::shared_ptr<QVTask> task = options.task();
    Session session(global, terminal);
    session.configure();
    const std::vector<std::string> requirements = Quorvane::Tasks::getRequirements(task);
    terminal.line(counted(requirements.size(), "requirement") + " of " + titleOf(*task));
    AnyCodable::List list;
    for (const std::string& requirement : requirements) {
        terminal.line("  " + printable(requirement));
        list.emplace_back(requirement);
    }
    return {{"requirements", list}};
}

AnyCodable::Dictionary showQuestions(const TaskOptions& options, const GlobalOptions& /*global*/, Terminal& terminal) {
    const std::shared_ptr<QVTask> task = options.task();
    terminal.line(counted(task->questions.size(), "question") + " of " + titleOf(*task));
    AnyCodable::List list;
    for (const auto& question : task->questions) {
        if (question) {
            printQuestion(*question, terminal);
            list.push_back(documentOf(*question));
        }
    }
    return {{"questions", list}};
}

AnyCodable::Dictionary showNext(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const std::shared_ptr<QVTask> task = options.task();
    const std::shared_ptr<QVQuestion> question = options.questionOf(*task);
    Session session(global, terminal);
    session.configure();
    const std::shared_ptr<QVQuestion> next = Quorvane::Tasks::nextQuestion(task, options.question);
    if (!next) {
        terminal.line("no question has " + printable(options.question) + " as its parent");
        return {};
    }
    terminal.line("next after " + printable(options.question));
    printQuestion(*next, terminal);
    return {{"question", documentOf(*next)}};
}

} // namespace quorvane::tool
