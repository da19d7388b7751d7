#include "tools/TemporaryFolder.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "tools/Failure.h"

namespace quorvane::tool {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const std::filesystem::path where = std::filesystem::temp_directory_path(error);
    folder = (where / "quorvane-demo-XXXXXX").string();
    if (error || mkdtemp(folder.data()) == nullptr) {
        const std::string reason = error ? error.message() : std::strerror(errno);
        throw Failure("no folder for temporary files can be made: " + reason);
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

} // namespace quorvane::tool
