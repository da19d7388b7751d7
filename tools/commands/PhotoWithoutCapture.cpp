#include "tools/Failure.h"
#include "tools/commands/PhotoRun.h"

namespace quorvane::tool {

std::shared_ptr<const platform::Image> takePhoto(const QVQuestion& /*question*/, const PhotoOptions& /*options*/,
                                                 const GlobalOptions& /*global*/, Terminal& /*terminal*/) {
    throw Failure("this quorvane was built without the camera screens and cannot take photos");
}

} // namespace quorvane::tool
