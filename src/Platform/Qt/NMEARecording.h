#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <chrono>
#include <optional>

#include "Platform/Qt/SentenceDevice.h"

namespace quorvane::platform::qt {

/// A file of NMEA sentences as a receiver sent them: those of one moment become readable together, and those of the
/// next moment when as much time has passed as lies between them. Time that goes back costs no time. A second after the
/// last one the channel is finished.
class NMEARecording final : public SentenceDevice {
public:
    explicit NMEARecording(const QString& path);

    bool open(OpenMode mode) override;

private:
    void proceed();
    void waitUntilDue();

    QFile file;
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
