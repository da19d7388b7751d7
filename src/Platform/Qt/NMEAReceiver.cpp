#include "Platform/Qt/NMEAReceiver.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QNmeaPositionInfoSource>
#include <QTcpSocket>
#include <QTime>
#include <utility>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "Platform/Clock.h"
#include "Platform/Qt/NMEARecording.h"
#include "Platform/Qt/NMEASerial.h"
#include "Platform/Qt/PositionInfo.h"

namespace quorvane::platform::qt {
namespace {

/// Metres: the accuracy of a fix of which no dilution is told.
constexpr double defaultAccuracy = 10;
/// Qt multiplies it with twice the dilution: 5 metres for each unit of that.
constexpr double rangeError = 2.5;

/// Bytes of a connection that wait to be read.
constexpr qint64 mostWaiting = 65536;

/// Lets the system find out within a minute that the other side is gone without a word.
void watchConnection(qintptr descriptor) {
    const auto set = [number = static_cast<int>(descriptor)](int level, int option, int value) {
        setsockopt(number, level, option, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
#ifdef TCP_KEEPIDLE
    set(IPPROTO_TCP, TCP_KEEPIDLE, 30);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
    set(IPPROTO_TCP, TCP_KEEPCNT, 3);
#endif
}

/// What Qt makes of the sentences. It wants dates, which not all receivers tell, and drops what is older than the last:
/// each time that is earlier than the one before counts as one of the next day.
class Sentences final : public QNmeaPositionInfoSource {
public:
    Sentences() : QNmeaPositionInfoSource(RealTimeMode) { setUserEquivalentRangeError(rangeError); }

protected:
    bool parsePosInfoFromNmeaData(const char* data, int size, QGeoPositionInfo* info, bool* hasFix) override {
        const bool isRead = QNmeaPositionInfoSource::parsePosInfoFromNmeaData(data, size, info, hasFix);
        const QTime told = info->timestamp().time();
        if (isRead && told.isValid()) {
            day = told < last ? day.addDays(1) : day;
            last = told;
            info->setTimestamp(QDateTime(day, told, Qt::UTC));
        }
        return isRead;
    }

private:
    QDate day{2000, 1, 1};
    QTime last{0, 0};
};

/// Says where the sentences come from: "the NMEA file ride.nmea".
struct Name {
    std::string operator()(const GeoClue&) const { return {}; }
    std::string operator()(const NMEAFile& file) const { return "the NMEA file " + file.path; }
    std::string operator()(const NMEASerialPort& port) const { return "the serial port " + port.device; }
    std::string operator()(const NMEASocket& server) const {
        return "the NMEA server " + server.host + ":" + std::to_string(server.port);
    }
};

struct MakeDevice {
    std::unique_ptr<QIODevice> operator()(const GeoClue&) const { return nullptr; }
    std::unique_ptr<QIODevice> operator()(const NMEAFile& file) const {
        return std::make_unique<NMEARecording>(QFile::decodeName(file.path.c_str()));
    }
    std::unique_ptr<QIODevice> operator()(const NMEASerialPort& port) const {
        return std::make_unique<NMEASerial>(QFile::decodeName(port.device.c_str()), port.baudRate);
    }
    std::unique_ptr<QIODevice> operator()(const NMEASocket&) const { return std::make_unique<QTcpSocket>(); }
};

} // namespace

NMEAReceiver::NMEAReceiver(const Clock& theClock, MainQueue& theQueue, PositionSource theSource, Listener theListener)
    : clock(theClock),
      source(std::move(theSource)),
      listener(std::move(theListener)),
      retry(theQueue),
      failure(theQueue) {}

NMEAReceiver::~NMEAReceiver() = default;

void NMEAReceiver::want(const DerivedLocations::Demand& demand) {
    isWanted = wantsAnything(demand);
    if (!isWanted) {
        retry.stop();
        if (!isRecording()) {
            close();
        }
    } else if (device == nullptr && (!isRecording() || problem.empty())) {
        openAfter(std::chrono::seconds(0));
    } else if (demand.request && !problem.empty()) {
        failSoon();
    }
}

void NMEAReceiver::openAfter(std::chrono::seconds time) {
    retry.start(time, [this] { open(); });
}

void NMEAReceiver::open() {
    if (!isWanted || device != nullptr) {
        return;
    }
    problem.clear();
    context = std::make_unique<QObject>();
    device = std::visit(MakeDevice(), source);
    QObject::connect(
        device.get(), &QIODevice::readChannelFinished, context.get(), [this] { end(); }, Qt::QueuedConnection);
    if (auto* const socket = qobject_cast<QTcpSocket*>(device.get())) {
        const auto& server = std::get<NMEASocket>(source);
        socket->setReadBufferSize(mostWaiting);
        QObject::connect(socket, &QTcpSocket::connected, context.get(), [this, socket] {
            watchConnection(socket->socketDescriptor());
            listen();
        });
        QObject::connect(socket, &QTcpSocket::readyRead, context.get(), [socket] {
            if (socket->bytesAvailable() >= mostWaiting && !socket->canReadLine()) {
                // What has no line's end by now is no sentence.
                socket->readAll();
            }
        });
        QObject::connect(
            socket, &QTcpSocket::errorOccurred, context.get(), [this] { end(); }, Qt::QueuedConnection);
        socket->connectToHost(QString::fromStdString(server.host), server.port, QIODevice::ReadOnly);
    } else if (device->open(QIODevice::ReadOnly)) {
        listen();
    } else {
        end();
    }
}

void NMEAReceiver::listen() {
    sentences = std::make_unique<Sentences>();
    QObject::connect(sentences.get(), &QGeoPositionInfoSource::positionUpdated, context.get(),
                     [this](const QGeoPositionInfo& info) { tell(info); });
    sentences->setDevice(device.get());
    sentences->startUpdates();
}

void NMEAReceiver::tell(const QGeoPositionInfo& info) {
    hadFix = true;
    problem.clear();
    if (isWanted) {
        Location fix = locationOf(info, defaultAccuracy);
        fix.timestamp = clock.now();
        listener.fix(fix);
    }
}

/// The device gives nothing any more, or never did.
void NMEAReceiver::end() {
    if (device == nullptr) {
        return;
    }
    const std::string name = std::visit(Name(), source);
    if (isRecording() && device->isOpen()) {
        giveUp(hadFix ? name + " is at its end" : name + " tells no position");
    } else {
        giveUp(name + " gives nothing: " + device->errorString().toStdString());
        if (!isRecording()) {
            openAfter(pause);
        }
    }
}

void NMEAReceiver::giveUp(const std::string& message) {
    close();
    problem = message;
    if (isWanted) {
        listener.failure({LocationError::Kind::unknown, message});
    }
    if (const auto* const file = std::get_if<NMEAFile>(&source); file != nullptr && file->onEnd) {
        file->onEnd();
    }
}

void NMEAReceiver::close() {
    context.reset();
    if (sentences != nullptr) {
        sentences.release()->deleteLater();
    }
    if (device != nullptr) {
        device.release()->deleteLater();
    }
}

void NMEAReceiver::failSoon() {
    failure.start(std::chrono::seconds(0), [this] {
        if (isWanted && !problem.empty()) {
            listener.failure({LocationError::Kind::unknown, problem});
        }
    });
}

} // namespace quorvane::platform::qt
