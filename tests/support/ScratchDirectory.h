#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace quorvane::testing {

/// A new directory below the system's one for temporary files, removed with everything in it at the end.
class ScratchDirectory {
public:
    ScratchDirectory() : directory((std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string()) {
        if (mkdtemp(directory.data()) == nullptr) {
            std::abort();
        }
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(directory, ignored);
    }

    [[nodiscard]] const std::string& path() const { return directory; }

private:
    std::string directory;
};

} // namespace quorvane::testing
