#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tasks/QVQuestion.h"

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;

TEST(QVQuestion, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"allowDecimals":true,"answerOrder":"random","answers":[{"answerOrder":1,"clientReference":"",)"
        R"("displayText":"Yes","displayTextKey":"","nextQuestionKey":"q2","questionKey":"q1"}],)"
        R"("clientReference":"ref","created":1,"criticalAnswers":["a1"],"dragonID":"d1","hasOther":true,)"
        R"("highValueLabel":"good","images":["i1","i2"],"isOptional":true,"key":"q1",)"
        R"("lastAnswerPositionPinned":true,"lowValueLabel":"bad","maxMultipleAnswers":2,"maxScore":3,"maxValue":4,)"
        R"("minMultipleAnswers":5,"minValue":6,"modified":7,"mustPickSuggestion":true,"numStars":8,)"
        R"("openTextPlaceholder":"Type","openTextSuggestions":["s1"],"order":9,"owners":{"user":"u1"},)"
        R"("parentKey":"q0","photoCaptureOptions":{"allowFlashToggle":false,"defaultFlashState":false,)"
        R"("exampleImage":"","googleVisionOptionKey":"","mustProvidePhoto":true,"photoLevelType":"flat",)"
        R"("photoOverlayType":"square","photoPromptText":""},"pointers":{"nextKey":"q2","previousKey":"q0"},)"
        R"("question":"How many?","responseCount":{"actual":1,"wanted":2},"scoreIntervals":[{"score":10}],)"
        R"("sentimentText":"fine","showUnitsOnLeft":true,"singleLineResponse":true,"thresholdAnswers":["t1"],)"
        R"("type":"numericOpenEnded","unitOfMeasurementLabel":"kg","version":11,"videoId":"v1"})";

    const auto question = json::decode<QVQuestion>(text);

    EXPECT_TRUE(question.allowDecimals);
    EXPECT_EQ(question.answerOrder, "random");
    ASSERT_EQ(question.answers.size(), 1U);
    EXPECT_EQ(question.answers[0]->displayText, "Yes");
    EXPECT_EQ(question.clientReference, "ref");
    EXPECT_EQ(question.created, 1);
    EXPECT_EQ(question.criticalAnswers, Texts{"a1"});
    EXPECT_EQ(question.dragonId, "d1");
    EXPECT_EQ(question.hasOther, true);
    EXPECT_EQ(question.highValueLabel, "good");
    EXPECT_EQ(question.images, (Texts{"i1", "i2"}));
    EXPECT_EQ(question.isOptional, true);
    EXPECT_EQ(question.key, "q1");
    EXPECT_EQ(question.lastAnswerPositionPinned, true);
    EXPECT_EQ(question.lowValueLabel, "bad");
    EXPECT_EQ(question.maxMultipleAnswers, 2);
    EXPECT_EQ(question.maxScore, 3);
    EXPECT_EQ(question.maxValue, 4);
    EXPECT_EQ(question.minMultipleAnswers, 5);
    EXPECT_EQ(question.minValue, 6);
    EXPECT_EQ(question.modified, 7);
    EXPECT_EQ(question.mustPickSuggestion, true);
    EXPECT_EQ(question.numStars, 8);
    EXPECT_EQ(question.openTextPlaceholder, "Type");
    EXPECT_EQ(question.openTextSuggestions, Texts{"s1"});
    EXPECT_EQ(question.order, 9);
    ASSERT_TRUE(question.owners);
    EXPECT_EQ(question.owners->user, "u1");
    EXPECT_EQ(question.parentKey, "q0");
    ASSERT_TRUE(question.photoCaptureOptions);
    EXPECT_TRUE(question.photoCaptureOptions->mustProvidePhoto);
    ASSERT_TRUE(question.pointers);
    EXPECT_EQ(question.pointers->nextKey, "q2");
    EXPECT_EQ(question.question, "How many?");
    ASSERT_TRUE(question.responseCount);
    EXPECT_EQ(question.responseCount->wanted, 2);
    ASSERT_EQ(question.scoreIntervals.size(), 1U);
    EXPECT_EQ(question.scoreIntervals[0]->score, 10);
    EXPECT_EQ(question.sentimentText, "fine");
    EXPECT_TRUE(question.showUnitsOnLeft);
    EXPECT_EQ(question.singleLineResponse, true);
    EXPECT_EQ(question.thresholdAnswers, Texts{"t1"});
    EXPECT_EQ(question.type, QVQuestion::QuestionType::numericOpenEnded);
    EXPECT_EQ(question.unitOfMeasurementLabel, "kg");
    EXPECT_EQ(question.version, 11);
    EXPECT_EQ(question.videoId, "v1");
    EXPECT_EQ(json::encode(question), text);
}

TEST(QVQuestion, ANewOneIsEmptyAndOfUndefinedType) {
    const std::string empty =
        R"({"allowDecimals":false,"answerOrder":"","answers":[],"criticalAnswers":[],"images":[],)"
        R"("openTextSuggestions":[],"question":"","scoreIntervals":[],"showUnitsOnLeft":false,"thresholdAnswers":[],)"
        R"("type":"undefined"})";

    EXPECT_EQ(json::encode(QVQuestion()), empty);
    EXPECT_EQ(recoded<QVQuestion>("{}"), empty);
}

TEST(QVQuestion, ItsSecondIdentifierIsReadFromTheKeyWithTheCapitalDOnly) {
    EXPECT_FALSE(json::decode<QVQuestion>(R"({"dragonId":"d1"})").dragonId);
    EXPECT_EQ(json::decode<QVQuestion>(R"({"dragonID":"d1"})").dragonId, "d1");
}

TEST(QVQuestion, EveryTypeIsReadFromItsTextAndWrittenAsIt) {
    for (const char* const type : {"barcodeScan", "date", "multipleAnswers", "numericOpenEnded", "openEnded",
                                   "ratingScale", "ratingScaleWithText", "singleAnswer", "time", "undefined"}) {
        const std::string member = std::string(R"("type":")") + type + "\"";
        EXPECT_NE(recoded<QVQuestion>("{" + member + "}").find(member), std::string::npos) << type;
    }
}

TEST(QVQuestion, ASliderIsNoType) {
    EXPECT_FALSE(json::fromRawValue<QVQuestion::QuestionType>("slider"));
    EXPECT_EQ(failureOf<QVQuestion>(R"({"type":"slider"})"), "type: expected a question type, found \"slider\"");
}

TEST(QVAnswer, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"answerOrder":1,"clientReference":"ref","created":2,"displayText":"Yes","displayTextKey":"yes",)"
        R"("key":"a1","modified":3,"nextQuestionKey":"q2","owners":{"client":"k1"},)"
        R"("photoCaptureOptions":{"allowFlashToggle":false,"defaultFlashState":true,"exampleImage":"",)"
        R"("googleVisionOptionKey":"","mustProvidePhoto":false,"photoLevelType":"none","photoOverlayType":"none",)"
        R"("photoPromptText":""},"questionKey":"q1","score":4,"version":5})";

    const auto answer = json::decode<QVAnswer>(text);

    EXPECT_EQ(answer.answerOrder, 1);
    EXPECT_EQ(answer.clientReference, "ref");
    EXPECT_EQ(answer.created, 2);
    EXPECT_EQ(answer.displayText, "Yes");
    EXPECT_EQ(answer.displayTextKey, "yes");
    EXPECT_EQ(answer.key, "a1");
    EXPECT_EQ(answer.modified, 3);
    EXPECT_EQ(answer.nextQuestionKey, "q2");
    ASSERT_TRUE(answer.owners);
    EXPECT_EQ(answer.owners->client, "k1");
    ASSERT_TRUE(answer.photoCaptureOptions);
    EXPECT_TRUE(answer.photoCaptureOptions->defaultFlashState);
    EXPECT_EQ(answer.questionKey, "q1");
    EXPECT_EQ(answer.score, 4);
    EXPECT_EQ(answer.version, 5);
    EXPECT_EQ(json::encode(answer), text);
}

TEST(QVAnswer, ANewOneIsEmpty) {
    const std::string empty =
        R"({"answerOrder":0,"clientReference":"","displayText":"","displayTextKey":"","nextQuestionKey":"",)"
        R"("questionKey":""})";

    EXPECT_EQ(json::encode(QVAnswer()), empty);
    EXPECT_EQ(recoded<QVAnswer>("{}"), empty);
}

TEST(QVAnswer, AnOrderThatIsATextFailsIt) {
    EXPECT_EQ(failureOf<QVAnswer>(R"({"answerOrder":"1"})"), "answerOrder: expected an integer, found \"1\"");
}

} // namespace
} // namespace quorvane
