#include <tuple>

#include "Core/PreferenceKeys.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
#include "tools/PortTest.h"
#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class SignInTest : public ProgramTest {};

TEST_F(SignInTest, ASignInGoesThroughAuthorizeAndTokenAndSaysWho) {
    serve();

    const Ended ended = run({"sign-in"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(ended.errors, "");
    EXPECT_TRUE(ended.output.starts_with("signed in as ")) << ended.output;
    EXPECT_NE(ended.output.find("the access token is good for 1 h\n"), std::string::npos) << ended.output;
    EXPECT_EQ(requestsFor("/authorize"), 1U);
    EXPECT_EQ(requestsFor("/token"), 1U);
}

TEST_F(SignInTest, TheUserIsTheDevice) {
    serve();

    const AnyCodable::Dictionary signedIn = run({"sign-in", "--json"}).document();
    const AnyCodable::Dictionary device = run({"device", "--json"}).document();

    EXPECT_EQ(textIn(signedIn, "status"), "SUCCESS");
    EXPECT_EQ(textIn(signedIn, "userId"), textIn(device, "identifier"));
    EXPECT_GT(numberIn(signedIn, "accessTokenExpiry"), 1.7e9);
}

TEST_F(SignInTest, TokensThatAreStillGoodAreUsedWithoutAnotherSignIn) {
    serve();
    EXPECT_EQ(run({"sign-in"}).exitStatus, 0);

    EXPECT_EQ(run({"sign-in"}).exitStatus, 0);

    EXPECT_EQ(requestsFor("/authorize"), 1U);
    EXPECT_EQ(requestsFor("/token"), 1U);
}

TEST_F(SignInTest, TheLogGoesToStandardErrorForThisRunOnly) {
    serve();

    const Ended loud = run({"--log-level", "debug", "sign-in"});
    const Ended next = run({"sign-in"});

    EXPECT_NE(loud.errors.find(" Quorvane initializing | "), std::string::npos) << loud.errors;
    EXPECT_EQ(loud.output.find("initializing"), std::string::npos);
    EXPECT_EQ(next.errors, "");
    const AnyCodable::Dictionary stored = objectIn(run({"device", "--json"}).document(), "stored");
    EXPECT_EQ(stored.count("quorvane_log_level"), 0U);
}

TEST_F(SignInTest, TheLogLevelOfThisRunHidesTheStoredOneAndLeavesIt) {
    serve();
    platform::NativePlatform::make({.home = home})->preferences().setInteger(preference::logLevel, 4);

    const Ended silent = run({"--log-level", "none", "sign-in"});
    const Ended loud = run({"sign-in"});

    EXPECT_EQ(silent.errors, "");
    EXPECT_NE(loud.errors.find(" Quorvane initializing | "), std::string::npos) << loud.errors;
}

TEST_F(SignInTest, AHomeOfAnotherUserIsRefusedInsteadOfHangingForEver) {
    serve();
    platform::NativePlatform::make({.home = home})->preferences().setString(preference::userId, "somebody else");

    const Ended ended = run({"sign-in"});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.errors,
              "quorvane: the preferences in " + home.string() + " belong to another device; name another --home\n");
}

TEST_F(SignInTest, AServiceThatDoesNotListenIsAServerErrorThatNamesThePorts) {
    const HeldPort deaf(HeldPort::Use::deaf);
    const std::string port = std::to_string(deaf.number());

    const Ended ended = runPlain({"sign-in", "--home", home, "--data-port", port, "--identity-port", port});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors,
              "quorvane: ERROR_SERVER: the service failed, or gave no answer that could be read; is quorvane-sandbox "
              "running, on ports " +
                  port + " and " + port + "?\n");
}

/// A fault of the sandbox, and the full name of the status that it ends in.
using Trouble = std::tuple<std::string, std::string>;

class FailedSignIn : public ProgramTest, public ::testing::WithParamInterface<Trouble> {};

TEST_P(FailedSignIn, EndsWithOneAfterTheFirstOutcomeAndTellsItsStatus) {
    const auto& [fault, status] = GetParam();
    serve({fault});

    const Ended told = run({"sign-in"});
    const Ended asJSON = run({"sign-in", "--json"});

    EXPECT_EQ(told.exitStatus, 1);
    EXPECT_EQ(told.output, "");
    EXPECT_TRUE(told.errors.starts_with("quorvane: " + status + ": ")) << told.errors;
    EXPECT_EQ(linesOf(told.errors).size(), 1U);
    EXPECT_EQ(asJSON.exitStatus, 1);
    EXPECT_EQ(textIn(asJSON.document(), "status"), status);
    EXPECT_FALSE(textIn(asJSON.document(), "error").empty());
    EXPECT_EQ(asJSON.errors, told.errors);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FailedSignIn,
    ::testing::Values(Trouble{"/authorize:status=401", "ERROR_SERVER"}, Trouble{"/authorize:drop", "ERROR_SERVER"},
                      Trouble{"/authorize:invalid-json", "ERROR_SERVER"},
                      Trouble{"/token:status=401", "ERROR_UNAUTHORIZED"},
                      Trouble{"/token:status=404", "ERROR_NOT_FOUND"}, Trouble{"/token:status=429", "ERROR_RATE_LIMIT"},
                      Trouble{"/token:status=503", "ERROR_SERVER"}, Trouble{"/token:drop", "ERROR_NETWORK"},
                      Trouble{"/token:truncate-body", "ERROR_NETWORK"},
                      Trouble{"/token:invalid-json", "ERROR_SERIALIZATION"}));

} // namespace
} // namespace quorvane::tool
