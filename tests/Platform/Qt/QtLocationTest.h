#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Platform/Qt/QtPlatform.h"
#include "Platform/contract/LocationRig.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform::qt {

/// Keeps failures with their sentences too.
class Listener : public contract::LocationListener {
public:
    void didFail(const LocationError& error) override {
        LocationListener::didFail(error);
        failures.push_back(error.message);
    }
    void didVisit(const Visit&) override { told.emplace_back("visit"); }

    std::vector<std::string> failures;
};

/// A Qt platform on a scratch home, with one manager and what it hears.
class QtLocationTest : public ::testing::Test {
protected:
    ~QtLocationTest() override { manager.reset(); }

    /// Starts the application, again where it runs.
    void launch(const PositionSource& source) {
        manager.reset();
        platform.reset();
        QtOptions options;
        options.native.home = home.path();
        options.native.output = [this](std::string_view line) { output.emplace_back(line); };
        options.positions = source;
        platform = QtPlatform::make(std::move(options));
        manager = platform->locationManagers().make();
        manager->setDelegate(&listener);
    }

    /// Also where what is waited for is no work of the queue.
    bool runUntil(const std::function<bool()>& done) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!done() && std::chrono::steady_clock::now() < deadline) {
            platform->mainQueue().runUntil(done, std::chrono::milliseconds(1));
        }
        return done();
    }
    bool runUntilFixes(std::size_t count) {
        return runUntil([this, count] { return listener.fixes.size() >= count; });
    }
    bool runUntilFailure() {
        return runUntil([this] { return !listener.failures.empty(); });
    }

    const testing::ScratchDirectory home;
    std::vector<std::string> output;
    Listener listener;
    std::shared_ptr<QtPlatform> platform;
    std::unique_ptr<LocationManager> manager;
};

} // namespace quorvane::platform::qt
