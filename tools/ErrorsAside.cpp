#include "tools/ErrorsAside.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace quorvane::tool {

ErrorsAside::ErrorsAside() : kept(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0)) {
    std::fflush(stderr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (kept >= 0 && nowhere >= 0) {
        dup2(nowhere, STDERR_FILENO);
    }
    if (nowhere >= 0) {
        close(nowhere);
    }
}

ErrorsAside::~ErrorsAside() {
    if (kept >= 0) {
        std::fflush(stderr);
        dup2(kept, STDERR_FILENO);
        close(kept);
    }
}

} // namespace quorvane::tool
