#pragma once

#include <cstdint>

namespace quorvane::platform {

/// Plays the system's own sounds. Main thread only.
class SystemSound {
public:
    using Identifier = std::uint32_t;
    /// No sound but a vibration, where the device can.
    static constexpr Identifier vibration = 4095;

    SystemSound() = default;
    SystemSound(const SystemSound&) = delete;
    SystemSound& operator=(const SystemSound&) = delete;
    virtual ~SystemSound() = default;

    /// Returns at once; what cannot be played is not.
    virtual void play(Identifier sound) = 0;
};

} // namespace quorvane::platform
