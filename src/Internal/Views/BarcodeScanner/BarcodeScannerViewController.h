#pragma once

#include <QPointer>
#include <QVariant>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "Internal/Views/Backdrop.h"
#include "Internal/Views/BarcodeScanner/BarcodeScannerView.h"
#include "Internal/Views/ViewController.h"
#include "Platform/CaptureUI.h"
#include "Platform/Lifetime.h"

QT_BEGIN_NAMESPACE
class QPropertyAnimation;
QT_END_NAMESPACE

namespace quorvane::capture {

/// The barcode scanner screen. It tells the host's delegate what the camera view tells it, but for a success: that it
/// tells half a second later, after it left the screen.
class BarcodeScannerViewController final : public ViewController,
                                           public BarcodeScannerViewControllerType,
                                           public BarcodeScannerDelegate {
public:
    /// Of the frame that the user aims with, in widths of the container.
    static constexpr double frameWidthInContainer = 0.75;
    static constexpr int greenMilliseconds = 200;
    static constexpr std::chrono::milliseconds successDelay{500};

    /// As a host gets it, with all thirteen types. Null when the bundle has no interface file.
    [[nodiscard]] static std::shared_ptr<BarcodeScannerViewController> make(const Devices& devices);

    BarcodeScannerViewController(InterfaceFile interfaceFile, const Devices& devices);
    ~BarcodeScannerViewController() override;

    /// Replaces the camera view's own once the view is loaded.
    std::vector<platform::BarcodeType> metadataObjectTypes;

    [[nodiscard]] BarcodeScannerView& barcodeScannerView() { return *scannerView; }

    /// The session stops at the beginning of it.
    void dismiss(bool animated) override;

    void scanningDidFail() override;
    void scanningDidStop() override;
    void scanningSucceeded(const std::string& code) override;

protected:
    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewWillLayoutSubviews() override;
    void viewDidLayoutSubviews() override;
    void viewDidDisappear() override;
    void releaseDevices() override;
    void closeRequested() override { cancelTapped(); }

private:
    void cancelTapped();
    /// The part of the container that the frame takes.
    [[nodiscard]] QRectF frameInContainer() const;
    void showState(const char* name);

    ItemPointer<BarcodeScannerView> scannerView;
    /// Behind the camera's picture.
    ItemPointer<Backdrop> backdrop;
    // Items of the interface file, once it is loaded.
    QQuickItem* containerView = nullptr;
    QQuickItem* scanlineView = nullptr;
    QQuickItem* scannerFrameView = nullptr;
    QObject* scannerFrameWidth = nullptr;
    QVariant scanlineColor;
    QPointer<QPropertyAnimation> turningGreen;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
