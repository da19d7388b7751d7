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

void requireSubmitted(const Submitted& submitted) {
    if (submitted.status == QVStatus::SUCCESS) {
        return;
    }
    if (submitted.error && submitted.error != QVTaskResponse::SubmitError::UNKNOWN()) {
        throw Failure(submitted.status, submitted.error->message());
    }
    // The library tells no more about any failure of the request.
    std::string sentence(sentenceFor(submitted.status));
    if (submitted.status == QVStatus::ERROR_TASK_RESPONSE_SUBMIT_FAILURE) {
        sentence +=
            "; is the task claimed and not completed, is this the question that is due, does tasks check "
            "find nothing, and is the service there?";
    }
    throw Failure(submitted.status, sentence);
}

} // namespace

AnyCodable::Dictionary checkEntry(const TaskOptions& options, const GlobalOptions& /*global*/, Terminal& terminal) {
    const std::shared_ptr<QVTask> task = options.task();
    const std::shared_ptr<QVQuestion> question = options.questionOf(*task);
    if (const auto error = check(*task, *question, options.entry())) {
        throw Failure(error->message());
    }
    terminal.line("the answer fits " + questionText(*task, options.question));
    return {{"question", options.question}};
}

AnyCodable::Dictionary submitEntry(const TaskOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const std::shared_ptr<QVTask> task = options.task();
    const std::shared_ptr<QVQuestion> question = options.questionOf(*task);
    const Entry entry = options.entry();
    Session session(global, terminal);
    session.signIn();
    terminal.progress("sending …");
    const Submitted submitted = submit(session, task, question, entry);
    terminal.progress({});
    requireSubmitted(submitted);
    if (!submitted.response) {
        throw Failure("the service said yes without a response");
    }

    const QVTaskResponse& response = *submitted.response;
    terminal.line("answered " + questionText(*task, options.question));
    if (response.score) {
        terminal.row("score", std::to_string(*response.score), taskColumn);
    }
    terminal.row("state", json::rawValue(response.state), taskColumn);
    if (response.photoUrl) {
        terminal.row("photo", printable(*response.photoUrl), taskColumn);
    }
    terminal.row("next question", response.nextKey ? questionText(*task, *response.nextKey) : "none", taskColumn);
    return {{"response", json::readExactly(json::encode(response))}};
}

} // namespace quorvane::tool
