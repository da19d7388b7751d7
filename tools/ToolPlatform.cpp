#include "tools/ToolPlatform.h"

#include <string>

#include "Core/PreferenceKeys.h"
#include "testing/MemoryPreferences.h"
#include "tools/OverlayPreferences.h"

namespace quorvane::tool {

struct RunPreferences::Overlay {
    explicit Overlay(platform::PreferencesStore& stored) : store(stored, memory, std::string(preference::logLevel)) {}

    testing::MemoryPreferences memory;
    OverlayPreferences store;
};

RunPreferences::RunPreferences(platform::PreferencesStore& theStored, std::optional<QVLogLevel> logLevel)
    : stored(theStored) {
    if (logLevel) {
        overlay = std::make_unique<Overlay>(stored);
        overlay->store.setInteger(preference::logLevel, static_cast<int>(*logLevel));
    }
}

RunPreferences::~RunPreferences() = default;

platform::PreferencesStore& RunPreferences::store() {
    return overlay ? overlay->store : stored;
}

} // namespace quorvane::tool
