#include <cstdlib>
#include <fstream>

#include "Platform/Native/TLSServer.h"
#include "Platform/Native/TransportFixture.h"

namespace quorvane::platform {
namespace {

class NativeTransportTLS : public NativeTransportTest {
protected:
    /// What a GET to https://localhost gets from a server with this certificate, which is trusted or not.
    Result getFrom(TLSServer& server, bool trusted) {
        NativeOptions options;
        if (trusted) {
            options.certificateFile = scratch.path() + "/authority.pem";
            std::ofstream(options.certificateFile) << server.authority();
        }
        launch(std::move(options));
        return get("https://localhost:" + std::to_string(server.port()) + "/");
    }
};

TEST_F(NativeTransportTLS, AServerThatATrustedAuthorityVouchesForIsAnswered) {
    TLSServer server({});

    EXPECT_EQ(body(getFrom(server, true)), "secret");

    EXPECT_EQ(server.requests(), 1);
}

TEST_F(NativeTransportTLS, AServerThatNobodyVouchesForGetsNoRequest) {
    TLSServer server({});

    EXPECT_TRUE(failedAs(getFrom(server, false), Kind::connection));

    EXPECT_EQ(server.requests(), 0);
}

TEST_F(NativeTransportTLS, ACertificateForAnotherNameIsRefused) {
    TLSServer server({.name = "service.example"});

    EXPECT_TRUE(failedAs(getFrom(server, true), Kind::connection));

    EXPECT_EQ(server.requests(), 0);
}

TEST_F(NativeTransportTLS, ACertificateThatHasExpiredIsRefused) {
    TLSServer server({.days = -1});

    EXPECT_TRUE(failedAs(getFrom(server, true), Kind::connection));

    EXPECT_EQ(server.requests(), 0);
}

using NativeTransportTLSDeathTest = NativeTransportTLS;

TEST_F(NativeTransportTLSDeathTest, AProgramMayEndWithThePlatformInUseAndAConnectionOpen) {
    // The process that ends is a new one: a copy of this one must not start threads.
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    TLSServer server({});
    NativeOptions options;
    options.home = scratch.path();
    options.certificateFile = scratch.path() + "/authority.pem";
    std::ofstream(options.certificateFile) << server.authority();

    EXPECT_EXIT(
        {
            // Nobody but the library holds it.
            install(NativePlatform::make(options));
            auto& inUse = dynamic_cast<NativePlatform&>(current());
            bool isAnswered = false;
            inUse.transport().send({.url = "https://localhost:" + std::to_string(server.port()) + "/"},
                                   [&](const Result& result) { isAnswered = body(result) == "secret"; });
            inUse.mainQueue().runUntil([&] { return isAnswered; }, std::chrono::seconds(60));
            std::exit(isAnswered ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace quorvane::platform
