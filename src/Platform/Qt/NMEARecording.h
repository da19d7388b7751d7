#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QIODevice>
#include <QTimer>
#include <chrono>
#include <optional>

namespace quorvane::platform::qt {

/// A file of NMEA sentences as a receiver sent them: those of one moment become readable together, and those of the
/// next moment when as much time has passed as lies between them. Time that goes back costs no time. A second after the
/// last one the channel is finished.
class NMEARecording final : public QIODevice {
public:
    explicit NMEARecording(const QString& path);

    bool open(OpenMode mode) override;
    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override { return ready.size() + QIODevice::bytesAvailable(); }
    [[nodiscard]] bool canReadLine() const override { return ready.contains('\n') || QIODevice::canReadLine(); }

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    void proceed();
    void waitUntilDue();

    QFile file;
    /// What can be read by now.
    QByteArray ready;
    /// The first sentence of the next moment.
    QByteArray held;
    /// The time of day of the sentences that are given now.
    std::optional<std::chrono::milliseconds> moment;
    /// When those were due, since the beginning.
    std::chrono::milliseconds due{0};
    QElapsedTimer elapsed;
    QTimer timer;
    bool isOver = false;
};

/// The time of day that an NMEA sentence tells; none for other text, and for a sentence whose checksum is wrong.
[[nodiscard]] std::optional<std::chrono::milliseconds> timeToldBy(const QByteArray& sentence);

} // namespace quorvane::platform::qt
