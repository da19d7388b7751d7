#include "Platform/Qt/GeoClueReceiver.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDateTime>
#include <QFile>
#include <QGeoPositionInfoSource>
#include <QStandardPaths>
#include <utility>

#include "Platform/Clock.h"
#include "Platform/Qt/PositionInfo.h"

namespace quorvane::platform::qt {
namespace {

QString serviceName() {
    return QStringLiteral("org.freedesktop.GeoClue2");
}

RemoteObject manager() {
    return {serviceName(), QStringLiteral("/org/freedesktop/GeoClue2/Manager"),
            QStringLiteral("org.freedesktop.GeoClue2.Manager")};
}

/// Whether the bus knows the service, or could start it. The bus itself answers at once.
bool isServiceKnown() {
    const RemoteObject bus{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                           QStringLiteral("org.freedesktop.DBus")};
    for (const char* const list : {"ListNames", "ListActivatableNames"}) {
        QDBusPendingReply<QStringList> reply = bus.call(QLatin1String(list));
        reply.waitForFinished();
        if (!reply.isError() && reply.value().contains(serviceName())) {
            return QGeoPositionInfoSource::availableSources().contains(QStringLiteral("geoclue2"));
        }
    }
    return false;
}

/// Qt's client leaves its last position in a file of the user's when it ends, for everybody to read.
void forgetLastPosition() {
    QFile::remove(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                  QStringLiteral("/qtposition-geoclue2"));
}

/// Calls @p then with what @p call answers, unless @p context ends before.
template <class Reply, class Then>
void whenAnswered(const QDBusPendingCall& call, QObject* context, Then then) {
    auto* const watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, then] {
        const Reply reply = *watcher;
        watcher->deleteLater();
        then(reply);
    });
}

} // namespace

GeoClueReceiver::GeoClueReceiver(const Clock& theClock, MainQueue& theQueue, std::string theDesktopId,
                                 bool wasPermitted, Listener theListener, std::function<void(std::string_view)> tell)
    : clock(theClock),
      desktopId(std::move(theDesktopId)),
      listener(std::move(theListener)),
      output(std::move(tell)),
      impatience(theQueue),
      retry(theQueue),
      repetition(theQueue) {
    look.setSingleShot(true);
    QObject::connect(&look, &QTimer::timeout, &look, [this] { lookWhetherActive(); });
    if (!isServiceKnown()) {
        status = LocationAuthorization::denied;
        say("this system has no location service (GeoClue 2); the location counts as not permitted");
    } else if (wasPermitted) {
        status = LocationAuthorization::always;
    }
}

GeoClueReceiver::~GeoClueReceiver() {
    if (source != nullptr) {
        source->stopUpdates();
    }
}

void GeoClueReceiver::ask() {
    if (state == State::idle) {
        start();
    }
}

void GeoClueReceiver::want(const DerivedLocations::Demand& demand) {
    isWanted = wantsAnything(demand);
    if (isWanted && state == State::idle && (demand.request || !retry.isRunning())) {
        startAfter(std::chrono::seconds(0));
    } else if (!isWanted && state == State::running) {
        stop();
    } else if (demand.request && state == State::running) {
        repeatSoon();
    }
}

void GeoClueReceiver::startAfter(std::chrono::seconds time) {
    retry.start(time, [this] {
        if (isWanted || isComingBack) {
            start();
        }
    });
}

/// Asks first whether the service answers: Qt's source would wait for that, and let everything else wait.
void GeoClueReceiver::start() {
    if (state != State::idle) {
        return;
    }
    retry.stop();
    state = State::starting;
    context = std::make_unique<QObject>();
    impatience.start(patience, [this] { loseHope(); });
    whenAnswered<QDBusPendingReply<QDBusVariant>>(manager().property(QStringLiteral("AvailableAccuracyLevel")),
                                                  context.get(), [this](const auto& reply) {
                                                      if (reply.isError()) {
                                                          noteError(reply.error());
                                                      } else {
                                                          startClient();
                                                      }
                                                  });
}

void GeoClueReceiver::startClient() {
    isFirst = true;
    source.reset(QGeoPositionInfoSource::createSource(
        QStringLiteral("geoclue2"), {{QStringLiteral("desktopId"), QString::fromStdString(desktopId)}}, nullptr));
    if (source == nullptr) {
        refuse("the location service (GeoClue 2) cannot be reached");
        return;
    }
    QObject::connect(source.get(), &QObject::destroyed, &forgetLastPosition);
    service = std::make_unique<QDBusServiceWatcher>(serviceName(), QDBusConnection::systemBus(),
                                                    QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(service.get(), &QDBusServiceWatcher::serviceUnregistered, context.get(), [this] { goneAway(); });
    QObject::connect(source.get(), &QGeoPositionInfoSource::positionUpdated, context.get(),
                     [this](const QGeoPositionInfo& info) { take(info); });
    QObject::connect(
        source.get(), &QGeoPositionInfoSource::errorOccurred, context.get(),
        [this](QGeoPositionInfoSource::Error error) {
            if (error == QGeoPositionInfoSource::AccessError) {
                findOutWhy();
            }
        },
        Qt::QueuedConnection);
    // Without it the service would be asked for no accuracy at all.
    source->setPreferredPositioningMethods(QGeoPositionInfoSource::AllPositioningMethods);
    source->setUpdateInterval(source->minimumUpdateInterval());
    source->startUpdates();
    watchClient();
}

/// The service was asked whether it answers, and did not.
void GeoClueReceiver::noteError(const QDBusError& error) {
    switch (error.type()) {
        case QDBusError::NoReply:
        case QDBusError::Timeout:
        case QDBusError::TimedOut:
            noteSilence();
            break;
        case QDBusError::ServiceUnknown:
            goneAway();
            break;
        case QDBusError::AccessDenied:
            noteRefusal();
            break;
        default:
            refuse("the location service (GeoClue 2) cannot be used: " + error.name().toStdString());
    }
}

/// The service is there by name only.
void GeoClueReceiver::noteSilence() {
    const std::string silence = "the location service (GeoClue 2) does not answer";
    if (status == LocationAuthorization::notDetermined) {
        refuse(silence);
    } else {
        say(silence);
        goneAway();
    }
}

/// The client is started, and has not become active.
void GeoClueReceiver::loseHope() {
    const std::string silence = "the location service (GeoClue 2) did not answer in time";
    if (isComingBack) {
        goneAway();
    } else if (status == LocationAuthorization::notDetermined) {
        refuse(silence);
    } else {
        // It was permitted before: the user has switched location off. The client goes on when it is on again.
        say(silence);
        state = State::off;
        setStatus(LocationAuthorization::denied);
    }
}

/// Qt's one error stands for a service that refuses, and for one that is gone.
void GeoClueReceiver::findOutWhy() {
    whenAnswered<QDBusPendingReply<QDBusVariant>>(manager().property(QStringLiteral("AvailableAccuracyLevel")),
                                                  context.get(), [this](const auto& reply) {
                                                      if (reply.isError()) {
                                                          noteError(reply.error());
                                                      } else {
                                                          noteRefusal();
                                                      }
                                                  });
}

void GeoClueReceiver::noteRefusal() {
    answered = false;
    refuse("the location service (GeoClue 2) does not let the application have the location");
}

/// The service has one client for this process; Qt's source does not say which.
void GeoClueReceiver::watchClient() {
    whenAnswered<QDBusPendingReply<QDBusObjectPath>>(
        manager().call(QStringLiteral("GetClient")), context.get(), [this](const auto& reply) {
            if (!reply.isError()) {
                client = RemoteObject{serviceName(), reply.value().path(),
                                      QStringLiteral("org.freedesktop.GeoClue2.Client")};
                client->onPropertyChange(&look, SLOT(start()));
                lookWhetherActive();
            }
        });
}

void GeoClueReceiver::lookWhetherActive() {
    if (client && context) {
        whenAnswered<QDBusPendingReply<QDBusVariant>>(client->property(QStringLiteral("Active")), context.get(),
                                                      [this](const auto& reply) {
                                                          if (!reply.isError()) {
                                                              noteActive(reply.value().variant().toBool());
                                                          }
                                                      });
    }
}

void GeoClueReceiver::noteActive(bool isActive) {
    if (isActive && state != State::running && state != State::idle) {
        impatience.stop();
        isComingBack = false;
        state = State::running;
        answered = true;
        setStatus(LocationAuthorization::always);
        if (!isWanted) {
            stop();
        }
    } else if (!isActive && state == State::running) {
        state = State::off;
        setStatus(LocationAuthorization::denied);
    }
}

void GeoClueReceiver::say(const std::string& line) {
    if (said.insert(line).second) {
        output("QuorvaneSDK: " + line);
    }
}

void GeoClueReceiver::refuse(const std::string& why) {
    isComingBack = false;
    stop();
    say(why);
    setStatus(LocationAuthorization::denied);
}

void GeoClueReceiver::goneAway() {
    if (status == LocationAuthorization::notDetermined) {
        refuse("the location service (GeoClue 2) has gone away without an answer");
        return;
    }
    isComingBack = isComingBack || state == State::off;
    stop();
    listener.failure({LocationError::Kind::unknown, "The location service has gone away."});
    startAfter(pause);
}

void GeoClueReceiver::stop() {
    state = State::idle;
    impatience.stop();
    repetition.stop();
    look.stop();
    client.reset();
    context.reset();
    if (service != nullptr) {
        service.release()->deleteLater();
    }
    if (source != nullptr) {
        source->stopUpdates();
        source.release()->deleteLater();
    }
}

void GeoClueReceiver::take(const QGeoPositionInfo& info) {
    Location fix = locationOf(info, -1);
    fix.timestamp = dateOf(info.timestamp());
    const bool wasFirst = std::exchange(isFirst, false);
    // Qt tells the first one twice: as what it found, and as what it was told.
    if (std::exchange(told, fix) == fix && !wasFirst) {
        return;
    }
    const auto age = clock.now() - fix.timestamp;
    if (wasFirst && age > freshness) {
        say("the first position of the location service (GeoClue 2) is too old, and is left out");
        return;
    }
    if (age > freshness || age < -freshness) {
        say("the location service (GeoClue 2) and this system disagree about the time; its positions get the system's");
        fix.timestamp = clock.now();
    }
    last = fix;
    // A fix comes from a client that is active, and may come before its word about that.
    noteActive(true);
    if (isWanted && state == State::running) {
        listener.fix(fix);
    }
}

/// The service tells of changes. Whoever asks while there is none gets the last fix, or a client that begins anew.
void GeoClueReceiver::repeatSoon() {
    repetition.start(std::chrono::seconds(0), [this] {
        if (last && clock.now() - last->timestamp <= freshness) {
            listener.fix(Location(*last));
        } else {
            stop();
            start();
        }
    });
}

void GeoClueReceiver::setStatus(LocationAuthorization newStatus) {
    if (std::exchange(status, newStatus) != newStatus) {
        listener.authorization(newStatus);
    }
}

} // namespace quorvane::platform::qt
