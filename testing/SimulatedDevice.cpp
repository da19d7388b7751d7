#include "testing/SimulatedDevice.h"

#include <utility>

namespace quorvane::testing {

std::optional<std::string> SimulatedDevice::identifierForVendor() const {
    const std::lock_guard lock(mutex);
    return vendorIdentifier;
}

std::string SimulatedDevice::systemVersion() const {
    const std::lock_guard lock(mutex);
    return version;
}

std::string SimulatedDevice::hardwareIdentifier() const {
    const std::lock_guard lock(mutex);
    return hardware;
}

std::optional<std::string> SimulatedDevice::environment(const std::string& name) const {
    const std::lock_guard lock(mutex);
    const auto found = variables.find(name);
    return found == variables.end() ? std::nullopt : std::optional(found->second);
}

void SimulatedDevice::setIdentifierForVendor(std::optional<std::string> identifier) {
    const std::lock_guard lock(mutex);
    vendorIdentifier = std::move(identifier);
}

void SimulatedDevice::setSystemVersion(std::string newVersion) {
    const std::lock_guard lock(mutex);
    version = std::move(newVersion);
}

void SimulatedDevice::setHardwareIdentifier(std::string identifier) {
    const std::lock_guard lock(mutex);
    hardware = std::move(identifier);
}

void SimulatedDevice::setEnvironment(const std::string& name, std::optional<std::string> value) {
    const std::lock_guard lock(mutex);
    if (value) {
        variables.insert_or_assign(name, std::move(*value));
    } else {
        variables.erase(name);
    }
}

} // namespace quorvane::testing
