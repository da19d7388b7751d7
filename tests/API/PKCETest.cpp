#include <array>
#include <set>

#include "API/PKCE.h"
#include "support/SimulatedTest.h"

namespace quorvane {
namespace {

class PKCETest : public SimulatedTest {};

std::string encoded(std::string_view bytes) {
    return pkce::base64URL(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

TEST_F(PKCETest, TheChallengeOfTheExampleOfTheStandardIsTheOneThatItNames) {
    EXPECT_EQ(pkce::generateChallenge("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"),
              "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM");
}

TEST_F(PKCETest, TextIsBase64WithTheAlphabetOfURLsAndNoPadding) {
    EXPECT_EQ(encoded(""), "");
    EXPECT_EQ(encoded("f"), "Zg");
    EXPECT_EQ(encoded("fo"), "Zm8");
    EXPECT_EQ(encoded("foo"), "Zm9v");
    EXPECT_EQ(encoded("foob"), "Zm9vYg");
    EXPECT_EQ(encoded("fooba"), "Zm9vYmE");
    EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
    EXPECT_EQ(encoded("\xFB\xFF\xFE"), "-__-");
    EXPECT_EQ(encoded(std::string(3, '\0')), "AAAA");
}

TEST_F(PKCETest, AVerifierHas58To171CharactersOfTheURLAlphabet) {
    static constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    for (int i = 0; i < 2000; ++i) {
        const std::string verifier = pkce::generateVerifier();
        ASSERT_GE(verifier.size(), 58U);
        ASSERT_LE(verifier.size(), 171U);
        ASSERT_EQ(verifier.find_first_not_of(alphabet), std::string::npos) << verifier;
    }
}

TEST_F(PKCETest, EveryByteCountFrom43To128Occurs) {
    std::set<std::size_t> byteCounts;
    for (int i = 0; i < 4000; ++i) {
        byteCounts.insert(pkce::generateVerifier().size() * 3 / 4);
    }

    EXPECT_EQ(*byteCounts.begin(), 43U);
    EXPECT_EQ(*byteCounts.rbegin(), 128U);
    EXPECT_EQ(byteCounts.size(), 86U);
}

TEST_F(PKCETest, NoVerifierComesTwice) {
    std::set<std::string> verifiers;
    for (int i = 0; i < 1000; ++i) {
        verifiers.insert(pkce::generateVerifier());
    }

    EXPECT_EQ(verifiers.size(), 1000U);
}

TEST_F(PKCETest, AChallengeHas43Characters) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(pkce::generateChallenge(pkce::generateVerifier()).size(), 43U);
    }
}

} // namespace
} // namespace quorvane
