#pragma once

#include <string>
#include <string_view>

namespace quorvane {

/// What the service is told about the device. Safe from any thread; nothing here fails.
class QVUtils {
public:
    QVUtils() = delete;

    /// The identifier for vendor as an upper-case UUID; empty when the platform withholds it.
    [[nodiscard]] static std::string getDeviceId();

    /// The marketing name of the hardware, for example "iPhone 11"; the hardware's own identifier when it is not known.
    /// On a simulator ("i386", "x86_64") "Simulator " and the name of the model in the environment variable
    /// SIMULATOR_MODEL_IDENTIFIER, or "Simulator iOS" without one.
    [[nodiscard]] static std::string getDeviceModel();

private:
    [[nodiscard]] static std::string mapToMobile(std::string_view identifier);
};

} // namespace quorvane
