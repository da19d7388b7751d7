#include "tools/demo/AnswerStep.h"

#include <optional>
#include <set>
#include <string>

#include "JSON/RawValues.h"
#include "Tasks/TaskQuestions.h"
#include "tools/Failure.h"
#include "tools/Operations.h"
#include "tools/Pictures.h"
#include "tools/Questions.h"
#include "tools/Text.h"
#include "tools/demo/DrawnPhoto.h"
#include "tools/demo/SampleAnswers.h"
#include "tools/demo/Stage.h"

namespace quorvane::tool {
namespace {

/// All but the one that stands for none.
constexpr std::size_t typeCount = 9;

std::string textOf(const QVQuestion& question, const Entry& entry) {
    std::string text;
    for (const std::string& key : entry.picked.value_or(std::vector<std::string>())) {
        for (const auto& answer : question.answers) {
            text += answer->key == key ? (text.empty() ? "" : " and ") + answer->displayText : "";
        }
    }
    text += entry.text.value_or("");
    if (entry.photo) {
        text += (text.empty() ? "" : ", with ") + std::string("a photo of ") + std::to_string(entry.photo->width()) +
                " × " + std::to_string(entry.photo->height()) + " pixels";
    }
    return text.empty() ? "nothing" : printable(text);
}

/// Shows that a wrong answer is found out.
void tryWrongAnswer(Stage& stage, const QVTask& task, const QVQuestion& question) {
    const Entry entry = wrongAnswer(question);
    const auto error = check(task, question, entry);
    if (!error) {
        throw Failure("a wrong answer to " + question.key.value_or("") + " was not found out");
    }
    stage.note("wrong", textOf(question, entry) + ": " + error->message());
}

AnyCodable::Dictionary documentOf(const QVQuestion& question, const QVTaskResponse& response) {
    AnyCodable::Dictionary document{{"question", question.key.value_or("")},
                                    {"type", json::rawValue(question.type)},
                                    {"state", json::rawValue(response.state)}};
    if (response.score) {
        document["score"] = *response.score;
    }
    if (response.nextKey) {
        document["nextKey"] = *response.nextKey;
    }
    if (response.photoUrl) {
        document["photoUrl"] = *response.photoUrl;
    }
    return document;
}

std::string resultText(const QVTaskResponse& response) {
    const std::string score = response.score ? counted(static_cast<std::size_t>(*response.score), "point") : "no score";
    return response.nextKey ? score + ", next " + printable(*response.nextKey)
                            : score + ", " + std::string(json::rawValue(response.state));
}

/// Checks the answer, submits it, and tells what came back.
std::shared_ptr<QVTaskResponse> send(Stage& stage, const std::shared_ptr<QVTask>& task,
                                     const std::shared_ptr<QVQuestion>& question, const Entry& entry) {
    if (const auto error = check(*task, *question, entry)) {
        throw Failure("an answer that fits was refused: " + error->message());
    }
    stage.note("answer", textOf(*question, entry));
    const Submitted submitted = submit(stage.session, task, question, entry);
    if (submitted.status == QVStatus::SUCCESS && !submitted.response) {
        throw Failure("an answer was accepted without a response");
    }
    stage.tell(submitted.status, submitted.response ? resultText(*submitted.response) : "");
    if (entry.photo) {
        stage.note("photo", "half of it, stored as " + printable(submitted.response->photoUrl.value_or("nothing")));
    }
    return submitted.response;
}

} // namespace

Questionnaire answerQuestions(Stage& stage, const std::shared_ptr<QVTask>& task) {
    Questionnaire result;
    std::set<QVQuestionType> types;
    std::optional<std::string> key = task->nextQuestion;
    while (key && result.answers.size() < task->questions.size()) {
        const std::shared_ptr<QVQuestion> question = questionOf(*task, *key);
        if (!question) {
            throw Failure("the service leads to a question that the task does not have: " + printable(*key));
        }
        stage.heading(questionText(*task, *key));
        tryWrongAnswer(stage, *task, *question);
        Entry entry = fittingAnswer(*question);
        if (needsPhoto(*question)) {
            if (!knowsPictures()) {
                stage.note("skipped",
                           "this quorvane was built without Qt and has no photo to send: the task stays open");
                return result;
            }
            entry.photo = drawnPhoto();
        }
        const std::shared_ptr<QVTaskResponse> response = send(stage, task, question, entry);
        types.insert(question->type);
        result.score += response->score.value_or(0);
        result.isCompleted = response->state == QVTask::State::completed;
        result.answers.emplace_back(documentOf(*question, *response));
        key = response->nextKey;
    }
    if (!result.isCompleted || types.size() != typeCount) {
        throw Failure("the questions came to an end before the task did, or before every type was answered");
    }
    return result;
}

} // namespace quorvane::tool
