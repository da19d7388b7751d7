#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Core/QuorvaneDelegate.h"

namespace quorvane::testing {

/// A delegate that keeps every call. Main thread only.
class RecordingDelegate : public QuorvaneDelegate {
public:
    enum class Kind { clientLocationUpdated, error, eventsReceived, locationUpdated, log };

    /// One call. Fields that its kind does not carry keep their defaults.
    struct Call {
        Kind kind = Kind::log;
        platform::Location location;
        bool stopped = false;
        QVLocationSource source = QVLocationSource::UNKNOWN;
        QVStatus status = QVStatus::SUCCESS;
        std::vector<std::shared_ptr<QVEvent>> events;
        std::shared_ptr<QVUser> user;
        std::string message;

        /// One line, for example "onError ERROR_NETWORK" or "onLocationUpdated 46.05,14.5 2026-03-01T12:00:00Z no
        /// user".
        [[nodiscard]] std::string text() const;
    };

    void onClientLocationUpdated(const platform::Location& location, bool stopped, QVLocationSource source) override;
    void onError(QVStatus status) override;
    void onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>& events,
                          const std::shared_ptr<QVUser>& user) override;
    void onLocationUpdated(const platform::Location& location, const std::shared_ptr<QVUser>& user) override;
    void onLog(const std::string& message) override;

    /// Every call, in order.
    [[nodiscard]] const std::vector<Call>& calls() const { return recorded; }
    /// Those of one kind, in order.
    [[nodiscard]] std::vector<Call> calls(Kind kind) const;
    /// The texts of all calls, in order.
    [[nodiscard]] std::vector<std::string> texts() const;

    /// The statuses of all errors, in order.
    [[nodiscard]] std::vector<QVStatus> errors() const;
    /// The messages of all log lines, in order.
    [[nodiscard]] std::vector<std::string> logLines() const;

    void forget() { recorded.clear(); }

private:
    std::vector<Call> recorded;
};

} // namespace quorvane::testing
