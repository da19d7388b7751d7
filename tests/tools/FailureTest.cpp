#include <set>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tools/Failure.h"
#include "tools/Terminal.h"
#include "tools/commands/CommandLine.h"
#include "tools/commands/Program.h"

namespace quorvane::tool {
namespace {

TEST(Failure, EveryStatusHasASentenceOfItsOwn) {
    std::set<std::string_view> sentences;
    for (int status = 0; status <= static_cast<int>(QVStatus::ERROR_UNKNOWN); ++status) {
        const std::string_view sentence = sentenceFor(static_cast<QVStatus>(status));
        EXPECT_FALSE(sentence.empty()) << status;
        EXPECT_FALSE(sentence.ends_with('.')) << sentence;
        EXPECT_TRUE(sentences.insert(sentence).second) << sentence;
    }
}

TEST(Failure, OneThatNobodyForesawIsADocumentToo) {
    CommandLine line;
    line.global.json = true;
    line.command = [](const GlobalOptions&, Terminal&) -> AnyCodable::Dictionary {
        throw std::runtime_error("the disk is on fire");
    };
    Terminal terminal;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();

    const int exitStatus = runCommand(line, terminal);

    EXPECT_EQ(terminal.flush(), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "{\"error\":\"the disk is on fire\"}\n");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "quorvane: the disk is on fire\n");
    EXPECT_EQ(exitStatus, 1);
}

TEST(Failure, AWrongFormIsLeftToTheProgram) {
    CommandLine line;
    line.command = [](const GlobalOptions&, Terminal&) -> AnyCodable::Dictionary { throw WrongForm("no such thing"); };
    Terminal terminal;

    EXPECT_THROW(runCommand(line, terminal), WrongForm);
}

} // namespace
} // namespace quorvane::tool
