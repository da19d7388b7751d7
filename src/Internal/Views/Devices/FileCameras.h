#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "Platform/Camera.h"
#include "Platform/Qt/QtImages.h"

namespace quorvane::capture {

/// A picture or a video in a file, in the place of the device's camera. A picture is seen thirty times a second; a
/// video is seen as fast as it was taken, and after its end its last frame is, as a picture. A photo shows what is
/// seen. A video that cannot be decoded is a camera that breaks. Main thread only.
class FileCameras final : public platform::Cameras {
public:
    struct Options {
        /// Shows the file as a user holds up a code: upright in a frame of the shape 9:16, all of it in the middle,
        /// within three quarters of the frame's width. Else what the file holds fills the frame.
        bool isHeldUp = false;
        /// After so long a picture, or a video's last frame, is taken away, as a camera is that somebody unplugs.
        std::optional<std::chrono::nanoseconds> lasting;
    };

    /// An error for what cannot be read, and for a picture that cannot be decoded.
    [[nodiscard]] static std::variant<std::shared_ptr<FileCameras>, platform::ImageError> open(const std::string& path,
                                                                                               const Options& options);
    [[nodiscard]] static std::variant<std::shared_ptr<FileCameras>, platform::ImageError> open(const std::string& path);

    [[nodiscard]] bool isVideo() const { return picture == nullptr; }

    /// Why a video's camera broke; empty where none did.
    [[nodiscard]] std::string problem() const { return *videoProblem; }

    /// Each call answers another camera that sees the file from its beginning.
    [[nodiscard]] std::shared_ptr<platform::Camera> defaultCamera() override;

private:
    FileCameras(std::string thePath, std::shared_ptr<const platform::Image> thePicture, const Options& theOptions);

    const std::string path;
    /// None: the file is a video.
    const std::shared_ptr<const platform::Image> picture;
    const Options options;
    const std::shared_ptr<std::string> videoProblem = std::make_shared<std::string>();
};

} // namespace quorvane::capture
