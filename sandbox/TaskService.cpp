#include "sandbox/TaskService.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "JSON/JSON.h"
#include "JSON/NumberText.h"
#include "Tasks/AnswerCheck.h"
#include "Tasks/ClaimRule.h"
#include "Tasks/QVTaskService.h"
#include "Tasks/TaskQuestions.h"
#include "sandbox/Access.h"
#include "sandbox/Photo.h"
#include "sandbox/Secrets.h"
#include "sandbox/SeedPlaces.h"
#include "sandbox/TaskText.h"
#include "sandbox/TaskWalk.h"

namespace quorvane::sandbox {
namespace {

constexpr std::string_view associatePrefix = "associate";

[[noreturn]] void refuse(const char* error, const std::string& description, int status = 400) {
    throw Refusal(status, error, description);
}

template <class Model>
Model modelIn(const Request& request) {
    Model model;
    try {
        json::decode(bodyOf(request), model);
    } catch (const json::DecodingError& error) {
        refuse("invalid_request", "The body cannot be read: " + std::string(error.what()) + ".");
    }
    return model;
}

FoundTask stored(std::optional<FoundTask> task) {
    if (!task) {
        refuse("not_found", "There is no task with this key.", 404);
    }
    return std::move(*task);
}

/// What a user sent, for telling a repeated answer from another one; the photo as its digest.
std::string contentOf(const QVTaskResponse& response, const std::optional<Photo>& photo) {
    AnyCodable::List answers;
    for (const std::string& key : response.answers.value_or(std::vector<std::string>())) {
        answers.emplace_back(key);
    }
    return json::writeExactly(AnyCodable::List{std::move(answers), response.userAnswer.value_or(""),
                                               photo ? challengeFor(photo->bytes) : ""});
}

/// The key of the question to begin with; empty when the task has none.
std::string firstQuestion(const QVTask& task) {
    if (task.nextQuestion && questionOf(task, *task.nextQuestion)) {
        return *task.nextQuestion;
    }
    const auto found =
        std::ranges::find_if(task.questions, [](const auto& question) { return question->key.has_value(); });
    return found == task.questions.end() ? "" : *(*found)->key;
}

Answer answerOf(const StoredResponse& response, int port) {
    Answer answer{.body = response.body};
    if (!response.photo.empty()) {
        answer.body = R"({"photoUrl":"http://127.0.0.1:)" + std::to_string(port) + "/photos/" + response.photo + "\"," +
                      response.body.substr(1);
    }
    return answer;
}

} // namespace

TaskService::TaskService(Database& theDatabase, PlaceStore& thePlaces, TokenStore& theTokens, TokenStore::Now theNow)
    : database(theDatabase), places(thePlaces), tokens(theTokens), store(theDatabase), clock(std::move(theNow)) {}

std::int64_t TaskService::now() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(clock().time_since_epoch()).count();
}

void TaskService::checkEligibility(const FoundTask& task, const QVTask& model, const std::string& user) const {
    if (task.state == "cancelled") {
        refuse("task_cancelled", "The task was cancelled.", 403);
    }
    if (model.due && *model.due < now()) {
        refuse("task_overdue", "The task was due before now.", 403);
    }
    if (model.associatesOnly && !user.starts_with(associatePrefix)) {
        refuse("associates_only", R"(The task is for associates only: users whose identifier begins with "associate".)",
               403);
    }
}

double TaskService::distanceFor(const QVTask& model, const std::string& user) {
    const auto position = store.position(user);
    if (!position) {
        refuse("location_unknown",
               "It is not known where the user is: search for places or tasks around a point first.", 403);
    }
    const double metres = platform::distance(*position, QVTaskService().getTaskLocation(model).coordinate);
    if (!ClaimRule::allows(metres, model.claimDistanceOverride)) {
        refuse("out_of_range",
               "The user's last search was " + json::textOf(ClaimRule::miles(metres)) +
                   " miles away from the task, which can be claimed within " +
                   json::textOf(model.claimDistanceOverride.value_or(ClaimRule::defaultRadiusMiles)) + " miles.",
               403);
    }
    return metres;
}

Answer TaskService::claim(const Request& request) {
    const Grant grant = authorize(request, tokens);
    const auto asked = modelIn<QVTask>(request);
    if (!asked.key || asked.key->empty()) {
        refuse("invalid_request", "The task has no \"key\".");
    }
    FoundTask task = stored(places.task(*asked.key));
    const QVTask model = modelOf(task);
    checkEligibility(task, model, grant.user);

    Transaction transaction(database);
    auto claim = store.claim(task.number, grant.user);
    if (claim && claim->isCompleted) {
        refuse("task_completed", "The user has completed the task already.", 403);
    }
    task.metres = distanceFor(model, grant.user);
    if (!claim) {
        claim = Claim{.task = task.number, .user = grant.user, .nextQuestion = firstQuestion(model)};
        finishIfDone(*claim);
        store.add(*claim, now());
        transaction.commit();
    }
    return {.body = taskText(task, *claim)};
}

Answer TaskService::respond(const Request& request) {
    const Grant grant = authorize(request, tokens);
    const std::string& key = request.wildcards.front();
    auto response = modelIn<QVTaskResponse>(request);
    if (response.taskKey != key) {
        refuse("invalid_request", "\"taskKey\" is not the key in the path.");
    }
    const FoundTask task = stored(places.task(key));
    const QVTask model = modelOf(task);
    const std::string questionKey = response.question ? response.question->key.value_or("") : "";
    response.question = questionOf(model, questionKey);
    if (!response.question || questionKey.empty()) {
        refuse("unknown_question", "The task has no question with the key of \"question\".");
    }
    std::optional<Photo> photo;
    if (response.base64) {
        photo = photoOf(*response.base64);
        response.base64.reset();
    }
    std::string content = contentOf(response, photo);

    Transaction transaction(database);
    const auto claim = store.claim(task.number, grant.user);
    if (!claim) {
        refuse("task_not_claimed", "The user has not claimed the task.", 409);
    }
    if (const auto before = store.response(*claim, questionKey)) {
        if (before->content != content) {
            refuse("already_answered", "The user has given another answer to this question already.", 409);
        }
        return answerOf(*before, request.port);
    }
    if (claim->isCompleted) {
        refuse("task_completed", "The user has completed the task already.", 409);
    }
    if (questionKey != claim->nextQuestion) {
        refuse("unexpected_question", "The question that is due is \"" + claim->nextQuestion + "\".", 409);
    }
    const AnswerInput input{.picked = response.answers.value_or(std::vector<std::string>()),
                            .text = response.userAnswer.value_or(""),
                            .hasPhoto = photo.has_value()};
    if (const auto error = checkAnswer(model, *response.question, input)) {
        refuse("invalid_answer", error->message());
    }
    std::string identifier;
    if (photo) {
        identifier = randomToken();
        store.add(identifier, *photo);
    }
    const StoredResponse taken = take(model, std::move(response), *claim, std::move(content), identifier);
    transaction.commit();
    return answerOf(taken, request.port);
}

void TaskService::finishIfDone(Claim& claim) const {
    claim.isCompleted = claim.nextQuestion.empty();
    claim.completed = claim.isCompleted ? now() : 0;
}

StoredResponse TaskService::take(const QVTask& task, QVTaskResponse response, Claim claim, std::string content,
                                 const std::string& photo) {
    const QVQuestion& question = *response.question;
    const std::int64_t number = store.nextResponse();
    auto answered = store.answered(claim);
    answered.insert(*question.key);
    claim.nextQuestion = nextQuestion(task, question, response.answers.value_or(std::vector<std::string>()), answered);
    finishIfDone(claim);

    response.score = scoreOf(question, response);
    claim.score += *response.score;
    response.key = numbered("response", number);
    response.created = now();
    response.modified = response.created;
    response.owners = std::make_shared<QVOwners>(task.owners ? *task.owners : QVOwners());
    response.owners->user = claim.user;
    response.photoUrl.reset();
    response.state = claim.isCompleted ? QVTask::State::completed : QVTask::State::continue_;
    response.version = 1;
    response.nextKey.reset();
    if (!claim.isCompleted) {
        response.nextKey = claim.nextQuestion;
    }
    StoredResponse taken{.content = std::move(content), .body = json::encode(response), .photo = photo};
    store.add(claim, number, *question.key, taken);
    store.update(claim);
    return taken;
}

Answer TaskService::photo(const std::string& identifier) {
    const Transaction transaction(database);
    return photoAnswer(store.photo(identifier));
}

} // namespace quorvane::sandbox
