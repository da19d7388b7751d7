#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sandbox/Message.h"

namespace quorvane::sandbox {

struct Photo {
    /// "image/jpeg" or "image/png".
    std::string type;
    std::string bytes;
};

/// The photo in a data URL in base64. Throws a `Refusal` for any other text, and where the bytes do not begin as a file
/// of their type does.
[[nodiscard]] Photo photoOf(std::string_view dataURL);

/// The photo as it is served; refuses with 404 when there is none. Nothing in it may run.
[[nodiscard]] Answer photoAnswer(std::optional<Photo> photo);

} // namespace quorvane::sandbox
