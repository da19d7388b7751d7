#pragma once

#include <QByteArray>
#include <QIODevice>

namespace quorvane::platform::qt {

/// A device that is read as text comes in.
class SentenceDevice : public QIODevice {
public:
    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override { return ready.size() + QIODevice::bytesAvailable(); }
    [[nodiscard]] bool canReadLine() const override { return ready.contains('\n') || QIODevice::canReadLine(); }

protected:
    /// No more than this waits to be read.
    static constexpr qsizetype mostAhead = 65536;

    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

    /// What can be read by now.
    QByteArray ready;
};

} // namespace quorvane::platform::qt
