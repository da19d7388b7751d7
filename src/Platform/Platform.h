#pragma once

#include <memory>

namespace quorvane::platform {

class Application;
class Clock;
class Device;
class Digest;
class FileManager;
class HTTPTransport;
class LocationManagerFactory;
class MainQueue;
class PreferencesStore;
class SecureRandom;

/// Everything outside the process's own memory, as one object. The parts live as long as the platform.
class Platform {
public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    /// Closes the preferences.
    virtual ~Platform() = default;

    [[nodiscard]] virtual Clock& clock() = 0;
    [[nodiscard]] virtual MainQueue& mainQueue() = 0;
    [[nodiscard]] virtual PreferencesStore& preferences() = 0;
    [[nodiscard]] virtual HTTPTransport& transport() = 0;
    [[nodiscard]] virtual Digest& digest() = 0;
    [[nodiscard]] virtual SecureRandom& random() = 0;
    [[nodiscard]] virtual FileManager& files() = 0;
    [[nodiscard]] virtual Application& application() = 0;
    [[nodiscard]] virtual Device& device() = 0;
    [[nodiscard]] virtual LocationManagerFactory& locationManagers() = 0;
};

/// Sets the platform in use. Called on the main thread, never inside a callback of the library, and while no other
/// thread of the program is inside the library, to log for example: the instances it may hold are about to end.
/// The one in use before goes: its transport is stopped, what its main queue still holds is dropped (completions of the
/// old world are never called), the shared instances and the threads they own end in reverse order of their making, and
/// the library lets go of the platform. The delegate must be set again. None leaves no platform in use.
void install(std::shared_ptr<Platform> platform);

/// The platform in use. Having none is a fatal error. The reference is good until the next `install`.
[[nodiscard]] Platform& current();

[[nodiscard]] bool isInstalled();

} // namespace quorvane::platform
