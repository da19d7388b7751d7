#include "Host.h"

#include <QFile>
#include <optional>

#include <Facade/Quorvane.h>
#include <Internal/Views/Capture.h>
#include <Platform/Image.h>
#include <Tasks/QVQuestion.h>

using quorvane::Quorvane;

void Host::scan() {
    scanner = Quorvane::createBarcodeScanner();
    scanner->delegate = shared_from_this();
    quorvane::capture::present(*scanner, *window);
}

void Host::takePhoto() {
    // An application has its questions from a task.
    const auto question = std::make_shared<quorvane::QVQuestion>();
    question->photoCaptureOptions = std::make_shared<quorvane::QVPhotoCaptureOptions>();
    question->photoCaptureOptions->allowFlashToggle = true;
    question->photoCaptureOptions->photoOverlayType = quorvane::QVPhotoOverlayType::circle_square;
    picker = Quorvane::createImagePicker(question);
    picker->delegate = shared_from_this();
    quorvane::capture::present(*picker, *window);
}

void Host::scanningDidFail() {
    tell("There is no camera that can be used.");
}

void Host::scanningSucceeded(const std::string& code) {
    tell("Barcode: " + QString::fromStdString(code));
}

void Host::imagePickerDidTakePicture(std::shared_ptr<const quorvane::platform::Image> picture) {
    const std::optional<std::string> jpeg = picture->jpeg(0.9);
    QFile file("photo.jpg");
    const bool isWritten = jpeg && file.open(QFile::WriteOnly) &&
                           file.write(jpeg->data(), qint64(jpeg->size())) == qint64(jpeg->size()) && file.flush();
    tell(isWritten ? QString("photo.jpg: %1 x %2 pixels").arg(picture->width()).arg(picture->height())
                   : "The photo cannot be written.");
    picker->dismiss(true);
}

void Host::imagePickerDidFail() {
    tell("There is no camera that can be used.");
}

void Host::tell(const QString& theText) {
    text = theText;
    Q_EMIT resultChanged();
}
