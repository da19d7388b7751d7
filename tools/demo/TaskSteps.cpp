#include "tools/demo/TaskSteps.h"

#include <algorithm>
#include <set>
#include <string>

#include "Facade/Quorvane.h"
#include "JSON/JSON.h"
#include "JSON/RawValues.h"
#include "tools/Failure.h"
#include "tools/Operations.h"
#include "tools/Questions.h"
#include "tools/Results.h"
#include "tools/Terminal.h"
#include "tools/Text.h"
#include "tools/demo/Stage.h"

namespace quorvane::tool {
namespace {

std::size_t typeCount(const QVTask& task) {
    std::set<QVQuestionType> types;
    for (const auto& question : task.questions) {
        types.insert(question->type);
    }
    return types.size();
}

platform::Coordinate placeOf(const QVTask& task) {
    return QVTaskService::shared().getTaskLocation(task).coordinate;
}

/// The questions from the first one on, each the one that follows the one before.
std::vector<std::shared_ptr<QVQuestion>> inOrder(const std::shared_ptr<QVTask>& task) {
    std::vector<std::shared_ptr<QVQuestion>> order;
    auto question = task->questions.empty() ? nullptr : task->questions.front();
    while (question && order.size() < task->questions.size()) {
        order.push_back(question);
        question = Quorvane::Tasks::nextQuestion(task, question->key.value_or(""));
    }
    return order;
}

} // namespace

std::shared_ptr<QVTask> findTask(Stage& stage, const platform::Coordinate& near) {
    stage.heading("A task, near " + coordinateText(near));
    const QVTaskList tasks = stage.searchTasks(near);
    const auto best = std::max_element(tasks.begin(), tasks.end(), [](const auto& one, const auto& other) {
        return typeCount(*one) < typeCount(*other);
    });
    if (best == tasks.end()) {
        throw Failure("there is no task near the start of the ride");
    }
    stage.note("chosen", titleOf(**best) + ", " + counted((*best)->questions.size(), "question"));
    return *best;
}

std::shared_ptr<QVTask> claimTask(Stage& stage, const std::shared_ptr<QVTask>& task) {
    stage.heading("Claiming it");
    const platform::Coordinate place = placeOf(*task);
    constexpr double tooFar = 0.05; // degrees: 5.6 km
    const platform::Coordinate away{place.latitude + (place.latitude > 0 ? -tooFar : tooFar), place.longitude};
    stage.note("from", coordinateText(away));
    stage.tellRefusal(claim(stage.session, task, away).status, QVStatus::ERROR_TASK_OUT_OF_RANGE,
                      rangeText(*task, away));

    stage.note("from", coordinateText(place) + ", where a search tells the service who is there");
    stage.tell(findPlaces(stage.session, place, Stage::radius).status, "within range");
    const Claimed claimed = claim(stage.session, task, place);
    if (claimed.status == QVStatus::SUCCESS && !claimed.task) {
        throw Failure("the claim was answered without a task");
    }
    stage.tell(claimed.status, claimed.task ? "claimed, and " + std::string(json::rawValue(claimed.task->state)) : "");
    return claimed.task;
}

AnyCodable::Dictionary readTask(Stage& stage, const std::shared_ptr<QVTask>& task) {
    stage.heading("What it asks");
    AnyCodable::List requirements;
    for (const std::string& requirement : Quorvane::Tasks::getRequirements(task)) {
        stage.note("", printable(requirement));
        requirements.emplace_back(requirement);
    }
    if (requirements.empty()) {
        throw Failure("the task has no requirements");
    }
    AnyCodable::List questions;
    for (const auto& question : inOrder(task)) {
        printQuestion(*question, stage.terminal);
        questions.emplace_back(question->key.value_or(""));
    }
    return {{"requirements", requirements}, {"questions", questions}};
}

AnyCodable::List collectRewards(Stage& stage, const QVTask& task) {
    stage.heading("The reward");
    const QVTaskList tasks = stage.searchTasks(placeOf(task));
    const auto done = std::find_if(tasks.begin(), tasks.end(), [&](const auto& one) { return one->key == task.key; });
    if (done == tasks.end() || (*done)->state != QVTask::State::completed) {
        throw Failure("the service does not say that the task is completed");
    }
    AnyCodable::List rewards;
    for (const auto& reward : (*done)->rewards) {
        stage.note("reward", printable(rewardText(*reward)));
        if (reward->barcode && reward->barcode->value) {
            stage.note("", "code " + printable(*reward->barcode->value) + ". " +
                               printable(reward->barcode->instructions.value_or("")));
        }
        rewards.push_back(json::readExactly(json::encode(*reward)));
    }
    if (rewards.empty()) {
        throw Failure("the task has no reward");
    }
    return rewards;
}

} // namespace quorvane::tool
