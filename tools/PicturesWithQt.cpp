#include <variant>

#include "Platform/Qt/QtImages.h"
#include "tools/Failure.h"
#include "tools/Pictures.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

std::shared_ptr<platform::Image> pictureOrFailure(const platform::QtImages::Result& result) {
    if (const auto* const error = std::get_if<platform::ImageError>(&result)) {
        throw Failure(printable(error->message));
    }
    return std::get<std::shared_ptr<platform::Image>>(result);
}

} // namespace

bool knowsPictures() {
    return true;
}

std::shared_ptr<platform::Image> pictureIn(const std::string& path) {
    return pictureOrFailure(platform::QtImages::read(path));
}

std::shared_ptr<platform::Image> pictureOf(int width, int height, std::string_view pixels) {
    return pictureOrFailure(platform::QtImages::fromPixels(width, height, pixels));
}

} // namespace quorvane::tool
