#pragma once

#include <QRectF>
#include <memory>
#include <optional>
#include <vector>

#include "Internal/Views/CameraPreview.h"
#include "Internal/Views/Capture.h"
#include "Internal/Views/CaptureSession.h"
#include "Platform/BarcodeReader.h"
#include "Platform/CaptureUI.h"

namespace quorvane::capture {

/// A camera's picture in which barcodes are looked for. Main thread only.
class BarcodeScannerView final : public CameraPreview {
public:
    explicit BarcodeScannerView(Devices theDevices);

    /// What is recognised, from the next `setup` on.
    std::vector<platform::BarcodeType> metadataObjectTypes = {
        platform::BarcodeType::qr, platform::BarcodeType::ean8, platform::BarcodeType::ean13,
        platform::BarcodeType::pdf417, platform::BarcodeType::upce};
    /// On a success it hears of the code first, and once the session has stopped that scanning did.
    std::weak_ptr<BarcodeScannerDelegate> delegate;
    /// None before the first `setup`.
    std::shared_ptr<CaptureSession> captureSession;

    /// Makes a new session, which is there even where the delegate is told that its set-up failed. It does not run yet.
    void setup();
    /// Runs the session, if there is one.
    void start();
    /// Stops it, if there is one.
    void stop();

    /// Ends the session, if there is one, and waits for the frame that is being read.
    void tearDown();

    /// The part of this view that the user aims with; none: all of it.
    void setAim(const std::optional<QRectF>& part);

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    /// Whether the session has all that it needs.
    bool setUp(CaptureSession& session);
    void metadataReceived(const std::vector<platform::Barcode>& codes);
    void passAimOn();

    const Devices devices;
    std::shared_ptr<MetadataOutput> output;
    std::optional<QRectF> aim;
};

} // namespace quorvane::capture
