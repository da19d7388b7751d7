#include <gtest/gtest.h>

#include "JSON/JSON.h"
#include "tools/Questions.h"

namespace quorvane::tool {
namespace {

std::string textFor(const std::string& question) {
    return answerText(json::decode<QVQuestion>(question));
}

TEST(Questions, WhatAnAnswerHasToBeIsSaidInAFewWords) {
    EXPECT_EQ(textFor(R"({"type":"singleAnswer"})"), "one choice");
    EXPECT_EQ(textFor(R"({"type":"singleAnswer","hasOther":true})"), "one choice, or another answer");
    EXPECT_EQ(textFor(R"({"type":"multipleAnswers","minMultipleAnswers":0,"maxMultipleAnswers":3})"), "0 to 3 choices");
    EXPECT_EQ(textFor(R"({"type":"multipleAnswers","maxMultipleAnswers":3})"), "1 to 3 choices");
    EXPECT_EQ(textFor(R"({"type":"multipleAnswers","minMultipleAnswers":2,"maxMultipleAnswers":2})"), "2 choices");
    EXPECT_EQ(textFor(R"({"type":"multipleAnswers","answers":[{},{}]})"), "1 to 2 choices");
    EXPECT_EQ(textFor(R"({"type":"numericOpenEnded"})"), "whole number");
    EXPECT_EQ(textFor(R"({"type":"numericOpenEnded","allowDecimals":true,"minValue":-5})"), "number of at least -5");
    EXPECT_EQ(textFor(R"({"type":"openEnded","minValue":3,"maxValue":200})"), "text from 3 to 200 characters");
    EXPECT_EQ(textFor(R"({"type":"openEnded","maxValue":200})"), "text of at most 200 characters");
    EXPECT_EQ(textFor(R"({"type":"openEnded","isOptional":true})"), "text, optional");
    EXPECT_EQ(textFor(R"({"type":"openEnded","mustPickSuggestion":true})"), "one of the suggestions");
    EXPECT_EQ(textFor(R"({"type":"ratingScale","numStars":5})"), "1 to 5 stars");
    EXPECT_EQ(textFor(R"({"type":"ratingScaleWithText"})"), "stars, at least one");
    EXPECT_EQ(textFor(R"({"type":"date","photoCaptureOptions":{"mustProvidePhoto":true}})"), "date, with a photo");
    EXPECT_EQ(textFor(R"({"type":"time","photoCaptureOptions":{}})"), "time, a photo if you like");
    EXPECT_EQ(textFor(R"({"type":"barcodeScan"})"), "barcode");
    EXPECT_EQ(textFor("{}"), "of no known type");
}

TEST(Questions, AQuestionIsCalledByItsKeyAndItsText) {
    const auto task = json::decode<QVTask>(R"({"questions":[{"key":"q1","question":"Open?"},{"question":"?"}]})");

    EXPECT_EQ(questionText(task, "q1"), "q1: Open?");
    EXPECT_EQ(questionText(task, "q2"), "q2");
}

TEST(Questions, ATaskWithoutATitleIsCalledByItsKey) {
    EXPECT_EQ(titleOf(json::decode<QVTask>(R"({"title":"Shelf\u001b[2J","key":"t1"})")), "Shelf?[2J");
    EXPECT_EQ(titleOf(json::decode<QVTask>(R"({"key":"t1"})")), "t1");
    EXPECT_EQ(titleOf(QVTask()), "an untitled task");
}

} // namespace
} // namespace quorvane::tool
