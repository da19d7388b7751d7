#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sandbox/Message.h"
#include "sandbox/RoutePath.h"

namespace quorvane::sandbox::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

TEST(RoutePath, APathWithoutWildcardsMatchesItself) {
    EXPECT_THAT(matchPath("/config", "/config"), Optional(IsEmpty()));
    EXPECT_THAT(matchPath("/config", "/con%66ig"), Optional(IsEmpty()));
    EXPECT_THAT(matchPath("/", "/"), Optional(IsEmpty()));
    for (const char* path : {"/Config", "/config/", "//config", "/confi", "/", "", "config"}) {
        EXPECT_FALSE(matchPath("/config", path)) << path;
    }
}

TEST(RoutePath, AWildcardTakesOneDecodedSegment) {
    constexpr auto pattern = "/tasks/*/responses";
    EXPECT_THAT(matchPath(pattern, "/tasks/a/responses"), Optional(ElementsAre("a")));
    EXPECT_THAT(matchPath(pattern, "/tasks/a%2Fb%3F%20%C5%BE/responses"), Optional(ElementsAre("a/b? ž")));
    EXPECT_THAT(matchPath(pattern, "/tasks/../responses"), Optional(ElementsAre("..")));
    EXPECT_THAT(matchPath(pattern, "/tasks/a+b/responses"), Optional(ElementsAre("a+b")));
    EXPECT_THAT(matchPath(pattern, "/tasks/*/responses"), Optional(ElementsAre("*")));
    for (const char* path : {"/tasks//responses", "/tasks/a/b/responses", "/tasks/responses", "/tasks%2Fa%2Fresponses",
                             "/tasks/a/responses/"}) {
        EXPECT_FALSE(matchPath(pattern, path)) << path;
    }
}

TEST(RoutePath, APathThatCannotBeDecodedIsRefused) {
    for (const char* path : {"/%", "/%4", "/%zz", "/%ff"}) {
        EXPECT_THROW(std::ignore = matchPath("/*", path), Refusal) << path;
    }
}

} // namespace
} // namespace quorvane::sandbox::test
