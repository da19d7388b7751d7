#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Core/QuorvaneDelegate.h"
#include "Platform/Clock.h"
#include "Tracking/TrackingObserver.h"
#include "tools/Terminal.h"

namespace quorvane::tool {

/// Tells on the terminal what tracking brings, a line each, as it comes.
class TrackReport : public QuorvaneDelegate, public TrackingObserver {
public:
    /// Both outlive the report.
    TrackReport(const platform::Clock& theClock, Terminal& theTerminal) : clock(theClock), terminal(theTerminal) {}

    void onClientLocationUpdated(const platform::Location& location, bool stopped, QVLocationSource source) override;
    void onError(QVStatus status) override;
    void onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>& events,
                          const std::shared_ptr<QVUser>& user) override;
    void onLocationUpdated(const platform::Location& location, const std::shared_ptr<QVUser>& user) override;
    /// The platform prints the log.
    void onLog(const std::string& /*message*/) override {}

    void observe(const observed::Observation& observation) override;

    void write(std::string_view subject, const std::string& sentence, Paint paint = Paint::plain);

    struct Counts {
        std::size_t locations = 0;
        std::size_t synced = 0;
        std::size_t events = 0;
        std::size_t errors = 0;
    };
    [[nodiscard]] const Counts& counts() const { return soFar; }
    /// Whether a location is on its way to the service.
    [[nodiscard]] bool isSending() const { return scheduled || underWay > 0; }
    /// Nobody reads any more.
    [[nodiscard]] bool isCutOff() const { return cutOff; }

private:
    const platform::Clock& clock;
    Terminal& terminal;
    Counts soFar;
    bool scheduled = false;
    /// Sends that have begun and not ended.
    int underWay = 0;
    bool cutOff = false;
};

} // namespace quorvane::tool
