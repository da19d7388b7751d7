#pragma once

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "API/QVAuthService.h"
#include "API/QVConfigService.h"
#include "API/QVEndpoints.h"
#include "API/QuorvaneAPI.h"
#include "Facade/Quorvane.h"
#include "Platform/HTTPTransport.h"
#include "Platform/Native/NativePlatform.h"
#include "Platform/PreferencesStore.h"
#include "Search/QVSearchService.h"
#include "sandbox/Sandbox.h"
#include "support/Calls.h"
#include "support/ScratchDirectory.h"

namespace quorvane {

/// The library on the native platform, with a key, calling a sandbox over real sockets.
class RealServiceFixture : public ::testing::Test {
protected:
    RealServiceFixture() {
        auto started = sandbox::Sandbox::start();
        if (const auto* const failure = std::get_if<std::string>(&started)) {
            ADD_FAILURE() << *failure;
            std::abort();
        }
        service = std::move(std::get<0>(started));
        startPlatform();
    }
    ~RealServiceFixture() override { platform::install(nullptr); }

    /// The application starts, or starts again with what it stored.
    void startPlatform() {
        platform::NativeOptions options;
        options.home = home.path();
        options.output = [this](std::string_view line) { output.emplace_back(line); };
        options.connectTo = {{3000, static_cast<std::uint16_t>(service->dataPort())},
                             {4001, static_cast<std::uint16_t>(service->identityPort())}};
        platform::install(nullptr);
        phone = platform::NativePlatform::make(std::move(options));
        platform::install(phone);
        preferences().setString("quorvane_access_key", "access-key");
        preferences().setString("quorvane_user_id", "rider");
        QuorvaneAPI::shared().setEndpoints(QVEndpoints(Environment::LOCAL));
    }

    [[nodiscard]] platform::PreferencesStore& preferences() { return phone->preferences(); }

    /// Runs the main queue until @p done holds, for a generous while.
    [[nodiscard]] bool runUntil(const std::function<bool()>& done) {
        return phone->mainQueue().runUntil(done, std::chrono::seconds(60));
    }

    /// Runs everything that is due, for as long as one more exchange with the service takes: an answer that came
    /// twice would have come by then.
    void settle() {
        bool answered = false;
        platform::HTTPRequest request;
        request.url = "http://localhost:3000/settle";
        phone->transport().send(request, [&](const auto&) { answered = true; });
        EXPECT_TRUE(runUntil([&] { return answered; }));
    }

    using Outcome = Calls<QVStatus, bool>;

    /// What a sign-in came to.
    [[nodiscard]] Outcome::Call signIn() {
        const Outcome outcome;
        QVAuthService::shared().handleAuthenticateFlow("rider", "access-key", QVAuthService::redirectUri,
                                                       QuorvaneAPI::shared().auth, outcome.record());
        EXPECT_TRUE(runUntil([&] { return outcome.count() > 0; }));
        settle();
        EXPECT_EQ(outcome.count(), 1U);
        return outcome[0];
    }

    /// Lets the stored access token have expired, for the library and for the service.
    void expireTokens() {
        preferences().setInteger("qourvane_access_token_expiry", 1);
        service->expireTokens();
    }

    void addFault(const std::string& text) {
        auto fault = sandbox::Fault::parse(text);
        ASSERT_TRUE(std::holds_alternative<sandbox::Fault>(fault)) << text;
        service->addFault(std::get<sandbox::Fault>(fault));
    }

    /// How many requests for @p path have reached the service.
    [[nodiscard]] std::size_t requestCount(const std::string& path) const {
        const auto requests = service->requests();
        return static_cast<std::size_t>(
            std::count_if(requests.begin(), requests.end(), [&](const auto& one) { return one.path() == path; }));
    }

    const quorvane::testing::ScratchDirectory home;
    std::vector<std::string> output;
    std::unique_ptr<sandbox::Sandbox> service;
    std::shared_ptr<platform::NativePlatform> phone;
    const platform::Location here{sandbox::SandboxOptions::defaultCenter};
};

/// Faults of every kind that the service can produce, and what an operation ends with.
struct ServiceFault {
    std::string text;
    QVStatus status;
};

inline std::vector<ServiceFault> serviceFaults() {
    using enum QVStatus;
    std::vector<ServiceFault> all{
        {"drop", ERROR_NETWORK},
        {"reset", ERROR_NETWORK},
        {"truncate-body", ERROR_NETWORK},
        {"truncate-body=0", ERROR_NETWORK},
        {"truncate-body=1", ERROR_NETWORK},
        {"truncate-headers", ERROR_NETWORK},
        {"truncate-headers=5", ERROR_NETWORK},
        {"lost-reply", ERROR_NETWORK},
        {"invalid-json", ERROR_SERIALIZATION},
        {"expired-token", ERROR_UNAUTHORIZED},
        {"delay=5ms", SUCCESS},
        {"delay=5ms:drop", ERROR_NETWORK},
        {"status=200", SUCCESS},
        {"status=201", SUCCESS},
        {"status=301", SUCCESS},
        {"status=302", SUCCESS},
        {"status=399", SUCCESS},
        {"status=400", ERROR_BAD_REQUEST},
        {"status=401", ERROR_UNAUTHORIZED},
        {"status=402", ERROR_PAYMENT_REQUIRED},
        {"status=403", ERROR_FORBIDDEN},
        {"status=404", ERROR_NOT_FOUND},
        {"status=405", ERROR_UNKNOWN},
        {"status=429", ERROR_RATE_LIMIT},
        {"status=500", ERROR_SERVER},
        {"status=503", ERROR_SERVER},
        {"status=599", ERROR_SERVER},
        {"status=600", ERROR_UNKNOWN},
        {"status=999", ERROR_UNKNOWN},
    };
    return all;
}

/// An operation of the data service.
struct DataOperation {
    std::string name;
    std::string path;
    /// Starts it; the status it ends with goes to the function.
    std::function<void(std::function<void(QVStatus)>)> start;
};

inline std::vector<DataOperation> dataOperations(const platform::Location& here) {
    const auto statusOnly = [](auto report) { return [report](QVStatus status, const auto&...) { report(status); }; };
    return {
        {"configuration", "/config",
         [=](auto report) {
             QuorvaneAPI::shared().request(GetConfigEndpoint("device", "install", "rider"), statusOnly(report));
         }},
        {"tasks near", "/generate/tasks",
         [=](auto report) { QVSearchService::shared().tasks(here, 3000, 10, statusOnly(report)); }},
        {"tasks of a campaign", "/generate/tasks",
         [=](auto report) { QVSearchService::shared().tasks(CampaignId{"c1"}, statusOnly(report)); }},
        {"tasks of a place", "/generate/tasks",
         [=](auto report) { QVSearchService::shared().tasks(PlaceId{"p1"}, statusOnly(report)); }},
        {"places near", "/locations/find",
         [=](auto report) {
             QVSearchService::shared().places(here, 3000, std::nullopt, std::nullopt, std::nullopt, 10,
                                              statusOnly(report));
         }},
        {"sync", "/locations/find", [=](auto report) { Quorvane::Tracking::once(here, statusOnly(report)); }},
    };
}

} // namespace quorvane
