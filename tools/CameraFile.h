#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Internal/Views/Devices/FileCameras.h"
#include "tools/ErrorsAside.h"
#include "tools/Options.h"

namespace quorvane::tool {

/// A picture or video in the place of the device's camera. Throws a `Failure` when it cannot be read.
[[nodiscard]] std::shared_ptr<capture::FileCameras> camerasOf(const std::string& file,
                                                              const capture::FileCameras::Options& options);

/// Drops what the decoder of a video says, while @p aside lives. Who asks for a log gets all of it. @p file may be
/// null.
void setErrorsAside(std::optional<ErrorsAside>& aside, const capture::FileCameras* file, const GlobalOptions& global);

/// Why no camera could be used, where @p file, which may be null, stood for one.
[[nodiscard]] std::string problemOf(const capture::FileCameras* file);

} // namespace quorvane::tool
