#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "sandbox/SeedTasks.h"

namespace quorvane::sandbox {
namespace {

using Dictionary = AnyCodable::Dictionary;
using List = AnyCodable::List;

/// One kind of question; `make` adds what is its own to what all have.
struct Kind {
    std::string_view type;
    std::string_view text;
    void (*make)(Dictionary& question);
};

constexpr std::array<std::string_view, 3> levels{"none", "flat", "vertical"};
constexpr std::array<std::string_view, 6> overlays{
    "none", "circle", "circle_square", "rectangle_horizontal", "square", "rectangle_vertical"};

void makeOpenEnded(Dictionary& question) {
    question["openTextPlaceholder"] = "A sentence or two";
    question["openTextSuggestions"] = List{"Tidy", "Untidy", "Closed"};
    question["mustPickSuggestion"] = false;
    question["singleLineResponse"] = false;
    question["minValue"] = 3;
    question["maxValue"] = 200;
    question["sentimentText"] = "neutral";
}

void makeNumeric(Dictionary& question) {
    question["allowDecimals"] = true;
    question["minValue"] = 0;
    question["maxValue"] = 500;
    question["maxScore"] = 10;
    question["showUnitsOnLeft"] = true;
    question["unitOfMeasurementLabel"] = "€";
    question["scoreIntervals"] = List{Dictionary{{"upperBound", 10}, {"score", 10}},
                                      Dictionary{{"lowerBound", 11}, {"upperBound", 100}, {"score", 5}},
                                      Dictionary{{"lowerBound", 101}, {"score", 0}}};
}

void makeSingle(Dictionary& question) {
    question["answerOrder"] = "random";
    question["hasOther"] = true;
    question["lastAnswerPositionPinned"] = true;
    question["criticalAnswers"] = List{AnyCodable(std::get<std::string>(question["key"].value) + "-a1")};
}

void makeMultiple(Dictionary& question) {
    question["minMultipleAnswers"] = 1;
    question["maxMultipleAnswers"] = 2;
    question["thresholdAnswers"] = List{AnyCodable(std::get<std::string>(question["key"].value) + "-a2")};
}

void makeRating(Dictionary& question) {
    question["numStars"] = 5;
    question["lowValueLabel"] = "Poor";
    question["highValueLabel"] = "Excellent";
}

void makeBarcode(Dictionary& question) {
    question["images"] = List{"https://images.example.invalid/barcode.png"};
    question["videoId"] = "how-to-scan";
}

void makePlain(Dictionary& question) {
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

Dictionary makePhotoOptions(std::int64_t number) {
    const auto index = static_cast<std::size_t>(number);
    return {{"allowFlashToggle", number % 2 == 0},
            {"defaultFlashState", number % 3 == 0},
            {"exampleImage", "https://images.example.invalid/example.jpg"},
            {"googleVisionOptionKey", ""},
            {"mustProvidePhoto", number % 2 == 1},
            {"photoLevelType", AnyCodable(levels[index % levels.size()])},
            {"photoOverlayType", AnyCodable(overlays[index % overlays.size()])},
            {"photoPromptText", "Hold the camera straight."}};
}

List makeAnswers(const std::string& questionKey, const std::string& nextKey, const Dictionary& owners) {
    List answers;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const std::string key = questionKey + "-a" + std::to_string(i + 1);
        answers.emplace_back(Dictionary{{"answerOrder", i},
                                        {"clientReference", "choice " + std::to_string(i + 1)},
                                        {"created", seedTime},
                                        {"modified", seedTime},
                                        {"displayText", AnyCodable(choices[i])},
                                        {"displayTextKey", key + "-text"},
                                        {"key", key},
                                        {"nextQuestionKey", nextKey},
                                        {"owners", owners},
                                        {"questionKey", questionKey},
                                        {"score", 2 - static_cast<int>(i)},
                                        {"version", 1}});
    }
    return answers;
}

bool hasChoices(const Kind& kind) {
    return kind.type == "singleAnswer" || kind.type == "multipleAnswers";
}

} // namespace

List makeQuestions(Chance& chance, std::int64_t taskNumber, const Dictionary& owners) {
    const std::int64_t count = chance.whole(3, 5);
    const auto keyOf = [&](std::int64_t index) {
        const bool exists = index >= 0 && index < count;
        return exists ? numbered("task", taskNumber) + "-q" + std::to_string(index + 1) : std::string();
    };
    List questions;
    for (std::int64_t i = 0; i < count; ++i) {
        const Kind& kind = kinds[static_cast<std::size_t>(taskNumber * 3 + i) % kinds.size()];
        Dictionary question{{"allowDecimals", false},
                            {"answerOrder", "fixed"},
                            {"answers", hasChoices(kind) ? makeAnswers(keyOf(i), keyOf(i + 1), owners) : List{}},
                            {"clientReference", "question " + std::to_string(i + 1)},
                            {"created", seedTime},
                            {"modified", seedTime},
                            {"criticalAnswers", List{}},
                            {"dragonID", "D-" + chance.digits(8)},
                            {"images", List{}},
                            {"key", keyOf(i)},
                            {"openTextSuggestions", List{}},
                            {"order", i},
                            {"owners", owners},
                            {"pointers", Dictionary{{"nextKey", keyOf(i + 1)}, {"previousKey", keyOf(i - 1)}}},
                            {"question", AnyCodable(kind.text)},
                            {"responseCount", Dictionary{{"actual", 0}, {"wanted", chance.whole(1, 20)}}},
                            {"scoreIntervals", List{}},
                            {"showUnitsOnLeft", false},
                            {"thresholdAnswers", List{}},
                            {"type", AnyCodable(kind.type)},
                            {"version", 1}};
        kind.make(question);
        if (i > 0) {
            question["parentKey"] = keyOf(i - 1);
        }
        if (i == 0 || chance.oneIn(4)) {
            question["photoCaptureOptions"] = makePhotoOptions(taskNumber + i);
        }
        questions.emplace_back(std::move(question));
    }
    return questions;
}

} // namespace quorvane::sandbox
