#include "Core/QVStatus.h"

#include <array>

namespace quorvane {

std::string_view nameOf(QVStatus status) {
    static constexpr std::array<std::string_view, 19> names{
        "SUCCESS",
        "ERROR_BAD_REQUEST",
        "ERROR_FORBIDDEN",
        "ERROR_LOCATION",
        "ERROR_NETWORK",
        "ERROR_NOT_FOUND",
        "ERROR_PAYMENT_REQUIRED",
        "ERROR_PERMISSIONS",
        "ERROR_PUBLISHABLE_KEY",
        "ERROR_QUESTION_SUBMIT_FAILURE",
        "ERROR_RATE_LIMIT",
        "ERROR_SERIALIZATION",
        "ERROR_SERVER",
        "ERROR_TASK_CLAIM_FAILURE",
        "ERROR_TASK_OUT_OF_RANGE",
        "ERROR_TASK_RESPONSE_SUBMIT_FAILURE",
        "ERROR_UNAUTHORIZED",
        "ERROR_UNIMPLEMENTED",
        "ERROR_UNKNOWN",
    };
    const auto index = static_cast<std::size_t>(status);
    return index < names.size() ? names[index] : names.back();
}

} // namespace quorvane
