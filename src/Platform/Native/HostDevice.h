#pragma once

#include <array>
#include <mutex>

#include "Platform/Device.h"

namespace quorvane::platform::native {

/// Where a device's own marks are found; another set of files in tests.
struct DeviceSources {
    std::array<std::string, 2> machineIdentifier = {"/etc/machine-id", "/var/lib/dbus/machine-id"};
    std::array<std::string, 2> model = {"/sys/firmware/devicetree/base/model", "/proc/device-tree/model"};
};

/// The machine that the program runs on.
///
/// The identifier is a hash of the machine's own one that belongs to this library alone and does not lead back to it;
/// a random UUID on a machine without one. The first identifier that is asked for is kept in `keptIn` and answered
/// from then on, whatever becomes of the machine's. The system version is the kernel's release up to its first dash,
/// the hardware identifier the device tree's model, else the machine field of `uname`.
class HostDevice final : public Device {
public:
    /// @p keptIn is a file's path, or empty to keep the identifier for this run only.
    explicit HostDevice(std::string keptIn, DeviceSources sources = {});

    [[nodiscard]] std::optional<std::string> identifierForVendor() const override;
    [[nodiscard]] std::string systemVersion() const override;
    [[nodiscard]] std::string hardwareIdentifier() const override;
    [[nodiscard]] std::optional<std::string> environment(const std::string& name) const override;

private:
    [[nodiscard]] std::string makeIdentifier() const;
    [[nodiscard]] std::string readHardware() const;
    /// Writes @p made to the file. Answers what stands there now.
    [[nodiscard]] std::string keep(const std::string& made) const;
    [[nodiscard]] std::optional<std::string> keptIdentifier() const;

    const std::string keptIn;
    const DeviceSources sources;
    mutable std::mutex mutex;
    /// Each asked for once: they do not change while the program runs. Empty: not asked for yet.
    mutable std::string identifier;
    mutable std::string version;
    mutable std::string hardware;
};

} // namespace quorvane::platform::native
