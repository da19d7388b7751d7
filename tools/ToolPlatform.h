#pragma once

#include <memory>
#include <optional>

#include "Core/Enumerations.h"
#include "Platform/Native/NativePlatform.h"

namespace quorvane::tool {

/// Preferences with a log level of this run on top of the stored one.
class RunPreferences {
public:
    /// Without @p logLevel the stored level counts. @p theStored outlives this.
    RunPreferences(platform::PreferencesStore& theStored, std::optional<QVLogLevel> logLevel);
    ~RunPreferences();

    [[nodiscard]] platform::PreferencesStore& store();

private:
    struct Overlay;

    platform::PreferencesStore& stored;
    std::unique_ptr<Overlay> overlay;
};

/// A platform, the native one or another that stands on it, with preferences of this run.
template <class Base>
class RunPlatform final : public Base {
public:
    template <class Options>
    RunPlatform(Options options, std::optional<QVLogLevel> logLevel)
        : Base(std::move(options)), own(Base::preferences(), logLevel) {}

    [[nodiscard]] platform::PreferencesStore& preferences() override { return own.store(); }

private:
    RunPreferences own;
};

} // namespace quorvane::tool
