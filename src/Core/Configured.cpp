#include "Core/Configured.h"

#include "Core/PreferenceKeys.h"
#include "Platform/Platform.h"
#include "Platform/PreferencesStore.h"

namespace quorvane {

bool isConfigured() {
    return platform::current().preferences().string(preference::accessKey).has_value();
}

} // namespace quorvane
