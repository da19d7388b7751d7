#include "tools/Failure.h"
#include "tools/Receiver.h"

namespace quorvane::tool {

std::shared_ptr<platform::NativePlatform> platformWith(const Receiver& /*receiver*/,
                                                       platform::NativeOptions /*options*/,
                                                       std::optional<QVLogLevel> /*logLevel*/) {
    throw Failure("this quorvane was built without Qt and knows no receiver of locations");
}

} // namespace quorvane::tool
