#pragma once

#include <string_view>

#include "JSON/RawValues.h"

namespace quorvane {

/// The state of a task and of a task response.
enum class QVTaskState : int { cancelled, completed, continue_, error, generated, invalid, rejected, running, unknown };

template <>
inline constexpr auto json::rawValues<QVTaskState> = json::textTable<QVTaskState>({
    {QVTaskState::cancelled, "cancelled"},
    {QVTaskState::completed, "completed"},
    {QVTaskState::continue_, "continue"},
    {QVTaskState::error, "error"},
    {QVTaskState::generated, "generated"},
    {QVTaskState::invalid, "invalid"},
    {QVTaskState::rejected, "rejected"},
    {QVTaskState::running, "running"},
    {QVTaskState::unknown, "unknown"},
});
template <>
inline constexpr std::string_view json::typeName<QVTaskState> = "task state";

} // namespace quorvane
