#include "tools/Failure.h"
#include "tools/Pictures.h"

namespace quorvane::tool {
namespace {

[[noreturn]] void refuse() {
    throw Failure("this quorvane was built without Qt and knows no pictures");
}

} // namespace

bool knowsPictures() {
    return false;
}

std::shared_ptr<platform::Image> pictureIn(const std::string& /*path*/) {
    refuse();
}

std::shared_ptr<platform::Image> pictureOf(int /*width*/, int /*height*/, std::string_view /*pixels*/) {
    refuse();
}

} // namespace quorvane::tool
