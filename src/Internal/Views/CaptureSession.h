#pragma once

#include <QPointer>
#include <functional>
#include <memory>

#include "Internal/Views/CameraPreview.h"
#include "Internal/Views/MetadataOutput.h"
#include "Platform/Camera.h"
#include "Platform/Lifetime.h"

namespace quorvane::capture {

/// Leads the frames of one camera to a preview and to a recogniser. Main thread only.
class CaptureSession {
public:
    CaptureSession() = default;
    CaptureSession(const CaptureSession&) = delete;
    CaptureSession& operator=(const CaptureSession&) = delete;
    /// Stops.
    ~CaptureSession();

    /// A session takes one input, a camera that no other session uses.
    [[nodiscard]] bool canAddInput(const platform::Camera& camera) const;
    void addInput(std::shared_ptr<platform::Camera> camera);

    /// A session takes one output, which has a reader.
    [[nodiscard]] bool canAddOutput(const MetadataOutput& output) const;
    void addOutput(std::shared_ptr<MetadataOutput> output);

    /// The preview, which may go before the session does.
    void setPreview(CameraPreview& thePreview) { preview = &thePreview; }

    /// Without an input nothing comes. @p cameraFailed is called on the main queue when the camera is taken away or
    /// breaks; the session has stopped then.
    void startRunning(std::function<void()> cameraFailed);
    void stopRunning();
    [[nodiscard]] bool isRunning() const { return running; }

private:
    std::shared_ptr<platform::Camera> input;
    std::shared_ptr<MetadataOutput> metadata;
    QPointer<CameraPreview> preview;
    bool running = false;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
