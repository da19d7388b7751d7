#pragma once

#include <string_view>

#include "Core/QVStatus.h"
#include "Tracking/LocationSource.h"
#include "Tracking/Observed.h"
#include "testing/PhoneEvents.h"

/// What the values of a decision are called in its log.
namespace quorvane::testing {

using quorvane::nameOf;
[[nodiscard]] std::string_view nameOf(observed::Fix::Outcome outcome);
[[nodiscard]] std::string_view nameOf(SyncDecision::Rule rule);
[[nodiscard]] std::string_view nameOf(SyncDecision::Force force);
[[nodiscard]] std::string_view nameOf(observed::Tracking::Cause cause);
[[nodiscard]] std::string_view nameOf(observed::UpdateTimer::Change change);
[[nodiscard]] std::string_view nameOf(observed::Service::Kind kind);
[[nodiscard]] std::string_view nameOf(observed::BackgroundGrant::Change change);
[[nodiscard]] std::string_view nameOf(observed::Shutdown::Change change);
[[nodiscard]] std::string_view nameOf(observed::Send::Change change);
[[nodiscard]] std::string_view nameOf(QVEventType type);
[[nodiscard]] std::string_view nameOf(platform::LocationAuthorization status);
[[nodiscard]] std::string_view nameOf(platform::LocationError::Kind kind);
[[nodiscard]] std::string_view nameOf(phone::AppState state);

} // namespace quorvane::testing
