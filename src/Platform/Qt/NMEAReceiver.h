#pragma once

#include <QIODevice>
#include <QObject>
#include <memory>
#include <string>

#include "Platform/Qt/PositionReceiver.h"
#include "Platform/Qt/QtOptions.h"
#include "Platform/Support/Delay.h"

QT_BEGIN_NAMESPACE
class QGeoPositionInfo;
class QNmeaPositionInfoSource;
QT_END_NAMESPACE

namespace quorvane::platform::qt {

/// Fixes from NMEA sentences. A recording that has begun goes on whether or not somebody wants to know; a port or a
/// server is let go of meanwhile, and tried again where it fails.
class NMEAReceiver final : public PositionReceiver {
public:
    /// Until a port or a server that failed is tried again.
    static constexpr std::chrono::seconds pause{5};

    /// @p theSource is none of `GeoClue`.
    NMEAReceiver(const Clock& theClock, MainQueue& theQueue, PositionSource theSource, Listener theListener);
    ~NMEAReceiver() override;

    [[nodiscard]] LocationAuthorization authorization() override { return LocationAuthorization::always; }
    void ask() override {}
    void want(const DerivedLocations::Demand& demand) override;

private:
    void openAfter(std::chrono::seconds time);
    void open();
    void listen();
    void close();
    void end();
    void giveUp(const std::string& message);
    void tell(const QGeoPositionInfo& info);
    void failSoon();
    [[nodiscard]] bool isRecording() const { return std::holds_alternative<NMEAFile>(source); }

    const Clock& clock;
    const PositionSource source;
    const Listener listener;
    bool isWanted = false;
    bool hadFix = false;
    /// Why there is nothing, while there is nothing.
    std::string problem;
    Delay retry;
    Delay failure;
    std::unique_ptr<QIODevice> device;
    std::unique_ptr<QNmeaPositionInfoSource> sentences;
    /// Declared last, so that it goes first: what is connected lives as long.
    std::unique_ptr<QObject> context;
};

} // namespace quorvane::platform::qt
