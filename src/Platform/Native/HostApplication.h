#pragma once

#include <mutex>

#include "Platform/Application.h"

namespace quorvane::platform::native {

/// Writes @p line and a break to standard output in one piece, after what the program itself has printed.
void writeLine(std::string_view line);

/// A program without a toolkit: always in the foreground, so background time never ends; nobody warns of low memory.
class HostApplication final : public Application {
public:
    HostApplication(AnyCodable::Dictionary information, std::function<void(std::string_view)> output);

    [[nodiscard]] double backgroundTimeRemaining() const override { return foreground; }
    BackgroundTask beginBackgroundTask(const std::string& name, std::function<void()> expired) override;
    void endBackgroundTask(BackgroundTask task) override;
    [[nodiscard]] const AnyCodable::Dictionary& informationDictionary() const override { return information; }
    void standardOutput(std::string_view line) override;
    void onMemoryWarning(std::function<void()> handler) override;

private:
    const AnyCodable::Dictionary information;
    const std::function<void(std::string_view)> output;
    /// An output that prints itself comes in between.
    std::recursive_mutex outputMutex;
    BackgroundTask lastTask = 0;
};

} // namespace quorvane::platform::native
