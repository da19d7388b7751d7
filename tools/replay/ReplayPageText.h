#pragma once

namespace quorvane::tool {

/// The style sheet and the script of a replay's page (page/replay.css and page/replay.js).
extern const char* const replayStyle;
extern const char* const replayScript;

} // namespace quorvane::tool
