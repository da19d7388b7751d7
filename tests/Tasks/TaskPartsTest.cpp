#include <gtest/gtest.h>

#include "Models/ModelTesting.h"
#include "Tasks/QVEstimatedTime.h"
#include "Tasks/QVKeyedListPointer.h"
#include "Tasks/QVPhotoCaptureOptions.h"
#include "Tasks/QVScoreInterval.h"
#include "Tasks/QVTaskResponseCount.h"

namespace quorvane {
namespace {

TEST(QVEstimatedTime, EveryKeyIsReadAndWritten) {
    const auto time = json::decode<QVEstimatedTime>(R"({"max":20,"min":10})");

    EXPECT_EQ(time.max, 20);
    EXPECT_EQ(time.min, 10);
    EXPECT_EQ(json::encode(time), R"({"max":20,"min":10})");
}

TEST(QVEstimatedTime, ANewOneIsZero) {
    EXPECT_EQ(json::encode(QVEstimatedTime()), R"({"max":0,"min":0})");
}

TEST(QVEstimatedTime, HalfAMinuteFailsIt) {
    EXPECT_EQ(failureOf<QVEstimatedTime>(R"({"max":0.5})"), "max: expected an integer, found 0.5");
}

TEST(QVTaskResponseCount, EveryKeyIsReadAndWritten) {
    const auto count = json::decode<QVTaskResponseCount>(R"({"actual":3,"wanted":5})");

    EXPECT_EQ(count.actual, 3);
    EXPECT_EQ(count.wanted, 5);
    EXPECT_EQ(json::encode(count), R"({"actual":3,"wanted":5})");
}

TEST(QVTaskResponseCount, ANewOneIsZero) {
    EXPECT_EQ(json::encode(QVTaskResponseCount()), R"({"actual":0,"wanted":0})");
}

TEST(QVTaskResponseCount, ANullCountFailsIt) {
    EXPECT_EQ(failureOf<QVTaskResponseCount>(R"({"actual":null})"), "actual: expected an integer, found null");
}

TEST(QVScoreInterval, EveryKeyIsReadAndWritten) {
    const auto interval = json::decode<QVScoreInterval>(R"({"lowerBound":-1,"upperBound":7,"score":2})");

    EXPECT_EQ(interval.lowerBound, -1);
    EXPECT_EQ(interval.upperBound, 7);
    EXPECT_EQ(interval.score, 2);
    EXPECT_EQ(json::encode(interval), R"({"lowerBound":-1,"upperBound":7,"score":2})");
}

TEST(QVScoreInterval, ANewOneIsOpenOnBothSides) {
    EXPECT_EQ(json::encode(QVScoreInterval()), R"({"score":0})");
    EXPECT_EQ(recoded<QVScoreInterval>(R"({"lowerBound":null})"), R"({"score":0})");
}

TEST(QVScoreInterval, ABoundBeyondAnIntegerFailsIt) {
    EXPECT_EQ(failureOf<QVScoreInterval>(R"({"upperBound":1e19})"), "upperBound: expected an integer, found 1e+19");
}

TEST(QVKeyedListPointer, EveryKeyIsReadAndWritten) {
    const auto pointer = json::decode<QVKeyedListPointer>(R"({"nextKey":"q3","previousKey":"q1"})");

    EXPECT_EQ(pointer.nextKey, "q3");
    EXPECT_EQ(pointer.previousKey, "q1");
    EXPECT_EQ(json::encode(pointer), R"({"nextKey":"q3","previousKey":"q1"})");
}

TEST(QVKeyedListPointer, ANewOneHasEmptyKeys) {
    EXPECT_EQ(json::encode(QVKeyedListPointer()), R"({"nextKey":"","previousKey":""})");
}

TEST(QVKeyedListPointer, AKeyThatIsNoTextFailsIt) {
    EXPECT_EQ(failureOf<QVKeyedListPointer>(R"({"nextKey":[]})"), "nextKey: expected a text, found a list");
}

TEST(QVPhotoCaptureOptions, EveryKeyIsReadAndWritten) {
    const std::string text =
        R"({"allowFlashToggle":true,"defaultFlashState":true,"exampleImage":"shelf.png","googleVisionOptionKey":"v1",)"
        R"("mustProvidePhoto":true,"photoLevelType":"vertical","photoOverlayType":"circle_square",)"
        R"("photoPromptText":"Closer"})";

    const auto options = json::decode<QVPhotoCaptureOptions>(text);

    EXPECT_TRUE(options.allowFlashToggle);
    EXPECT_TRUE(options.defaultFlashState);
    EXPECT_EQ(options.exampleImage, "shelf.png");
    EXPECT_EQ(options.googleVisionOptionKey, "v1");
    EXPECT_TRUE(options.mustProvidePhoto);
    EXPECT_EQ(options.photoLevelType, QVPhotoCaptureOptions::LevelType::vertical);
    EXPECT_EQ(options.photoOverlayType, QVPhotoCaptureOptions::OverlayType::circle_square);
    EXPECT_EQ(options.photoPromptText, "Closer");
    EXPECT_EQ(json::encode(options), text);
}

TEST(QVPhotoCaptureOptions, NewOnesAskForNothing) {
    EXPECT_EQ(json::encode(QVPhotoCaptureOptions()),
              R"({"allowFlashToggle":false,"defaultFlashState":false,"exampleImage":"","googleVisionOptionKey":"",)"
              R"("mustProvidePhoto":false,"photoLevelType":"none","photoOverlayType":"none","photoPromptText":""})");
}

TEST(QVPhotoCaptureOptions, EveryLevelAndEveryOverlayIsReadFromItsTextAndWrittenAsIt) {
    for (const char* const level : {"none", "flat", "vertical"}) {
        const std::string member = std::string(R"("photoLevelType":")") + level + "\"";
        EXPECT_NE(recoded<QVPhotoCaptureOptions>("{" + member + "}").find(member), std::string::npos) << level;
    }
    for (const char* const overlay :
         {"none", "circle", "circle_square", "rectangle_horizontal", "rectangle_vertical", "square"}) {
        const std::string member = std::string(R"("photoOverlayType":")") + overlay + "\"";
        EXPECT_NE(recoded<QVPhotoCaptureOptions>("{" + member + "}").find(member), std::string::npos) << overlay;
    }
}

TEST(QVPhotoCaptureOptions, AnOverlayThatIsNoneFailsThem) {
    EXPECT_EQ(failureOf<QVPhotoCaptureOptions>(R"({"photoOverlayType":"star"})"),
              "photoOverlayType: expected a photo overlay type, found \"star\"");
}

TEST(QVPhotoCaptureOptions, AFlagThatIsAnIntegerFailsThem) {
    EXPECT_EQ(failureOf<QVPhotoCaptureOptions>(R"({"mustProvidePhoto":1})"),
              "mustProvidePhoto: expected a boolean, found 1");
}

} // namespace
} // namespace quorvane
