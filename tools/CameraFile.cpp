#include "tools/CameraFile.h"

#include <utility>
#include <variant>

#include "tools/Failure.h"
#include "tools/Text.h"

namespace quorvane::tool {

std::shared_ptr<capture::FileCameras> camerasOf(const std::string& file, const capture::FileCameras::Options& options) {
    auto opened = capture::FileCameras::open(file, options);
    if (const auto* const error = std::get_if<platform::ImageError>(&opened)) {
        throw Failure(printable(error->message));
    }
    return std::get<std::shared_ptr<capture::FileCameras>>(std::move(opened));
}

void setErrorsAside(std::optional<ErrorsAside>& aside, const capture::FileCameras* file, const GlobalOptions& global) {
    if (file != nullptr && file->isVideo() && !global.logLevel) {
        aside.emplace();
    }
}

std::string problemOf(const capture::FileCameras* file) {
    return file != nullptr && !file->problem().empty() ? printable(file->problem())
                                                       : "there is no camera that can be used";
}

} // namespace quorvane::tool
