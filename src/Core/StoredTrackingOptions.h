#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Platform.h"

namespace quorvane {

/// The tracking options that the preferences hold, decoded once for each text that stands there. Safe from any thread.
class StoredTrackingOptions {
public:
    explicit StoredTrackingOptions(platform::Platform& platform);

    [[nodiscard]] static StoredTrackingOptions& shared();

    /// The options as they stand in the preferences now. Nobody changes the object: a later text has one of its own.
    /// Null when there are none or they cannot be decoded.
    [[nodiscard]] std::shared_ptr<const QuorvaneTrackingOptions> stored();

    /// The options to go by: the stored ones, or else the shared `EFFICIENT` preset. Never null.
    [[nodiscard]] std::shared_ptr<const QuorvaneTrackingOptions> current();

private:
    platform::Platform& platform;
    std::mutex mutex;
    /// The text that was decoded last, and what came out of it.
    std::string text;
    std::shared_ptr<const QuorvaneTrackingOptions> decoded;
};

} // namespace quorvane
