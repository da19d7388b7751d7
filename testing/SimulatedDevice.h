#pragma once

#include <map>
#include <mutex>

#include "Platform/Device.h"

namespace quorvane::testing {

/// A device of which everything can be set. It starts with an identifier of its own, version "1.0.0", the hardware
/// "simulated1,1" and an empty environment.
class SimulatedDevice : public platform::Device {
public:
    /// What `identifierForVendor` starts with.
    static constexpr const char* defaultIdentifier = "5E1F0E57-0000-4000-8000-000000000001";

    [[nodiscard]] std::optional<std::string> identifierForVendor() const override;
    [[nodiscard]] std::string systemVersion() const override;
    [[nodiscard]] std::string hardwareIdentifier() const override;
    [[nodiscard]] std::optional<std::string> environment(const std::string& name) const override;

    /// None: the platform withholds it.
    void setIdentifierForVendor(std::optional<std::string> identifier);
    void setSystemVersion(std::string version);
    void setHardwareIdentifier(std::string identifier);
    /// None takes the variable out of the environment.
    void setEnvironment(const std::string& name, std::optional<std::string> value);

private:
    mutable std::mutex mutex;
    std::optional<std::string> vendorIdentifier = defaultIdentifier;
    std::string version = "1.0.0";
    std::string hardware = "simulated1,1";
    std::map<std::string, std::string> variables;
};

} // namespace quorvane::testing
