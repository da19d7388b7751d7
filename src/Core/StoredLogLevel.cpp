#include "Core/StoredLogLevel.h"

#include "Core/PreferenceKeys.h"
#include "Platform/Platform.h"
#include "Platform/PreferencesStore.h"

namespace quorvane {

QVLogLevel storedLogLevel() {
    const auto stored = platform::current().preferences().integer(preference::logLevel);
    return json::fromRawValue<QVLogLevel>(stored.value_or(0)).value_or(QVLogLevel::NONE);
}

} // namespace quorvane
