#include <fstream>

#include <gmock/gmock.h>

#include "Tasks/QVTask.h"
#include "support/ScratchDirectory.h"
#include "tools/InputFile.h"

namespace quorvane::tool {
namespace {

using ::testing::ElementsAre;

class InputFileTest : public ::testing::Test {
protected:
    std::string file(const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    std::vector<std::string> tasksIn(const std::string& content) {
        return objectsIn(file(content), "task", {"key", "questions"});
    }

    std::string failureOf(const std::string& content) {
        try {
            static_cast<void>(tasksIn(content));
        } catch (const Failure& failure) {
            EXPECT_FALSE(failure.status.has_value());
            return failure.what();
        }
        ADD_FAILURE() << "no failure for " << content;
        return "";
    }

    const testing::ScratchDirectory scratch;
    const std::string path = scratch.path() + "/file";
};

TEST_F(InputFileTest, ObjectsAreFoundInEveryFormInWhichTheProgramPrintsThem) {
    const std::string one = R"({"key":"t1","questions":[]})";
    const std::string two = R"({"key":"t2","questions":[]})";

    EXPECT_THAT(tasksIn(one), ElementsAre(one));
    EXPECT_THAT(tasksIn(R"({"status":"SUCCESS","task":)" + one + "}"), ElementsAre(one));
    EXPECT_THAT(tasksIn(R"({"distanceText":"near","task":)" + one + "}"), ElementsAre(one));
    EXPECT_THAT(tasksIn("[" + one + R"(,{"task":)" + two + "}]"), ElementsAre(one, two));
    EXPECT_THAT(tasksIn(R"({"near":{},"tasks":[{"task":)" + one + R"(},{"task":)" + two + "}]}"),
                ElementsAre(one, two));
}

TEST_F(InputFileTest, OneOfTheMarkersIsEnough) {
    EXPECT_THAT(tasksIn(R"([{"key":"t1"},{"questions":[]}])"), ElementsAre(R"({"key":"t1"})", R"({"questions":[]})"));
}

TEST_F(InputFileTest, WithoutAMarkerEveryObjectCounts) {
    EXPECT_THAT(objectsIn(file(R"({"questions":[{"key":"q1"},{}]})"), "question", {}),
                ElementsAre(R"({"key":"q1"})", "{}"));
}

TEST_F(InputFileTest, ValuesKeepTheFormInWhichTheyWereWritten) {
    const std::string one = R"({"distance":3.0,"key":null,"questions":[{"text":"ž \"\n"}]})";
    EXPECT_THAT(tasksIn(" " + one + "\n"), ElementsAre(one));
}

TEST_F(InputFileTest, WhatHoldsNoTaskSaysSo) {
    EXPECT_EQ(failureOf("[]"), path + " holds no task");
    EXPECT_EQ(failureOf(R"({"tasks":[]})"), path + " holds no task");
    for (const char* const content : {"7", "null", "\"task\"", "{}", R"({"task":{}})", R"([{"questions":[]},7])",
                                      R"({"tasks":[{"task":{"title":"t1"}}]})", R"({"tasks":{"questions":[]}})"}) {
        EXPECT_EQ(failureOf(content), path + " holds what is no task") << content;
    }
    EXPECT_TRUE(failureOf("{").starts_with(path + ": "));
    EXPECT_TRUE(failureOf("\xff").starts_with(path + ": "));
}

TEST_F(InputFileTest, AFileOfAnySizeIsReadAsItIs) {
    for (const std::size_t size : {0U, 1U, 65'535U, 65'536U, 65'537U, 300'000U}) {
        const std::string content(size, 'x');
        EXPECT_EQ(contentOf(file(content)), content) << size;
    }
}

TEST_F(InputFileTest, AModelThatCannotBeDecodedNamesTheFileAndThePlaceInIt) {
    try {
        static_cast<void>(modelIn<QVTask>("f.json", R"({"questions":[{"type":"slider"}]})"));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "f.json: questions[0].type: expected a question type, found \"slider\"");
    }
}

} // namespace
} // namespace quorvane::tool
