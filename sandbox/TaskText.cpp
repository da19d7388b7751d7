#include "sandbox/TaskText.h"

#include "JSON/JSON.h"
#include "JSON/NumberText.h"
#include "Tasks/ClaimRule.h"
#include "sandbox/TaskWalk.h"

namespace quorvane::sandbox {

std::string taskText(const FoundTask& task) {
    return R"({"distance":)" + json::textOf(ClaimRule::miles(task.metres)) + R"(,"state":")" + task.state + "\"," +
           task.body.substr(1);
}

std::string taskText(const FoundTask& task, const Claim& claim) {
    QVTask model = modelOf(task);
    model.distance = ClaimRule::miles(task.metres);
    model.state = claim.isCompleted ? QVTask::State::completed : QVTask::State::running;
    model.nextQuestion.reset();
    if (!claim.nextQuestion.empty()) {
        model.nextQuestion = claim.nextQuestion;
    }
    if (claim.isCompleted) {
        model.completed = claim.completed;
        decideRewards(model, claim.user);
    }
    return json::encode(model);
}

QVTask modelOf(const FoundTask& task) {
    return json::decode<QVTask>(task.body);
}

} // namespace quorvane::sandbox
