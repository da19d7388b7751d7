#include "tools/ToolPlatform.h"

#include <string>
#include <utility>

#include "Core/PreferenceKeys.h"
#include "testing/MemoryPreferences.h"
#include "tools/OverlayPreferences.h"

namespace quorvane::tool {

struct ToolPlatform::Overlay {
    explicit Overlay(platform::PreferencesStore& stored) : store(stored, memory, std::string(preference::logLevel)) {}

    testing::MemoryPreferences memory;
    OverlayPreferences store;
};

ToolPlatform::ToolPlatform(platform::NativeOptions options, std::optional<QVLogLevel> logLevel)
    : NativePlatform(std::move(options)) {
    if (logLevel) {
        overlay = std::make_unique<Overlay>(stored());
        overlay->store.setInteger(preference::logLevel, static_cast<int>(*logLevel));
    }
}

ToolPlatform::~ToolPlatform() = default;

platform::PreferencesStore& ToolPlatform::preferences() {
    return overlay ? overlay->store : stored();
}

} // namespace quorvane::tool
