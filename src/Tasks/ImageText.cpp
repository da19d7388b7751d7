#include "Tasks/ImageText.h"

#include "Models/Base64.h"

namespace quorvane {

std::optional<std::string> toBase64(const platform::Image& image, ImageType type) {
    const std::optional<std::string> bytes = type.quality ? image.jpeg(*type.quality) : image.png();
    if (!bytes) {
        return std::nullopt;
    }
    std::string text = type.quality ? "data:image/jpeg;base64," : "data:image/png;base64,";
    text.reserve(text.size() + (bytes->size() + 2) / 3 * 4);
    appendBase64(text, *bytes);
    return text;
}

} // namespace quorvane
