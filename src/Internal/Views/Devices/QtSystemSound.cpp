#include "Internal/Views/Devices/QtSystemSound.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>
#include <QMetaObject>
#include <QVariantMap>
#include <utility>

namespace quorvane::capture {
namespace {

constexpr int patienceMilliseconds = 1000;
/// As long as the service's theme says.
constexpr int usualLength = -1;

void ringSystemBell() {
    // Its class is none of the toolkit's public ones; the first base of it is.
    auto* const system = reinterpret_cast<QObject*>(QGuiApplication::platformNativeInterface());
    if (system != nullptr && system->metaObject()->indexOfMethod("beep()") >= 0) {
        QMetaObject::invokeMethod(system, "beep");
    }
}

} // namespace

QtSystemSound::QtSystemSound() : QtSystemSound(QString(), ringSystemBell) {}

QtSystemSound::QtSystemSound(QString theBus, std::function<void()> theBell)
    : bus(std::move(theBus)), bell(std::move(theBell)) {}

void QtSystemSound::play(Identifier sound) {
    if (sound != vibration) {
        return;
    }
    const QDBusConnection connection = bus.isEmpty() ? QDBusConnection::sessionBus() : QDBusConnection(bus);
    if (!connection.isConnected()) {
        bell();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall("org.sigxcpu.Feedback", "/org/sigxcpu/Feedback",
                                                       "org.sigxcpu.Feedback", "TriggerFeedback");
    const QString application = QCoreApplication::applicationName();
    call << (application.isEmpty() ? QString("quorvane") : application) << QString("button-pressed") << QVariantMap()
         << usualLength;
    auto* const answer = new QDBusPendingCallWatcher(connection.asyncCall(call, patienceMilliseconds));
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, ring = bell] {
        if (answer->isError()) {
            ring();
        }
        answer->deleteLater();
    });
}

} // namespace quorvane::capture
