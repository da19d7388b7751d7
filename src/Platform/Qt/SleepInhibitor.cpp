#include "Platform/Qt/SleepInhibitor.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

#include "Platform/Qt/SystemBus.h"

namespace quorvane::platform::qt {
namespace {

RemoteObject logind() {
    return {QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
            QStringLiteral("org.freedesktop.login1.Manager")};
}

} // namespace

SleepInhibitor::SleepInhibitor(std::function<void()> whenSleepComes, std::function<void(std::string_view)> tell)
    : sleepComes(std::move(whenSleepComes)), output(std::move(tell)) {
    look.setSingleShot(true);
    QObject::connect(&look, &QTimer::timeout, &look, [this] { lookWhetherSleepComes(); });
}

SleepInhibitor::~SleepInhibitor() = default;

void SleepInhibitor::hold(const std::string& why) {
    if (pending != nullptr) {
        return;
    }
    pending = std::make_unique<QObject>();
    if (!std::exchange(isWatching, true)) {
        logind().onSignal(QStringLiteral("PrepareForSleep"), &look, SLOT(start()));
    }
    const QDBusPendingCall call =
        logind().call(QStringLiteral("Inhibit"), {QStringLiteral("sleep"), QCoreApplication::applicationName(),
                                                  QString::fromStdString(why), QStringLiteral("delay")});
    auto* const watcher = new QDBusPendingCallWatcher(call, pending.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, pending.get(), [this, watcher] {
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        if (reply.isError()) {
            complain(reply.error().message().toStdString());
            // The next task asks anew.
            pending.release()->deleteLater();
        } else {
            held = reply.value();
        }
    });
}

void SleepInhibitor::release() {
    pending.reset();
    held = QDBusUnixFileDescriptor();
}

void SleepInhibitor::complain(const std::string& problem) {
    if (!std::exchange(hasComplained, true)) {
        output("QuorvaneSDK: the system's sleep cannot be delayed for work in the background: " + problem);
    }
}

void SleepInhibitor::lookWhetherSleepComes() {
    if (pending == nullptr) {
        return;
    }
    auto* const watcher =
        new QDBusPendingCallWatcher(logind().property(QStringLiteral("PreparingForSleep")), pending.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, pending.get(), [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError() && reply.value().variant().toBool()) {
            sleepComes();
        }
    });
}

} // namespace quorvane::platform::qt
