#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QImage>
#include <QTemporaryDir>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <variant>

#include <gtest/gtest.h>

#include "Internal/Views/Devices/FileCameras.h"
#include "testing/InstalledPlatform.h"

namespace quorvane::capture {

/// A test with a folder for files and a virtual clock.
class DeviceTest : public ::testing::Test {
protected:
    [[nodiscard]] std::string pathOf(const std::string& name) const {
        return folder.filePath(QString::fromStdString(name)).toStdString();
    }

    [[nodiscard]] std::string makeFile(const std::string& name, const std::string& content) const {
        std::ofstream(pathOf(name), std::ios::binary) << content;
        return pathOf(name);
    }

    [[nodiscard]] std::string makePicture(const std::string& name, QSize size, const QColor& color) const {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(QString::fromStdString(pathOf(name))));
        return pathOf(name);
    }

    /// The camera of a file that can be opened.
    [[nodiscard]] std::shared_ptr<platform::Camera> cameraOf(const std::string& path,
                                                             const FileCameras::Options& options = {}) {
        auto opened = FileCameras::open(path, options);
        if (const auto* const error = std::get_if<platform::ImageError>(&opened)) {
            ADD_FAILURE() << error->message;
            return nullptr;
        }
        cameras = std::get<std::shared_ptr<FileCameras>>(opened);
        return cameras->defaultCamera();
    }

    /// Lets the toolkit work, and at this moment the library, until @p condition holds; false after twenty seconds.
    [[nodiscard]] bool waitFor(const std::function<bool()>& condition) {
        const QDeadlineTimer deadline(std::chrono::seconds(20));
        while (!condition()) {
            if (deadline.hasExpired()) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            static_cast<void>(world->runUntilIdle());
        }
        return true;
    }

    testing::InstalledPlatform world;
    QTemporaryDir folder;
    std::shared_ptr<FileCameras> cameras;
};

} // namespace quorvane::capture
