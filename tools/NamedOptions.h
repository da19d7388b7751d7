#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Models/QuorvaneTrackingOptions.h"

namespace quorvane::tool {

/// Tracking options and what they are called.
struct NamedOptions {
    std::string name;
    /// Called with a platform in use.
    std::function<std::shared_ptr<QuorvaneTrackingOptions>()> make;
};

/// The presets, from the one that does most to the one that does least.
[[nodiscard]] std::vector<NamedOptions> presets();
[[nodiscard]] bool isPreset(const std::string& name);

/// The preset of that name, or else the options in the file of that name. Throws a `Failure`.
[[nodiscard]] NamedOptions optionsCalled(const std::string& name);

/// What "--options" may be: a preset, or what can be taken for the name of a file. Throws a `WrongForm`.
[[nodiscard]] std::string optionsIn(const std::string& text);

} // namespace quorvane::tool
