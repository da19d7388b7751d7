#include "Internal/Views/Devices/FileCameras.h"

#include <QFileInfo>
#include <QImageReader>
#include <utility>

#include "Internal/Views/Devices/PictureCamera.h"
#include "Internal/Views/Devices/VideoCamera.h"

namespace quorvane::capture {
namespace {

bool isPicture(const QString& path) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

} // namespace

using Opened = std::variant<std::shared_ptr<FileCameras>, platform::ImageError>;

FileCameras::FileCameras(std::string thePath, std::shared_ptr<const platform::Image> thePicture,
                         const Options& theOptions)
    : path(std::move(thePath)), picture(std::move(thePicture)), options(theOptions) {}

Opened FileCameras::open(const std::string& path) {
    return open(path, {});
}

Opened FileCameras::open(const std::string& path, const Options& options) {
    const QString name = QString::fromStdString(path);
    const QFileInfo file(name);
    // What is no file of some length is refused in the words for pictures.
    const bool isVideo = file.isFile() && file.isReadable() && file.size() > 0 && !isPicture(name);
    if (isVideo) {
        return std::shared_ptr<FileCameras>(new FileCameras(path, nullptr, options));
    }
    auto result = platform::QtImages::read(path);
    if (auto* const error = std::get_if<platform::ImageError>(&result)) {
        return std::move(*error);
    }
    return std::shared_ptr<FileCameras>(
        new FileCameras(path, std::get<std::shared_ptr<platform::Image>>(std::move(result)), options));
}

std::shared_ptr<platform::Camera> FileCameras::defaultCamera() {
    if (picture) {
        return std::make_shared<PictureCamera>(picture, options);
    }
    return std::make_shared<VideoCamera>(path, options, videoProblem);
}

} // namespace quorvane::capture
