#pragma once

#include <memory>
#include <optional>

#include "Core/Enumerations.h"
#include "Platform/Native/NativePlatform.h"

namespace quorvane::tool {

/// The native platform, with a log level of this run on top of the stored one.
class ToolPlatform final : public platform::NativePlatform {
public:
    /// Without @p logLevel the stored level counts.
    ToolPlatform(platform::NativeOptions options, std::optional<QVLogLevel> logLevel);
    ~ToolPlatform() override;

    [[nodiscard]] platform::PreferencesStore& preferences() override;

    /// What is stored, whatever the log level of this run.
    [[nodiscard]] platform::PreferencesStore& stored() { return NativePlatform::preferences(); }

private:
    struct Overlay;
    std::unique_ptr<Overlay> overlay;
};

} // namespace quorvane::tool
