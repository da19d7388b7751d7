#pragma once

#include <memory>

#include "Platform/Camera.h"

namespace quorvane::capture {

/// The cameras that the toolkit knows. It holds no camera itself.
class QtCameras final : public platform::Cameras {
public:
    /// The one on the device's back where there is one, else the usual one.
    [[nodiscard]] std::shared_ptr<platform::Camera> defaultCamera() override;
};

} // namespace quorvane::capture
