#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Core/PreferenceKeys.h"
#include "Core/QVLogger.h"
#include "testing/InstalledPlatform.h"
#include "testing/RecordingDelegate.h"

namespace quorvane {

/// A test on a simulated platform of its own, which is the one in use.
class SimulatedTest : public ::testing::Test {
protected:
    using Answer = quorvane::testing::ScriptedAnswer;
    using Transport = platform::TransportError::Kind;

    [[nodiscard]] quorvane::testing::MemoryPreferences& preferences() { return phone->preferences(); }
    [[nodiscard]] quorvane::testing::ScriptedTransport& transport() { return phone->transport(); }

    /// Seconds since 1970 on the simulated clock, which starts on a whole second.
    [[nodiscard]] std::int64_t now() { return platform::roundedSecondsSince1970(phone->clock().now()); }

    void store(std::string_view key, std::string_view text) { preferences().setString(key, text); }
    void store(std::string_view key, std::int64_t number) { preferences().setInteger(key, number); }

    void setLogLevel(QVLogLevel level) { store(preference::logLevel, static_cast<std::int64_t>(level)); }

    /// The messages that were logged so far, without their timestamps and background times.
    [[nodiscard]] std::vector<std::string> messages() {
        phone->runUntilIdle();
        std::vector<std::string> result;
        for (const std::string& line : phone->application().outputLines()) {
            static constexpr std::string_view intro = " Quorvane ";
            const std::size_t begin = line.find(intro) + intro.size();
            result.push_back(line.substr(begin, line.rfind(" | backgroundTimeRemaining = ") - begin));
        }
        return result;
    }

    /// The lines of the requests so far: "GET /config".
    [[nodiscard]] std::vector<std::string> requestLines() {
        std::vector<std::string> lines;
        for (const auto& request : transport().requests()) {
            lines.push_back(request.line());
        }
        return lines;
    }

    quorvane::testing::InstalledPlatform phone;
};

} // namespace quorvane
