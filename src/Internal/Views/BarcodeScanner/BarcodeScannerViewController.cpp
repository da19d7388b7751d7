#include "Internal/Views/BarcodeScanner/BarcodeScannerViewController.h"

#include <QColor>
#include <QPropertyAnimation>
#include <QQmlProperty>
#include <utility>

#include "Internal/Views/EvenOddMask.h"
#include "Internal/Views/PictureView.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"
#include "Platform/Precondition.h"

namespace quorvane::capture {

using platform::BarcodeType;

std::shared_ptr<BarcodeScannerViewController> BarcodeScannerViewController::make(const Devices& devices) {
    PictureView::registerType();
    std::optional<InterfaceFile> file = InterfaceFile::named("BarcodeScannerViewController");
    if (!file) {
        return nullptr;
    }
    auto controller = std::make_shared<BarcodeScannerViewController>(*std::move(file), devices);
    controller->metadataObjectTypes = {
        BarcodeType::aztec,  BarcodeType::code128,    BarcodeType::code39,          BarcodeType::code39Mod43,
        BarcodeType::code93, BarcodeType::dataMatrix, BarcodeType::interleaved2of5, BarcodeType::itf14,
        BarcodeType::qr,     BarcodeType::ean8,       BarcodeType::ean13,           BarcodeType::pdf417,
        BarcodeType::upce};
    return controller;
}

BarcodeScannerViewController::BarcodeScannerViewController(InterfaceFile interfaceFile, const Devices& devices)
    : ViewController(std::move(interfaceFile)), scannerView(new BarcodeScannerView(devices)), backdrop(new Backdrop) {
    backdrop->setParentItem(scannerView.get());
    backdrop->setZ(-1);
}

BarcodeScannerViewController::~BarcodeScannerViewController() {
    // The view goes a little later, and not at all where the application ends first.
    scannerView->tearDown();
}

void BarcodeScannerViewController::viewDidLoad() {
    containerView = &connection(*content(), "containerView");
    scanlineView = &connection(*content(), "scanlineView");
    scannerFrameView = &connection(*content(), "scannerFrameView");
    scannerFrameWidth = &connection<QObject>(*content(), "scannerFrameWidth");
    connectAction(*content(), "cancelControl", lifetime.guard([this] { cancelTapped(); }));
    scanlineColor = scanlineView->property("color");
    scannerFrameWidth->setProperty("constant", frameWidthInContainer * containerView->width());
    scannerView->metadataObjectTypes = metadataObjectTypes;
    scannerView->delegate = std::shared_ptr<BarcodeScannerDelegate>(shared_from_this(), this);
    scannerView->setParentItem(&view());
    scannerView->stackBefore(content());
    QQmlProperty::write(scannerFrameView, "border.width", 1.0);
    QQmlProperty::write(scannerFrameView, "border.color", QColor(Qt::white));
    const auto frameMoved = [this] { setNeedsLayout(); };
    QObject::connect(scannerFrameView, &QQuickItem::xChanged, &receiver, frameMoved);
    QObject::connect(scannerFrameView, &QQuickItem::yChanged, &receiver, frameMoved);
    QObject::connect(scannerFrameView, &QQuickItem::widthChanged, &receiver, frameMoved);
    QObject::connect(scannerFrameView, &QQuickItem::heightChanged, &receiver, frameMoved);
}

void BarcodeScannerViewController::viewWillAppear() {
    const int mine = showing();
    delete turningGreen.data();
    scanlineView->setProperty("color", scanlineColor);
    showState("scanning");
    scannerView->clear();
    scannerView->setup();
    // A host that hears of a failure may have dismissed the screen, or shown it anew.
    if (mine == showing() && isPresented()) {
        scannerView->start();
    }
}

void BarcodeScannerViewController::viewWillLayoutSubviews() {
    scannerView->setPosition({});
    scannerView->setSize(view().size());
    backdrop->setSize(view().size());
}

void BarcodeScannerViewController::viewDidLayoutSubviews() {
    const QRectF frame = frameInContainer();
    setEvenOddMask(*containerView, containerView->boundingRect(), frame);
    scannerView->setAim(containerView->mapRectToItem(scannerView.get(), frame));
}

QRectF BarcodeScannerViewController::frameInContainer() const {
    return scannerFrameView->mapRectToItem(containerView, scannerFrameView->boundingRect());
}

void BarcodeScannerViewController::viewDidDisappear() {
    // The camera is free for others while the screen is away.
    scannerView->tearDown();
}

void BarcodeScannerViewController::dismiss(bool animated) {
    if (isPresented()) {
        scannerView->stop();
    }
    ViewController::dismiss(animated);
}

void BarcodeScannerViewController::releaseDevices() {
    scannerView->tearDown();
}

void BarcodeScannerViewController::showState(const char* name) {
    content()->setState(name);
}

void BarcodeScannerViewController::scanningDidFail() {
    showState("failed");
    if (const auto host = delegate.lock()) {
        host->scanningDidFail();
    }
}

void BarcodeScannerViewController::scanningDidStop() {
    if (const auto host = delegate.lock()) {
        host->scanningDidStop();
    }
}

void BarcodeScannerViewController::scanningSucceeded(const std::string& code) {
    showState("found");
    turningGreen = new QPropertyAnimation(scanlineView, "color", scanlineView);
    turningGreen->setDuration(greenMilliseconds);
    turningGreen->setEndValue(QColor(Qt::green));
    turningGreen->start(QAbstractAnimation::DeleteWhenStopped);
    platform::current().mainQueue().postAfter(successDelay, lifetime.guard([this, code, scanned = showing()] {
        const std::shared_ptr<ViewController> self = shared_from_this();
        // A showing that began since then is another scan's.
        if (scanned == showing()) {
            dismiss(true);
        }
        if (const auto host = delegate.lock()) {
            host->scanningSucceeded(code);
        }
    }));
}

void BarcodeScannerViewController::cancelTapped() {
    const std::shared_ptr<ViewController> self = shared_from_this();
    scannerView->stop();
    const int cancelled = showing();
    scanningDidStop();
    // A showing that the host began in that call is another one.
    if (cancelled == showing()) {
        dismiss(true);
    }
}

} // namespace quorvane::capture
