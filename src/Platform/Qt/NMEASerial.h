#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>
#include <memory>

#include "Platform/Qt/SentenceDevice.h"

namespace quorvane::platform::qt {

/// What comes in on a serial port. When the other end is gone the channel is finished.
class NMEASerial final : public SentenceDevice {
public:
    NMEASerial(QString path, int baudRate);
    ~NMEASerial() override;

    bool open(OpenMode mode) override;
    void close() override;

private:
    [[nodiscard]] bool refuse(const QString& why);
    [[nodiscard]] bool setUp() const;
    void take();

    const QString device;
    const int speed;
    int handle = -1;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace quorvane::platform::qt
