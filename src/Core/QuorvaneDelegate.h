#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Core/Enumerations.h"
#include "Core/QVStatus.h"
#include "Platform/Location.h"

namespace quorvane {

class QVEvent;
class QVUser;

/// The host's callback object. Held weakly by every service; called on the main thread.
class QuorvaneDelegate {
public:
    QuorvaneDelegate() = default;
    QuorvaneDelegate(const QuorvaneDelegate&) = delete;
    QuorvaneDelegate& operator=(const QuorvaneDelegate&) = delete;
    virtual ~QuorvaneDelegate() = default;

    /// A location of the device, whether the device is considered stopped, and what produced the location.
    virtual void onClientLocationUpdated(const platform::Location& location, bool stopped, QVLocationSource source) = 0;
    virtual void onError(QVStatus status) = 0;
    virtual void onEventsReceived(const std::vector<std::shared_ptr<QVEvent>>& events,
                                  const std::shared_ptr<QVUser>& user) = 0;
    /// The location that was accepted and the user as known then.
    virtual void onLocationUpdated(const platform::Location& location, const std::shared_ptr<QVUser>& user) = 0;
    /// One formatted log line, without its line break.
    virtual void onLog(const std::string& message) = 0;
};

} // namespace quorvane
