#include "Platform/PreferencesStore.h"

namespace quorvane::platform {

void PreferencesStore::setOptionalString(std::string_view key, const std::optional<std::string>& value) {
    if (value) {
        setString(key, *value);
    } else {
        remove(key);
    }
}

} // namespace quorvane::platform
