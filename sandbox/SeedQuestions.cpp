#include "sandbox/SeedQuestions.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "sandbox/SeedTasks.h"

namespace quorvane::sandbox {
namespace {

/// One kind of question; `make` adds what is its own to what all have.
struct Kind {
    std::string_view type;
    std::string_view text;
    void (*make)(ObjectText& question, const std::string& key);
};

constexpr std::array<std::string_view, 3> levels{"none", "flat", "vertical"};
constexpr std::array<std::string_view, 6> overlays{
    "none", "circle", "circle_square", "rectangle_horizontal", "square", "rectangle_vertical"};

void makeOpenEnded(ObjectText& question, const std::string& /*key*/) {
    question["openTextPlaceholder"] = "A sentence or two";
    question["openTextSuggestions"] = ListText{"Tidy", "Untidy", "Closed"};
    question["mustPickSuggestion"] = false;
    question["singleLineResponse"] = false;
    question["minValue"] = 3;
    question["maxValue"] = 200;
    question["sentimentText"] = "neutral";
}

void makeNumeric(ObjectText& question, const std::string& /*key*/) {
    question["allowDecimals"] = true;
    question["minValue"] = 0;
    question["maxValue"] = 500;
    question["maxScore"] = 10;
    question["showUnitsOnLeft"] = true;
    question["unitOfMeasurementLabel"] = "€";
    question["scoreIntervals"] = ListText{ObjectText{{"upperBound", 10}, {"score", 10}},
                                          ObjectText{{"lowerBound", 11}, {"upperBound", 100}, {"score", 5}},
                                          ObjectText{{"lowerBound", 101}, {"score", 0}}};
}

void makeSingle(ObjectText& question, const std::string& key) {
    question["answerOrder"] = "random";
    question["hasOther"] = true;
    question["lastAnswerPositionPinned"] = true;
    question["criticalAnswers"] = ListText{key + "-a1"};
}

void makeMultiple(ObjectText& question, const std::string& key) {
    question["minMultipleAnswers"] = 1;
    question["maxMultipleAnswers"] = 2;
    question["thresholdAnswers"] = ListText{key + "-a2"};
}

void makeRating(ObjectText& question, const std::string& /*key*/) {
    question["numStars"] = 5;
    question["lowValueLabel"] = "Poor";
    question["highValueLabel"] = "Excellent";
}

void makeBarcode(ObjectText& question, const std::string& /*key*/) {
    question["images"] = ListText{"https://images.example.invalid/barcode.png"};
    question["videoId"] = "how-to-scan";
}

void makePlain(ObjectText& question, const std::string& /*key*/) {
    question["isOptional"] = true;
}

constexpr std::array<Kind, 9> kinds{{
    {"openEnded", "What does the shelf look like?", makeOpenEnded},
    {"numericOpenEnded", "What does a litre of milk cost?", makeNumeric},
    {"singleAnswer", "Which door did you come through?", makeSingle},
    {"multipleAnswers", "Which of these do you see?", makeMultiple},
    {"ratingScale", "How friendly was the service?", makeRating},
    {"ratingScaleWithText", "How clean was the shop, and why?", makeRating},
    {"date", "Which day stands on the package?", makePlain},
    {"time", "When does the shop close today?", makePlain},
    {"barcodeScan", "Scan the code on the shelf.", makeBarcode},
}};

constexpr std::array<std::string_view, 3> choices{"Front", "Side", "None of them"};

bool hasChoices(const Kind& kind) {
    return kind.type == "singleAnswer" || kind.type == "multipleAnswers";
}

ListText makeAnswers(const QuestionSlot& slot, const ObjectText& owners) {
    ListText answers;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const auto index = static_cast<std::int64_t>(i);
        answers.add(makeAnswer(slot.key(), index, choices[i], slot.keyOf(slot.index + 1), 2 - index, owners));
    }
    return answers;
}

} // namespace

ObjectText makeQuestion(const QuestionSlot& slot, std::string_view type, std::string_view text,
                        const ObjectText& owners) {
    ObjectText question{
        {"allowDecimals", false},
        {"answerOrder", "fixed"},
        {"answers", ListText{}},
        {"clientReference", "question " + std::to_string(slot.index + 1)},
        {"created", seedTime},
        {"modified", seedTime},
        {"criticalAnswers", ListText{}},
        {"images", ListText{}},
        {"key", slot.key()},
        {"openTextSuggestions", ListText{}},
        {"order", slot.index},
        {"owners", owners},
        {"pointers", ObjectText{{"nextKey", slot.keyOf(slot.index + 1)}, {"previousKey", slot.keyOf(slot.index - 1)}}},
        {"question", text},
        {"scoreIntervals", ListText{}},
        {"showUnitsOnLeft", false},
        {"thresholdAnswers", ListText{}},
        {"type", type},
        {"version", 1}};
    if (slot.index > 0) {
        question["parentKey"] = slot.keyOf(slot.index - 1);
    }
    return question;
}

ObjectText makeAnswer(const std::string& questionKey, std::int64_t index, std::string_view text,
                      const std::string& nextKey, std::int64_t score, const ObjectText& owners) {
    const std::string key = questionKey + "-a" + std::to_string(index + 1);
    return {{"answerOrder", index}, {"clientReference", "choice " + std::to_string(index + 1)},
            {"created", seedTime},  {"modified", seedTime},
            {"displayText", text},  {"displayTextKey", key + "-text"},
            {"key", key},           {"nextQuestionKey", nextKey},
            {"owners", owners},     {"questionKey", questionKey},
            {"score", score},       {"version", 1}};
}

ObjectText makePhotoOptions(std::int64_t number) {
    const auto index = static_cast<std::size_t>(number);
    return {{"allowFlashToggle", number % 2 == 0},
            {"defaultFlashState", number % 3 == 0},
            {"exampleImage", "https://images.example.invalid/example.jpg"},
            {"googleVisionOptionKey", ""},
            {"mustProvidePhoto", number % 2 == 1},
            {"photoLevelType", levels[index % levels.size()]},
            {"photoOverlayType", overlays[index % overlays.size()]},
            {"photoPromptText", "Hold the camera straight."}};
}

ListText makeQuestions(Chance& chance, std::int64_t taskNumber, const ObjectText& owners) {
    QuestionSlot slot{.taskKey = numbered("task", taskNumber), .count = chance.whole(3, 5)};
    ListText questions;
    for (; slot.index < slot.count; ++slot.index) {
        const Kind& kind = kinds[static_cast<std::size_t>(taskNumber * 3 + slot.index) % kinds.size()];
        ObjectText question = makeQuestion(slot, kind.type, kind.text, owners);
        if (hasChoices(kind)) {
            question["answers"] = makeAnswers(slot, owners);
        }
        question["dragonID"] = "D-" + chance.digits(8);
        question["responseCount"] = ObjectText{{"actual", 0}, {"wanted", chance.whole(1, 20)}};
        kind.make(question, slot.key());
        if (slot.index == 0 || chance.oneIn(4)) {
            question["photoCaptureOptions"] = makePhotoOptions(taskNumber + slot.index);
        }
        questions.add(question);
    }
    return questions;
}

} // namespace quorvane::sandbox
