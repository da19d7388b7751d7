#include "Platform/Qt/QtPlatform.h"

#include <utility>

#include "Platform/Qt/QtMainQueue.h"

namespace quorvane::platform {

std::shared_ptr<QtPlatform> QtPlatform::make(NativeOptions options) {
    return std::make_shared<QtPlatform>(std::move(options));
}

QtPlatform::QtPlatform(NativeOptions options)
    : NativePlatform(std::move(options), std::make_unique<qt::QtMainQueue>()) {}

} // namespace quorvane::platform
