#pragma once

#include <chrono>
#include <string>
#include <utility>

#include "Platform/HTTPTransport.h"

namespace quorvane::testing {

/// What a scripted transport does with one request.
struct ScriptedAnswer {
    enum class Kind {
        /// `result` arrives.
        result,
        /// Nothing arrives: the request times out.
        never,
        /// The request goes on to the real transport, which must be there.
        forward,
    };
    Kind kind = Kind::result;
    platform::HTTPTransport::Result result;
    /// Virtual time until the result arrives. Zero: as soon as the main queue gets to it.
    std::chrono::nanoseconds delay{0};

    /// An answer with that status and body.
    [[nodiscard]] static ScriptedAnswer with(int status, std::string body = {}) {
        ScriptedAnswer answer;
        answer.result = platform::HTTPResponse{status, std::move(body)};
        return answer;
    }

    /// Status 200 with that body.
    [[nodiscard]] static ScriptedAnswer json(std::string body) { return with(200, std::move(body)); }

    /// No answer, but an error.
    [[nodiscard]] static ScriptedAnswer failure(platform::TransportError::Kind reason,
                                                std::string message = "A scripted failure.") {
        ScriptedAnswer answer;
        answer.result = platform::TransportError{reason, std::move(message)};
        return answer;
    }

    [[nodiscard]] static ScriptedAnswer never() {
        ScriptedAnswer answer;
        answer.kind = Kind::never;
        return answer;
    }

    [[nodiscard]] static ScriptedAnswer forward() {
        ScriptedAnswer answer;
        answer.kind = Kind::forward;
        return answer;
    }

    /// The same answer, @p time later.
    [[nodiscard]] ScriptedAnswer after(std::chrono::nanoseconds time) const {
        ScriptedAnswer answer = *this;
        answer.delay += time;
        return answer;
    }
};

} // namespace quorvane::testing
