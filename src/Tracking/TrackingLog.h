#pragma once

#include <concepts>
#include <utility>

#include "Core/QVLogger.h"

namespace quorvane {

/// The lines of the location manager, most of which are logged only while it is verbose.
class TrackingLog {
public:
    /// Both outlive the log.
    TrackingLog(QVLogger& theLogger, const bool& verboseFlag) : logger(theLogger), isVerbose(verboseFlag) {}

    /// What @p make makes now, at `DEBUG`, while the manager is verbose. Otherwise nothing is made.
    template <std::invocable Make>
    void verbose(Make&& make) const {
        if (isVerbose) {
            logger.log(QVLogLevel::DEBUG, std::forward<Make>(make)());
        }
    }
    void verbose(const char* line) const {
        verbose([line] { return std::string(line); });
    }

    /// What @p make makes later, if the level admits it then: it owns all that it needs.
    template <std::invocable Make>
    void always(QVLogLevel level, Make make) const {
        logger.log(level, std::move(make));
    }

private:
    QVLogger& logger;
    const bool& isVerbose;
};

} // namespace quorvane
