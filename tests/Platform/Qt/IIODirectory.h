#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "support/ScratchDirectory.h"

namespace quorvane::testing {

/// A folder of devices as the kernel shows them.
class IIODirectory {
public:
    using Files = std::map<std::string, std::string>;

    void write(const std::string& device, const Files& files) {
        const std::string folder = path() + "/" + device;
        std::filesystem::create_directories(folder);
        for (const auto& [name, text] : files) {
            std::ofstream(folder + "/" + name) << text << "\n";
        }
    }
    void removeDevice(const std::string& device) { std::filesystem::remove_all(path() + "/" + device); }

    [[nodiscard]] const std::string& path() const { return scratch.path(); }

    /// Upright and at rest, in steps of a hundredth of a metre per square second.
    static Files accelerometer() {
        return {{"in_accel_x_raw", "0"},
                {"in_accel_y_raw", "981"},
                {"in_accel_z_raw", "0"},
                {"in_accel_scale", "0.010000"},
                {"name", "bmi160"}};
    }

private:
    ScratchDirectory scratch;
};

} // namespace quorvane::testing
