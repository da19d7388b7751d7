#include "Internal/Views/Devices/QtCameras.h"

#include <QMediaDevices>

#include "Internal/Views/Devices/QtCamera.h"

namespace quorvane::capture {

std::shared_ptr<platform::Camera> QtCameras::defaultCamera() {
    const QList<QCameraDevice> all = QMediaDevices::videoInputs();
    if (all.isEmpty()) {
        return nullptr;
    }
    for (const QCameraDevice& device : all) {
        if (device.position() == QCameraDevice::BackFace) {
            return std::make_shared<QtCamera>(device);
        }
    }
    const QCameraDevice usual = QMediaDevices::defaultVideoInput();
    return std::make_shared<QtCamera>(usual.isNull() ? all.first() : usual);
}

} // namespace quorvane::capture
