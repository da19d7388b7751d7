#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include <Platform/CaptureUI.h>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

/// What an application does with the camera screens: it asks for one, shows it, and hears what came of it.
///
/// The screens know their delegate weakly, so the application keeps this object, and the screen that is shown.
class Host final : public QObject,
                   public std::enable_shared_from_this<Host>,
                   public quorvane::BarcodeScannerDelegate,
                   public quorvane::platform::ImagePickerDelegate {
    Q_OBJECT
    Q_PROPERTY(QString result READ result NOTIFY resultChanged)

public:
    [[nodiscard]] QString result() const { return text; }
    /// The window that the screens are shown over.
    void setWindow(QQuickWindow* theWindow) { window = theWindow; }

    Q_INVOKABLE void scan();
    Q_INVOKABLE void takePhoto();

    void scanningDidFail() override;
    void scanningDidStop() override {}
    void scanningSucceeded(const std::string& code) override;

    void imagePickerDidTakePicture(std::shared_ptr<const quorvane::platform::Image> picture) override;
    void imagePickerDidFail() override;

Q_SIGNALS:
    void resultChanged();

private:
    void tell(const QString& theText);

    QString text;
    QQuickWindow* window = nullptr;
    std::shared_ptr<quorvane::BarcodeScannerViewControllerType> scanner;
    std::shared_ptr<quorvane::platform::ImagePicker> picker;
};
