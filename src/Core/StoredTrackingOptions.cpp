#include "Core/StoredTrackingOptions.h"

#include <optional>
#include <utility>

#include "Core/PreferenceKeys.h"
#include "JSON/JSON.h"
#include "Platform/PreferencesStore.h"
#include "Platform/Registry.h"

namespace quorvane {

StoredTrackingOptions::StoredTrackingOptions(platform::Platform& thePlatform) : platform(thePlatform) {}

StoredTrackingOptions& StoredTrackingOptions::shared() {
    return platform::shared<StoredTrackingOptions>();
}

std::shared_ptr<const QuorvaneTrackingOptions> StoredTrackingOptions::stored() {
    std::optional<std::string> now = platform.preferences().string(preference::trackingOptions);
    if (!now) {
        return nullptr;
    }
    const std::lock_guard lock(mutex);
    // An empty text is what this object begins with, and decodes to nothing.
    if (*now != text) {
        text = std::move(*now);
        try {
            decoded = std::make_shared<const QuorvaneTrackingOptions>(json::decode<QuorvaneTrackingOptions>(text));
        } catch (const json::DecodingError&) {
            decoded = nullptr;
        }
    }
    return decoded;
}

std::shared_ptr<const QuorvaneTrackingOptions> StoredTrackingOptions::current() {
    if (auto options = stored()) {
        return options;
    }
    return QuorvaneTrackingOptions::EFFICIENT();
}

} // namespace quorvane
