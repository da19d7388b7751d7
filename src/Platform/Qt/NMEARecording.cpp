#include "Platform/Qt/NMEARecording.h"

#include <QFileInfo>
#include <QList>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace quorvane::platform::qt {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

constexpr qint64 longestLine = 4096;
constexpr milliseconds day = hours(24);
/// For what was made of the last sentences to arrive.
constexpr milliseconds tail = seconds(1);

bool hasRightSum(const QByteArray& sentence) {
    const qsizetype star = sentence.lastIndexOf('*');
    bool isNumber = false;
    const uint told = star > 0 ? sentence.mid(star + 1, 2).toUInt(&isNumber, 16) : 0;
    const auto add = [](uint sum, char c) { return sum ^ static_cast<unsigned char>(c); };
    return isNumber && std::accumulate(sentence.begin() + 1, sentence.begin() + star, 0U, add) == told;
}

/// The field of a sentence of that kind in which the time stands; 0 where none does.
qsizetype timeField(const QByteArray& kind) {
    if (kind == "RMC" || kind == "GGA" || kind == "GNS" || kind == "ZDA") {
        return 1;
    }
    return kind == "GLL" ? 5 : 0;
}

} // namespace

std::optional<milliseconds> timeToldBy(const QByteArray& sentence) {
    const qsizetype begin = sentence.indexOf('$');
    if (begin < 0 || !hasRightSum(sentence.mid(begin))) {
        return std::nullopt;
    }
    const QList<QByteArray> fields = sentence.mid(begin + 1).split(',');
    const qsizetype index = timeField(fields.front().right(3));
    bool isNumber = false;
    const double text = index > 0 && index < fields.size() ? fields[index].toDouble(&isNumber) : -1;
    if (!isNumber || !(text >= 0 && text < 240000)) {
        return std::nullopt;
    }
    const int whole = static_cast<int>(text);
    const auto fraction = std::lround((text - whole) * 1000);
    return hours(whole / 10000) + std::chrono::minutes(whole / 100 % 100) + seconds(whole % 100) +
           milliseconds(fraction);
}

NMEARecording::NMEARecording(const QString& path) : file(path) {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, [this] { proceed(); });
}

bool NMEARecording::open(OpenMode mode) {
    const QFileInfo info(file);
    if (info.exists() && !info.isFile()) {
        // To wait for somebody who writes into a pipe would hold up everything.
        setErrorString(QStringLiteral("It is no regular file"));
        return false;
    }
    if (!file.open(mode)) {
        setErrorString(file.errorString());
        return false;
    }
    elapsed.start();
    timer.start(0);
    return QIODevice::open(mode | Unbuffered);
}

void NMEARecording::proceed() {
    if (isOver) {
        Q_EMIT readChannelFinished();
        return;
    }
    ready.append(held);
    held.clear();
    while (ready.size() < mostAhead) {
        QByteArray line = file.readLine(longestLine);
        if (!line.isEmpty() && !line.endsWith('\n') && file.atEnd()) {
            line += "\r\n";
        }
        if (line.isEmpty()) {
            isOver = true;
            due += tail;
            break;
        }
        const std::optional<milliseconds> told = timeToldBy(line);
        const milliseconds since = told && moment ? (*told - *moment + day) % day : milliseconds(0);
        moment = told ? told : moment;
        if (since > milliseconds(0) && since < day / 2) {
            due += since;
            held = line;
            break;
        }
        ready.append(line);
    }
    if (ready.size() >= mostAhead && !canReadLine()) {
        // What has no line's end by now is no sentence.
        ready.clear();
    }
    waitUntilDue();
    if (!ready.isEmpty()) {
        Q_EMIT readyRead();
    }
}

void NMEARecording::waitUntilDue() {
    timer.start(std::clamp(due - milliseconds(elapsed.elapsed()), milliseconds(0), milliseconds(day)));
}

} // namespace quorvane::platform::qt
