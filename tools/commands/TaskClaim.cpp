#include "JSON/JSON.h"
#include "JSON/RawValues.h"
#include "tools/Failure.h"
#include "tools/Questions.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/commands/TaskActions.h"

namespace quorvane::tool {
namespace {

void requireClaimed(QVStatus status, const QVTask& task, const TaskOptions& options, const Session& session) {
    const std::string sentence(sentenceFor(status));
    if (status == QVStatus::ERROR_LOCATION && !options.at) {
        throw Failure(status, "the device does not tell where it is; name where you are with --at");
    }
    if (status == QVStatus::ERROR_TASK_OUT_OF_RANGE && options.at) {
        throw Failure(status, sentence + "; " + rangeText(task, *options.at));
    }
    if (status == QVStatus::ERROR_FORBIDDEN) {
        throw Failure(status,
                      "the service does not give the task to you; it may be done, over, cancelled, too far "
                      "away or meant for others");
    }
    session.require(status);
}

} // namespace

AnyCodable::Dictionary claimTask(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const std::shared_ptr<QVTask> task = options.task();
    Session session(global, terminal);
    session.signIn();
    if (options.at) {
        // A claim does not say where its user is: a service knows that from searches.
        terminal.progress("searching …");
        constexpr int radius = 100;
        session.require(findPlaces(session, *options.at, radius).status);
    }
    terminal.progress("claiming …");
    const Claimed claimed = claim(session, task, options.at);
    terminal.progress({});
    requireClaimed(claimed.status, *task, options, session);
    if (!claimed.task) {
        throw Failure("the service said yes without a task");
    }

    terminal.line("claimed " + titleOf(*claimed.task));
    terminal.row("key", printable(claimed.task->key.value_or("")), taskColumn);
    terminal.row("state", json::rawValue(claimed.task->state), taskColumn);
    if (claimed.task->nextQuestion) {
        terminal.row("next question", questionText(*claimed.task, *claimed.task->nextQuestion), taskColumn);
    }
    return {{"task", json::readExactly(json::encode(*claimed.task))}};
}

} // namespace quorvane::tool
