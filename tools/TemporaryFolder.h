#pragma once

#include <string>

namespace quorvane::tool {

/// A new folder for temporary files, removed with everything in it at the end.
class TemporaryFolder {
public:
    /// Throws a `Failure` when none can be made.
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::string& path() const { return folder; }

private:
    std::string folder;
};

} // namespace quorvane::tool
