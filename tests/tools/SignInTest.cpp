#include <csignal>
#include <tuple>

#include <sys/socket.h>
#include <unistd.h>

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

TEST_F(SignInTest, AHomeThatCannotBeUsedIsAFailureInsteadOfASignInThatNothingKeeps) {
    serve();
    const std::string file = makeFile("no-folder", "a file");

    for (const std::string& path : {file, file + "/below", std::string("/proc/no-home")}) {
        const Ended ended = runPlain({"sign-in", "--home", path, "--data-port", std::to_string(service->dataPort()),
                                      "--identity-port", std::to_string(service->identityPort())});

        EXPECT_EQ(ended.exitStatus, 1) << path;
        EXPECT_EQ(ended.output, "") << path;
        EXPECT_TRUE(ended.errors.starts_with("quorvane: the home directory " + path + " cannot be used: "))
            << ended.errors;
        EXPECT_EQ(linesOf(ended.errors).size(), 1U) << ended.errors;
    }
    EXPECT_TRUE(service->requests().empty());
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

/// A home with tokens that have expired, so that two refreshes begin at once: one for the configuration, one for the
/// user.
class ExpiredSignIn : public SignInTest {
protected:
    void expire() {
        ASSERT_EQ(run({"sign-in"}).exitStatus, 0);
        const auto platform = platform::NativePlatform::make({.home = home});
        platform->preferences().setInteger(preference::accessTokenExpiry, 1);
    }

    AnyCodable::Dictionary stored() { return objectIn(run({"device", "--json"}).document(), "stored"); }
};

TEST_F(ExpiredSignIn, TheFlagIsAsBeforeWhenAnotherRefreshIsStillUnderWay) {
    serve({"/token:delay=400ms:skip=2:count=1"});
    expire();

    const Ended ended = run({"sign-in"});

    EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
    EXPECT_EQ(requestsFor("/token"), 3U) << "a sign-in and two refreshes, each to its end";
    EXPECT_EQ(stored().at("quorvane_background_tracking"), AnyCodable(true));
}

TEST_F(ExpiredSignIn, WhatItSaysIsWhatIsKeptWhenOneOfTwoRefreshesFails) {
    serve({"/token:status=500:skip=1:count=1"});
    expire();

    const Ended ended = run({"sign-in"});

    const AnyCodable::Dictionary kept = stored();
    const bool isKept = kept.count("quorvane_access_token") == 1 && numberIn(kept, "qourvane_access_token_expiry") > 1;
    EXPECT_EQ(ended.exitStatus, isKept ? 0 : 1) << ended.errors;
    EXPECT_EQ(ended.errors.find("ERROR_SERVER") != std::string::npos, !isKept) << ended.errors;
}

TEST_F(ExpiredSignIn, WhoeverInterruptsItFindsTheHomeAsItWas) {
    serve();
    expire();
    const AnyCodable::Dictionary before = stored();
    const HeldPort silent(HeldPort::Use::listening);

    const Running running = start({"sign-in", "--home", home, "--data-port", std::to_string(service->dataPort()),
                                   "--identity-port", std::to_string(silent.number())});
    const int connection = accept4(silent.socketHandle(), nullptr, nullptr, SOCK_CLOEXEC);
    char first = 0;
    EXPECT_EQ(read(connection, &first, 1), 1) << "a refresh is under way";
    EXPECT_EQ(kill(running.process, SIGTERM), 0);
    const Ended ended = finish(running);
    close(connection);

    EXPECT_EQ(ended.exitStatus, 128 + SIGTERM);
    EXPECT_EQ(ended.errors, "");
    const AnyCodable::Dictionary after = stored();
    for (const auto& [key, value] : before) {
        EXPECT_EQ(after.at(key), value) << key;
    }
    EXPECT_EQ(run({"sign-in"}).exitStatus, 0);
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
