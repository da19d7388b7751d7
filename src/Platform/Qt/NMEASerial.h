#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QSocketNotifier>
#include <QString>
#include <memory>

namespace quorvane::platform::qt {

/// What comes in on a serial port. When the other end is gone the channel is finished.
class NMEASerial final : public QIODevice {
public:
    NMEASerial(QString path, int baudRate);
    ~NMEASerial() override;

    bool open(OpenMode mode) override;
    void close() override;
    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override { return ready.size() + QIODevice::bytesAvailable(); }
    [[nodiscard]] bool canReadLine() const override { return ready.contains('\n') || QIODevice::canReadLine(); }

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    [[nodiscard]] bool refuse(const QString& why);
    [[nodiscard]] bool setUp() const;
    void take();

    const QString device;
    const int speed;
    int handle = -1;
    QByteArray ready;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace quorvane::platform::qt
