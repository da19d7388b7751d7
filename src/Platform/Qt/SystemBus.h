#pragma once

#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>
#include <QtGlobal>
#include <chrono>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace quorvane::platform::qt {

/// An object of another process on the system's D-Bus.
struct RemoteObject {
    QString service;
    QString path;
    QString interface;

    /// No answer that takes longer is waited for.
    static constexpr std::chrono::seconds longest{5};

    /// Calls @p method; the answer is an error at once where there is no bus.
    [[nodiscard]] QDBusPendingCall call(const QString& method, const QVariantList& arguments = {}) const;
    /// The value of a property, as a variant.
    [[nodiscard]] QDBusPendingCall property(const QString& name) const;
    /// Lets @p slot of @p receiver, which takes no arguments, be called with each signal @p name.
    bool onSignal(const QString& name, QObject* receiver, const char* slot) const;
    /// The same with each change of a property.
    bool onPropertyChange(QObject* receiver, const char* slot) const;
};

} // namespace quorvane::platform::qt
