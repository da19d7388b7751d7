#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "Core/QuorvaneDelegate.h"
#include "JSON/AnyCodable.h"
#include "sandbox/Sandbox.h"

namespace quorvane::tool {

class Terminal;

/// What happened since it was asked last: the requests that reached the service, and what the library told its
/// delegate. Main thread only, but for `output`.
class Account final : public QuorvaneDelegate {
public:
    Account(const sandbox::Sandbox& theService, Terminal& theTerminal);

    /// A line that the platform prints. One that the delegate is told as well is not shown twice.
    void output(std::string_view line);

    /// Prints and collects what has happened.
    void tell();

    /// Collects the requests that reached the service since, and prints nothing.
    std::vector<sandbox::RequestRecord> collect();

    /// Prints what nobody has been told yet to standard error.
    void tellRest();

    /// "14 requests, answered 12 × 200, 2 × 401".
    [[nodiscard]] std::string requestSummary() const;
    [[nodiscard]] std::size_t logLineCount() const { return lines.size(); }
    /// {"requests": [...], "log": [...]}: everything that was told.
    [[nodiscard]] AnyCodable::Dictionary document() const;

    void onClientLocationUpdated(const platform::Location& location, bool stopped, QVLocationSource source) override;
    void onError(QVStatus status) override;
    void onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>& events,
                          const std::shared_ptr<QVUser>& user) override;
    void onLocationUpdated(const platform::Location& location, const std::shared_ptr<QVUser>& user) override;
    void onLog(const std::string& message) override;

private:
    const sandbox::Sandbox& service;
    Terminal& terminal;
    std::vector<sandbox::RequestRecord> requests;
    std::vector<std::string> lines;
    std::size_t linesTold = 0;
    std::mutex mutex;
    /// Printed by the platform and not told to the delegate so far.
    std::vector<std::string> pending;
};

} // namespace quorvane::tool
