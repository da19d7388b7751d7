#pragma once

#include <memory>
#include <string>

namespace quorvane {

/// Receives what a barcode scanner found. Held weakly; called on the main thread.
class BarcodeScannerDelegate {
public:
    BarcodeScannerDelegate() = default;
    BarcodeScannerDelegate(const BarcodeScannerDelegate&) = delete;
    BarcodeScannerDelegate& operator=(const BarcodeScannerDelegate&) = delete;
    virtual ~BarcodeScannerDelegate() = default;

    /// The camera or the recogniser could not be set up.
    virtual void scanningDidFail() = 0;
    /// Scanning ended: cancelled, or about to report a success.
    virtual void scanningDidStop() = 0;
    /// @p code is the barcode's text.
    virtual void scanningSucceeded(const std::string& code) = 0;
};

/// A barcode scanner screen, ready to be presented by the host.
class BarcodeScannerViewControllerType {
public:
    BarcodeScannerViewControllerType() = default;
    BarcodeScannerViewControllerType(const BarcodeScannerViewControllerType&) = delete;
    BarcodeScannerViewControllerType& operator=(const BarcodeScannerViewControllerType&) = delete;
    virtual ~BarcodeScannerViewControllerType() = default;

    std::weak_ptr<BarcodeScannerDelegate> delegate;
};

namespace platform {

/// A camera screen that takes one photo, ready to be presented by the host.
class ImagePicker {
public:
    ImagePicker() = default;
    ImagePicker(const ImagePicker&) = delete;
    ImagePicker& operator=(const ImagePicker&) = delete;
    virtual ~ImagePicker() = default;
};

} // namespace platform

} // namespace quorvane
