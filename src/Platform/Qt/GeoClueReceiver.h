#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "Platform/Qt/PositionReceiver.h"
#include "Platform/Qt/SystemBus.h"
#include "Platform/Support/Delay.h"

QT_BEGIN_NAMESPACE
class QDBusError;
class QDBusServiceWatcher;
class QGeoPositionInfo;
class QGeoPositionInfoSource;
QT_END_NAMESPACE

namespace quorvane::platform::qt {

/// Fixes of GeoClue 2. Whether they are permitted is what the service answers when its client is started, and what its
/// client says of itself from then on: it becomes inactive, without an error, where the user switches location off. A
/// service that is there and does not answer has refused after five seconds; where it had permitted the location
/// before, it is tried again and again.
class GeoClueReceiver final : public PositionReceiver {
public:
    /// What the service gives first may be what it knew long ago: an older one is none. What comes after that is new
    /// whatever its time says, and gets the time of the clock where the two differ by more.
    static constexpr std::chrono::seconds freshness{60};
    /// How long the user may take to answer.
    static constexpr std::chrono::seconds patience{60};
    /// Until a service that has ended is started again.
    static constexpr std::chrono::seconds pause{5};

    /// @p tell gets lines for a developer's log, each once. @p wasPermitted: in an earlier launch.
    GeoClueReceiver(const Clock& theClock, MainQueue& theQueue, std::string theDesktopId, bool wasPermitted,
                    Listener theListener, std::function<void(std::string_view line)> tell);
    ~GeoClueReceiver() override;

    [[nodiscard]] LocationAuthorization authorization() override { return status; }
    [[nodiscard]] std::optional<bool> answer() const override { return answered; }
    [[nodiscard]] bool isSilentWhenStill() const override { return true; }
    void ask() override;
    void want(const DerivedLocations::Demand& demand) override;

private:
    enum class State {
        idle,
        /// The service is asked whether it is there, or its client is started and what became of it is not known.
        starting,
        running,
        /// The service holds the client back: the user has switched location off.
        off,
    };

    void startAfter(std::chrono::seconds time);
    void start();
    void startClient();
    void stop();
    void noteError(const QDBusError& error);
    void noteSilence();
    void noteRefusal();
    void loseHope();
    void findOutWhy();
    void watchClient();
    void lookWhetherActive();
    void noteActive(bool isActive);
    void say(const std::string& line);
    void refuse(const std::string& why);
    void goneAway();
    void take(const QGeoPositionInfo& info);
    void repeatSoon();
    void setStatus(LocationAuthorization newStatus);

    const Clock& clock;
    const std::string desktopId;
    const Listener listener;
    const std::function<void(std::string_view line)> output;
    std::set<std::string> said;
    LocationAuthorization status = LocationAuthorization::notDetermined;
    std::optional<bool> answered;
    State state = State::idle;
    bool isWanted = false;
    /// The service has ended while the user had switched location off: it is started again all the same, for what the
    /// user wants now is not known.
    bool isComingBack = false;
    std::optional<Location> last;
    /// The last position as the service told it, fresh or not.
    std::optional<Location> told;
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
