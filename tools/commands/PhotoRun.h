#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Accelerometer.h"
#include "Platform/Image.h"
#include "Tasks/QVQuestion.h"
#include "tools/Options.h"

namespace quorvane::tool {

struct PhotoOptions {
    /// A file with a question, with several, or with a task.
    std::string question;
    /// Which of several, from 1 on; none: the only one that asks for a photo.
    std::optional<std::size_t> number;
    /// A picture or a video; empty: the device's camera.
    std::string camera;
    /// What the accelerometer measures for as long as the screen is there; none: the device's own.
    std::optional<platform::Acceleration> level;
    /// The photo's file: PNG where its name ends so, else JPEG.
    std::string output = "photo.jpg";
    /// Shows the screen to the user, who takes the photo.
    bool hasWindow = false;
};

/// Opens the camera screen for @p question and answers the photo. Without a window the shutter is pressed as soon as
/// it can be. Throws a `NothingFound` when the user cancels, and a `Failure` when no photo can be taken; in builds
/// without the camera screens that is always so.
[[nodiscard]] std::shared_ptr<const platform::Image> takePhoto(const QVQuestion& question, const PhotoOptions& options,
                                                               const GlobalOptions& global, Terminal& terminal);

} // namespace quorvane::tool
