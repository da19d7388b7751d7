#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Core/Enumerations.h"

namespace quorvane {

class QVConfig;
class QuorvaneTrackingOptions;

/// The library's general settings, kept in the preferences. Reads and writes at once, on the calling thread; safe from
/// any thread. No operation reports an error: what cannot be read is its default, what cannot be stored is logged.
class QVSettings {
public:
    QVSettings() = delete;

    /// `NONE` when nothing or no level is stored.
    [[nodiscard]] static QVLogLevel getLogLevel();

    /// The stored options as a new object, or, when there are none or they cannot be decoded, the shared `EFFICIENT`
    /// preset itself, not a copy. Never null.
    [[nodiscard]] static std::shared_ptr<QuorvaneTrackingOptions> getTrackingOptions();
    static void setTrackingOptions(const QuorvaneTrackingOptions& options);

    /// The configuration that was fetched last; none when there is none or it cannot be decoded.
    [[nodiscard]] static std::optional<QVConfig> getConfig();
    static void setConfig(const QVConfig& config);

    /// Identifies this installation: a random UUID, upper case, made on first use and kept until the application's
    /// preferences are erased.
    [[nodiscard]] static std::optional<std::string> getInstallId();

    /// Stores the user id; none removes it. A stored id can only be set again to the same value: setting another one,
    /// or none, while an id is stored never returns.
    static void setUserId(const std::optional<std::string>& userId);
};

} // namespace quorvane
