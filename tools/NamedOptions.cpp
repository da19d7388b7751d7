#include "tools/NamedOptions.h"

#include <algorithm>
#include <utility>

#include "JSON/JSON.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/Text.h"

namespace quorvane::tool {

std::vector<NamedOptions> presets() {
    return {{"continuous", QuorvaneTrackingOptions::CONTINUOUS},
            {"responsive", QuorvaneTrackingOptions::RESPONSIVE},
            {"efficient", QuorvaneTrackingOptions::EFFICIENT}};
}

bool isPreset(const std::string& name) {
    const std::vector<NamedOptions> all = presets();
    return std::any_of(all.begin(), all.end(), [&name](const NamedOptions& one) { return one.name == name; });
}

NamedOptions optionsCalled(const std::string& name) {
    for (const NamedOptions& preset : presets()) {
        if (preset.name == name) {
            return preset;
        }
    }
    auto fromFile = modelIn<QuorvaneTrackingOptions>(name, contentOf(name));
    return {baseName(name),
            [options = std::move(fromFile)]() -> std::shared_ptr<QuorvaneTrackingOptions> { return options; }};
}

std::string optionsIn(const std::string& text) {
    if (!isPreset(text) && text.find_first_of("./") == std::string::npos) {
        throw WrongForm("--options takes continuous, responsive, efficient or the name of a .json file, not \"" + text +
                        "\"");
    }
    return text;
}

} // namespace quorvane::tool
