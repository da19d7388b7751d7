#include "Platform/Qt/NMEASerial.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace quorvane::platform::qt {
namespace {

constexpr std::array<std::pair<int, speed_t>, 7> speeds{{{4800, B4800},
                                                         {9600, B9600},
                                                         {19200, B19200},
                                                         {38400, B38400},
                                                         {57600, B57600},
                                                         {115200, B115200},
                                                         {230400, B230400}}};

} // namespace

NMEASerial::NMEASerial(QString path, int baudRate) : device(std::move(path)), speed(baudRate) {}

NMEASerial::~NMEASerial() {
    NMEASerial::close();
}

bool NMEASerial::refuse(const QString& why) {
    NMEASerial::close();
    setErrorString(why);
    return false;
}

bool NMEASerial::open(OpenMode mode) {
    handle = ::open(QFile::encodeName(device).constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) {
        return refuse(QString::fromLocal8Bit(std::strerror(errno)));
    }
    if (isatty(handle) == 0) {
        return refuse(QStringLiteral("It is no serial port"));
    }
    if (!setUp()) {
        return refuse(QStringLiteral("It does not take %1 baud").arg(speed));
    }
    notifier = std::make_unique<QSocketNotifier>(handle, QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this] { take(); });
    return QIODevice::open(mode | Unbuffered);
}

bool NMEASerial::setUp() const {
    const auto found =
        std::find_if(speeds.begin(), speeds.end(), [this](const auto& one) { return one.first == speed; });
    termios settings{};
    if (found == speeds.end() || tcgetattr(handle, &settings) != 0) {
        return false;
    }
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    return cfsetspeed(&settings, found->second) == 0 && tcsetattr(handle, TCSANOW, &settings) == 0 &&
           tcflush(handle, TCIFLUSH) == 0;
}

void NMEASerial::close() {
    notifier.reset();
    if (handle >= 0) {
        ::close(std::exchange(handle, -1));
    }
    if (isOpen()) {
        QIODevice::close();
    }
}

void NMEASerial::take() {
    std::array<char, 4096> piece{};
    const ssize_t size = ::read(handle, piece.data(), piece.size());
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (size <= 0) {
        notifier->setEnabled(false);
        setErrorString(QStringLiteral("The other end is gone"));
        Q_EMIT readChannelFinished();
        return;
    }
    ready.append(piece.data(), size);
    ready.remove(0, std::max<qsizetype>(0, ready.size() - mostAhead));
    Q_EMIT readyRead();
}

} // namespace quorvane::platform::qt
