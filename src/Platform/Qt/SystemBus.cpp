#include "Platform/Qt/SystemBus.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QObject>

namespace quorvane::platform::qt {
namespace {

QString properties() {
    return QStringLiteral("org.freedesktop.DBus.Properties");
}

} // namespace

QDBusPendingCall RemoteObject::call(const QString& method, const QVariantList& arguments) const {
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected()) {
        return QDBusPendingCall::fromError(bus.lastError());
    }
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return bus.asyncCall(message, static_cast<int>(std::chrono::milliseconds(longest).count()));
}

QDBusPendingCall RemoteObject::property(const QString& name) const {
    return RemoteObject{service, path, properties()}.call(QStringLiteral("Get"), {interface, name});
}

bool RemoteObject::onSignal(const QString& name, QObject* receiver, const char* slot) const {
    return QDBusConnection::systemBus().connect(service, path, interface, name, receiver, slot);
}

bool RemoteObject::onPropertyChange(QObject* receiver, const char* slot) const {
    return QDBusConnection::systemBus().connect(service, path, properties(), QStringLiteral("PropertiesChanged"),
                                                receiver, slot);
}

} // namespace quorvane::platform::qt
