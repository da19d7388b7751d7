#pragma once

#include <string_view>

#pragma push_macro("ERROR")
#undef ERROR

namespace quorvane {

/// The result code of every completion.
enum class QVStatus : int {
    /// Any HTTP status from 200 to 399, or an operation that succeeded without a request.
    SUCCESS = 0,
    /// HTTP 400.
    ERROR_BAD_REQUEST,
    /// HTTP 403.
    ERROR_FORBIDDEN,
    /// No usable device location could be obtained.
    ERROR_LOCATION,
    /// No answer arrived: refused, reset, truncated, timed out, too large.
    ERROR_NETWORK,
    /// HTTP 404.
    ERROR_NOT_FOUND,
    /// HTTP 402.
    ERROR_PAYMENT_REQUIRED,
    /// The permission to use the location is missing.
    ERROR_PERMISSIONS,
    /// The library has not been initialised with a key, or the key was rejected.
    ERROR_PUBLISHABLE_KEY,
    /// An answer to a task's question could not be submitted.
    ERROR_QUESTION_SUBMIT_FAILURE,
    /// HTTP 429.
    ERROR_RATE_LIMIT,
    /// An answer's body could not be decoded into its model.
    ERROR_SERIALIZATION,
    /// HTTP 500 to 599.
    ERROR_SERVER,
    /// A task claim was refused.
    ERROR_TASK_CLAIM_FAILURE,
    /// The user is too far from the task's place.
    ERROR_TASK_OUT_OF_RANGE,
    /// A task response could not be submitted.
    ERROR_TASK_RESPONSE_SUBMIT_FAILURE,
    /// HTTP 401.
    ERROR_UNAUTHORIZED,
    /// The operation exists in the interface but is not provided.
    ERROR_UNIMPLEMENTED,
    /// Anything else.
    ERROR_UNKNOWN,
};

/// The case's own name, for every case. The facade's `fromStatus` knows only some of them.
[[nodiscard]] std::string_view nameOf(QVStatus status);

} // namespace quorvane

#pragma pop_macro("ERROR")
