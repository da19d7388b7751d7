#include "tools/Failure.h"
#include "tools/commands/ScanRun.h"

namespace quorvane::tool {

std::string scan(const ScanOptions& /*options*/, const GlobalOptions& /*global*/, Terminal& /*terminal*/) {
    throw Failure("this quorvane was built without the camera screens and cannot scan");
}

} // namespace quorvane::tool
