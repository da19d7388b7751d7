#include "Internal/Views/BarcodeScanner/BarcodeScannerView.h"

#include <QPointer>
#include <string>
#include <utility>

#include "Platform/SystemSound.h"

namespace quorvane::capture {
namespace {

void tell(const std::weak_ptr<BarcodeScannerDelegate>& delegate, void (BarcodeScannerDelegate::*what)()) {
    if (const auto told = delegate.lock()) {
        ((*told).*what)();
    }
}

} // namespace

BarcodeScannerView::BarcodeScannerView(Devices theDevices) : devices(std::move(theDevices)) {}

void BarcodeScannerView::setup() {
    setClip(true);
    output = nullptr;
    const auto session = std::make_shared<CaptureSession>();
    captureSession = session;
    if (setUp(*session)) {
        session->setPreview(*this);
    } else {
        tell(delegate, &BarcodeScannerDelegate::scanningDidFail);
    }
}

bool BarcodeScannerView::setUp(CaptureSession& session) {
    const std::shared_ptr<platform::Camera> camera = devices.cameras ? devices.cameras->defaultCamera() : nullptr;
    if (!camera || !camera->open() || !session.canAddInput(*camera)) {
        return false;
    }
    session.addInput(camera);
    auto made =
        std::make_shared<MetadataOutput>(devices.readers ? devices.readers->make(metadataObjectTypes) : nullptr);
    if (!session.canAddOutput(*made)) {
        return false;
    }
    session.addOutput(made);
    made->setHandler([view = QPointer(this)](const std::vector<platform::Barcode>& codes) {
        if (view) {
            view->metadataReceived(codes);
        }
    });
    output = std::move(made);
    passAimOn();
    return true;
}

void BarcodeScannerView::start() {
    if (captureSession) {
        // Of a set-up that failed the delegate was told.
        captureSession->startRunning([view = QPointer(this), isSetUp = output != nullptr] {
            if (view && isSetUp) {
                tell(view->delegate, &BarcodeScannerDelegate::scanningDidFail);
            }
        });
    }
}

void BarcodeScannerView::stop() {
    if (captureSession) {
        captureSession->stopRunning();
    }
}

void BarcodeScannerView::tearDown() {
    output = nullptr;
    captureSession = nullptr;
}

void BarcodeScannerView::metadataReceived(const std::vector<platform::Barcode>& codes) {
    if (codes.empty() || !codes.front().text) {
        return;
    }
    // Whoever is told may let go of the session and of this view.
    const std::string code = *codes.front().text;
    const std::shared_ptr<CaptureSession> session = captureSession;
    const std::weak_ptr<BarcodeScannerDelegate> told = delegate;
    const std::shared_ptr<platform::SystemSound> sounds = devices.sounds;
    if (const auto first = told.lock()) {
        first->scanningSucceeded(code);
    }
    session->stopRunning();
    tell(told, &BarcodeScannerDelegate::scanningDidStop);
    if (sounds) {
        sounds->play(platform::SystemSound::vibration);
    }
}

void BarcodeScannerView::setAim(const std::optional<QRectF>& part) {
    aim = part;
    passAimOn();
}

void BarcodeScannerView::geometryChange(const QRectF& now, const QRectF& before) {
    CameraPreview::geometryChange(now, before);
    passAimOn();
}

void BarcodeScannerView::passAimOn() {
    if (output) {
        output->setAim(aim ? std::optional(MetadataOutput::Aim{size(), *aim}) : std::nullopt);
    }
}

} // namespace quorvane::capture
