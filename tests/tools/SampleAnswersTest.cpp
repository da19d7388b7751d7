#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "tools/demo/SampleAnswers.h"

namespace quorvane::tool {
namespace {

TEST(SampleAnswers, FitEveryTypeOfQuestionAndTheWrongOnesNone) {
    QVTask task;
    task.key = "t1";
    const std::string choices = R"("answers":[{"key":"a1"},{"key":"a2"},{"key":"a3"}])";
    for (const std::string& text :
         {R"({"type":"singleAnswer",)" + choices + "}",
          R"({"type":"multipleAnswers","minMultipleAnswers":1,"maxMultipleAnswers":2,)" + choices + "}",
          R"({"type":"multipleAnswers","maxMultipleAnswers":1,)" + choices + "}",
          std::string(R"({"type":"numericOpenEnded","allowDecimals":true,"minValue":0,"maxValue":20})"),
          std::string(R"({"type":"numericOpenEnded","minValue":7,"maxValue":20})"),
          std::string(R"({"type":"ratingScale","numStars":3})"),
          std::string(R"({"type":"ratingScaleWithText","numStars":5})"),
          std::string(R"({"type":"openEnded","minValue":3,"maxValue":200})"), std::string(R"({"type":"date"})"),
          std::string(R"({"type":"time"})"), std::string(R"({"type":"barcodeScan"})")}) {
        const auto question = json::decode<QVQuestion>(text);

        EXPECT_FALSE(check(task, question, fittingAnswer(question)).has_value()) << text;
        EXPECT_TRUE(check(task, question, wrongAnswer(question)).has_value()) << text;
    }
}

} // namespace
} // namespace quorvane::tool
