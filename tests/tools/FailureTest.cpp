#include <set>

#include <gtest/gtest.h>

#include "tools/Failure.h"

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

} // namespace
} // namespace quorvane::tool
