#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sandbox/Secrets.h"

namespace quorvane::sandbox::test {
namespace {

TEST(Secrets, Base64URLHasNoPaddingAndNoPlusOrSlash) {
    EXPECT_EQ(base64URL(""), "");
    EXPECT_EQ(base64URL("f"), "Zg");
    EXPECT_EQ(base64URL("fo"), "Zm8");
    EXPECT_EQ(base64URL("foo"), "Zm9v");
    EXPECT_EQ(base64URL("foob"), "Zm9vYg");
    EXPECT_EQ(base64URL("\xff\xef\xbe"), "_---");
    EXPECT_EQ(base64URL("\xff\xff\xff"), "____");
}

TEST(Secrets, TheChallengeOfTheStandardsExample) {
    EXPECT_EQ(challengeFor("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"),
              "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM");
}

TEST(Secrets, TheSignatureOfAPublishedExample) {
    // RFC 4231, test case 2.
    EXPECT_EQ(base64URL(signature("Jefe", "what do ya want for nothing?")),
              "W9zBRr9gdU5qBCQmCJV1x1oAPwidJzmDnexYuWTsOEM");
}

TEST(Secrets, TokensAre43CharactersAndNeverTheSame) {
    std::set<std::string> tokens;
    for (int i = 0; i < 100; ++i) {
        tokens.insert(randomToken());
    }
    EXPECT_EQ(tokens.size(), 100U);
    EXPECT_THAT(tokens, ::testing::Each(::testing::MatchesRegex("[-_A-Za-z0-9]{43}")));
}

} // namespace
} // namespace quorvane::sandbox::test
