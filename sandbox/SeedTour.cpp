#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sandbox/SeedQuestions.h"
#include "sandbox/SeedTasks.h"

namespace quorvane::sandbox {
namespace {

struct Choice {
    std::string_view text;
    /// The index of the question that it leads to.
    std::int64_t next;
    std::int64_t score;
};

/// A question of the tour; `members` are its own, beside what all have.
struct Stage {
    std::string_view type;
    std::string_view text;
    std::vector<Choice> choices;
    ObjectText members;
};

constexpr std::int64_t photoStage = 10;

ObjectText interval(std::int64_t low, std::int64_t high, std::int64_t score) {
    return {{"lowerBound", low}, {"upperBound", high}, {"score", score}};
}

std::vector<Stage> stages() {
    return {
        {"singleAnswer",
         "Is the shop open?",
         {{"Yes", 2, 5}, {"Only in part", 2, 3}, {"No", 1, 0}},
         {{"criticalAnswers", ListText{"task-00000-q1-a3"}}}},
        {"singleAnswer",
         "Why is it closed?",
         {{"Outside its hours", photoStage, 0}, {"For good", photoStage, 0}, {"I cannot tell", photoStage, 0}},
         {}},
        {"multipleAnswers",
         "What stands in front of the shop?",
         {{"A shelf with offers", 3, 2}, {"A bicycle rack", 3, 1}, {"A bench", 3, 1}, {"Nothing of these", 3, 0}},
         {{"minMultipleAnswers", 1}, {"maxMultipleAnswers", 3}, {"maxScore", 3}}},
        {"numericOpenEnded",
         "What does a litre of milk cost?",
         {},
         {{"allowDecimals", true},
          {"minValue", 0},
          {"maxValue", 20},
          {"maxScore", 10},
          {"showUnitsOnLeft", true},
          {"unitOfMeasurementLabel", "€"},
          {"scoreIntervals", ListText{ObjectText{{"upperBound", 1}, {"score", 10}}, interval(1, 3, 5),
                                      ObjectText{{"lowerBound", 3}, {"score", 0}}}}}},
        {"ratingScale",
         "How friendly was the service?",
         {},
         {{"numStars", 5},
          {"lowValueLabel", "Poor"},
          {"highValueLabel", "Excellent"},
          {"scoreIntervals", ListText{interval(1, 2, 0), interval(3, 3, 1), interval(4, 5, 3)}}}},
        {"ratingScaleWithText",
         "How clean was the shop?",
         {},
         {{"numStars", 5},
          {"lowValueLabel", "Dirty"},
          {"highValueLabel", "Spotless"},
          {"scoreIntervals", ListText{interval(4, 5, 2)}}}},
        {"openEnded",
         "What does the shelf look like?",
         {},
         {{"openTextPlaceholder", "A sentence or two"},
          {"openTextSuggestions", ListText{"Tidy", "Untidy", "Empty"}},
          {"minValue", 3},
          {"maxValue", 200}}},
        {"date", "Which day stands on the package?", {}, {}},
        {"time", "When does the shop close today?", {}, {}},
        {"barcodeScan", "Scan the code on the shelf.", {}, {}},
        {"openEnded",
         "Photograph the front of the shop; is there anything else to say?",
         {},
         {{"isOptional", true}, {"maxValue", 500}, {"photoCaptureOptions", makePhotoOptions(1)}}},
    };
}

ListText makeStages(const std::string& taskKey, const ObjectText& owners) {
    const std::vector<Stage> all = stages();
    QuestionSlot slot{.taskKey = taskKey, .count = static_cast<std::int64_t>(all.size())};
    ListText questions;
    for (const Stage& stage : all) {
        ObjectText question = makeQuestion(slot, stage.type, stage.text, owners);
        ListText answers;
        for (const Choice& choice : stage.choices) {
            answers.add(makeAnswer(slot.key(), static_cast<std::int64_t>(answers.size()), choice.text,
                                   slot.keyOf(choice.next), choice.score, owners));
        }
        question["answers"] = answers;
        question.add(stage.members);
        questions.add(question);
        ++slot.index;
    }
    return questions;
}

ObjectText makeCoupon(const ObjectText& owners) {
    return {{"barcode", ObjectText{{"alternateText", "A hot drink"},
                                   {"instructions", "Let the code be scanned."},
                                   {"isUnique", true},
                                   {"rewardKey", "reward-00000"},
                                   {"state", "unused"},
                                   {"type", "code128"},
                                   {"value", "QV0000000000"}}},
            {"campaignRewardKey", "reward-00000-campaign"},
            {"claimCount", 0},
            {"clientName", "Sandbox"},
            {"created", seedTime},
            {"modified", seedTime},
            {"isRandomDraw", false},
            {"key", "reward-00000"},
            {"legalese", "Has no cash value."},
            {"maxClaimCount", 1},
            {"message", ObjectText{{"header", "Thank you"}, {"body", "A hot drink at the till, for this code."}}},
            {"owners", owners},
            {"state", "offered"},
            {"version", 1}};
}

} // namespace

SeedTask makeTour(const SeedPlace& place) {
    SeedTask task{.key = numbered("task", 0), .campaign = "campaign-tour"};
    const ObjectText owners{{"campaign", task.campaign}, {"client", place.client}, {"user", "sandbox"}};
    ListText questions = makeStages(task.key, owners);
    task.json = {{"associatesOnly", false},
                 {"created", seedTime},
                 {"modified", seedTime},
                 {"due", 4'102'444'800'000},
                 {"description", "Answer one question of every type, and take a photo."},
                 {"key", task.key},
                 {"location", makeLocation(place)},
                 {"locationKey", place.key},
                 {"nextQuestion", task.key + "-q1"},
                 {"owners", owners},
                 {"questions", std::move(questions)},
                 {"rewards", ListText{makeCoupon(owners)}},
                 {"taskRequirements", ListText{"Ask before you take photographs."}},
                 {"time", ObjectText{{"min", 5}, {"max", 10}}},
                 {"title", "A tour of " + place.name},
                 {"version", 1}};
    return task;
}

} // namespace quorvane::sandbox
