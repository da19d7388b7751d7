#pragma once

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "Platform/HTTPTransport.h"
#include "Platform/Native/NativePlatform.h"
#include "support/RawServer.h"
#include "support/ScratchDirectory.h"

namespace quorvane::platform {

/// A native platform that sends to raw servers.
class NativeTransportTest : public ::testing::Test {
protected:
    using Result = HTTPTransport::Result;
    using Kind = TransportError::Kind;
    using RawServer = testing::RawServer;
    using RawAnswer = testing::RawAnswer;
    using Then = testing::RawAnswer::Then;

    NativeTransportTest() { launch({}); }

    void launch(NativeOptions options) {
        options.home = scratch.path();
        native = NativePlatform::make(std::move(options));
    }

    bool runUntil(const std::function<bool()>& done) {
        return native->mainQueue().runUntil(done, std::chrono::seconds(60));
    }

    Result exchange(HTTPRequest request) {
        std::optional<Result> answer;
        native->transport().send(std::move(request), [&](Result result) { answer = std::move(result); });
        EXPECT_TRUE(runUntil([&] { return answer.has_value(); }));
        return answer ? std::move(*answer) : Result(TransportError{.message = "no completion"});
    }

    Result get(const std::string& url) { return exchange({.url = url}); }

    /// The answer's status; 0 with a failure when none came.
    static int status(const Result& result) {
        if (const auto* error = std::get_if<TransportError>(&result)) {
            ADD_FAILURE() << error->message;
            return 0;
        }
        return std::get<HTTPResponse>(result).status;
    }

    static std::string body(const Result& result) {
        const auto* response = std::get_if<HTTPResponse>(&result);
        return response == nullptr ? "(no answer)" : response->body;
    }

    static ::testing::AssertionResult failedAs(const Result& result, Kind kind) {
        const auto* error = std::get_if<TransportError>(&result);
        if (error == nullptr) {
            return ::testing::AssertionFailure() << "status " << std::get<HTTPResponse>(result).status;
        }
        if (error->kind != kind || error->message.empty()) {
            return ::testing::AssertionFailure() << "kind " << static_cast<int>(error->kind) << ": " << error->message;
        }
        return ::testing::AssertionSuccess() << error->message;
    }

    const testing::ScratchDirectory scratch;
    std::shared_ptr<NativePlatform> native;
};

} // namespace quorvane::platform
