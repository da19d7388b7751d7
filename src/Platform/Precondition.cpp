#include "Platform/Precondition.h"

#include <cstdio>
#include <cstdlib>

namespace quorvane::platform {

void preconditionFailed(const char* what, const char* file, int line) {
    static_cast<void>(std::fprintf(stderr, "QuorvaneSDK: precondition failed: %s (%s:%d)\n", what, file, line));
    std::abort();
}

} // namespace quorvane::platform
