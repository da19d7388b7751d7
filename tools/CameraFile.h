#pragma once

#include <memory>
#include <string>

#include "Internal/Views/Devices/FileCameras.h"

namespace quorvane::tool {

/// A picture or video in the place of the device's camera. Throws a `Failure` when it cannot be read.
[[nodiscard]] std::shared_ptr<capture::FileCameras> camerasOf(const std::string& file,
                                                              const capture::FileCameras::Options& options);

/// Why no camera could be used, where @p file, which may be null, stood for one.
[[nodiscard]] std::string problemOf(const capture::FileCameras* file);

} // namespace quorvane::tool
