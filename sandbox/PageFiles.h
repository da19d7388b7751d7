#pragma once

#include <optional>
#include <string_view>

namespace quorvane::sandbox {

struct PageFile {
    std::string_view name;
    std::string_view content;
};

/// A file of the folder "page", which is built into the program; none when there is no such file.
[[nodiscard]] std::optional<PageFile> pageFile(std::string_view name);

} // namespace quorvane::sandbox
