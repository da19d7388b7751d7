#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Qt/Delay.h"
#include "Platform/Qt/PositionReceiver.h"
#include "Platform/Qt/SystemBus.h"

QT_BEGIN_NAMESPACE
class QDBusServiceWatcher;
class QGeoPositionInfo;
class QGeoPositionInfoSource;
QT_END_NAMESPACE

namespace quorvane::platform::qt {

/// Fixes of GeoClue 2. Whether they are permitted is what the service answers when its client is started, and what its
/// client says of itself from then on: it becomes inactive, without an error, where the user switches location off.
class GeoClueReceiver final : public PositionReceiver {
public:
    /// Older fixes are none: what the service gives first may be what it knew long ago.
    static constexpr std::chrono::seconds freshness{60};
    /// How long the user may take to answer.
    static constexpr std::chrono::seconds patience{60};
    /// Until a service that has ended is started again.
    static constexpr std::chrono::seconds pause{5};

    /// @p tell gets lines for a developer's log. @p wasPermitted: in an earlier launch.
    GeoClueReceiver(const Clock& theClock, MainQueue& theQueue, std::string theDesktopId, bool wasPermitted,
                    Listener theListener, std::function<void(std::string_view line)> tell);
    ~GeoClueReceiver() override;

    [[nodiscard]] LocationAuthorization authorization() override { return status; }
    void ask() override;
    void want(const DerivedLocations::Demand& demand) override;

private:
    enum class State {
        idle,
        /// The client is started; what became of it is not known.
        starting,
        running,
        /// The service holds the client back: the user has switched location off.
        off,
    };

    [[nodiscard]] static bool isServiceThere();
    void startAfter(std::chrono::seconds time);
    void start();
    void stop();
    void findOutWhy();
    void watchClient();
    void lookWhetherActive();
    void noteActive(bool isActive);
    void refuse(const std::string& why);
    void goneAway();
    void take(const QGeoPositionInfo& info);
    void repeatSoon();
    void setStatus(LocationAuthorization newStatus);

    const Clock& clock;
    const std::string desktopId;
    const Listener listener;
    const std::function<void(std::string_view line)> output;
    LocationAuthorization status = LocationAuthorization::notDetermined;
    State state = State::idle;
    bool isWanted = false;
    /// The service has ended while the user had switched location off: it is started again all the same, for what the
    /// user wants now is not known.
    bool isComingBack = false;
    std::optional<Location> last;
    /// The client that runs has given no fix yet.
    bool isFirst = true;
    std::optional<RemoteObject> client;
    /// Fires when a property of the client has changed.
    QTimer look;
    Delay impatience;
    Delay retry;
    Delay repetition;
    std::unique_ptr<QDBusServiceWatcher> service;
    std::unique_ptr<QGeoPositionInfoSource> source;
    /// Declared last, so that it goes first: what is connected and on its way lives as long.
    std::unique_ptr<QObject> context;
};

} // namespace quorvane::platform::qt
