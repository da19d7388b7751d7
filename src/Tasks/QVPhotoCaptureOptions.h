#pragma once

#include <string>

#include "JSON/CodingKeys.h"
#include "Tasks/QVPhotoCaptureTypes.h"

namespace quorvane {

/// How the camera screen takes the photo for a question or for an answer choice.
class QVPhotoCaptureOptions {
public:
    using LevelType = QVPhotoLevelType;
    using OverlayType = QVPhotoOverlayType;

    bool allowFlashToggle = false;
    bool defaultFlashState = false;
    std::string exampleImage;
    std::string googleVisionOptionKey;
    bool mustProvidePhoto = false;
    LevelType photoLevelType = LevelType::none;
    OverlayType photoOverlayType = OverlayType::none;
    std::string photoPromptText;

    static constexpr auto codingKeys =
        json::keys(json::key("allowFlashToggle", &QVPhotoCaptureOptions::allowFlashToggle),
                   json::key("defaultFlashState", &QVPhotoCaptureOptions::defaultFlashState),
                   json::key("exampleImage", &QVPhotoCaptureOptions::exampleImage),
                   json::key("googleVisionOptionKey", &QVPhotoCaptureOptions::googleVisionOptionKey),
                   json::key("mustProvidePhoto", &QVPhotoCaptureOptions::mustProvidePhoto),
                   json::key("photoLevelType", &QVPhotoCaptureOptions::photoLevelType),
                   json::key("photoOverlayType", &QVPhotoCaptureOptions::photoOverlayType),
                   json::key("photoPromptText", &QVPhotoCaptureOptions::photoPromptText));
};

} // namespace quorvane
