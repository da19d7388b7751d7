#include "Core/SignedInFlag.h"

#include <optional>

#include "Core/PreferenceKeys.h"
#include "Platform/PreferencesStore.h"
#include "Platform/Registry.h"

namespace quorvane {

SignedInFlag::SignedInFlag(platform::Platform& thePlatform) : platform(thePlatform) {}

SignedInFlag::~SignedInFlag() {
    while (isRefreshing()) {
        endRefresh();
    }
}

SignedInFlag& SignedInFlag::shared() {
    return platform::shared<SignedInFlag>();
}

bool SignedInFlag::isSet() const {
    return platform.preferences().boolean(preference::backgroundTracking).value_or(false);
}

bool SignedInFlag::isTracking() const {
    return isRefreshing() && isAsRefreshLeftIt() ? afterRefresh : isSet();
}

void SignedInFlag::set(bool value) {
    afterRefresh = value;
    write(value);
}

void SignedInFlag::beginRefresh() {
    if (refreshes++ == 0 || !isAsRefreshLeftIt()) {
        afterRefresh = isSet();
    }
    write(false);
}

void SignedInFlag::endRefresh() {
    if (--refreshes == 0 && isAsRefreshLeftIt()) {
        write(afterRefresh);
    }
}

bool SignedInFlag::isAsRefreshLeftIt() const {
    return platform.preferences().boolean(preference::backgroundTracking) == std::optional(false);
}

void SignedInFlag::write(bool value) {
    platform.preferences().setBoolean(preference::backgroundTracking, value);
}

} // namespace quorvane
