#pragma once

#include <string>
#include <string_view>

namespace quorvane::QVCache {

class Utils {
public:
    Utils() = delete;

    /// The MD5 of the text's bytes as 32 lower-case hexadecimal digits. For file names only.
    [[nodiscard]] static std::string MD5(std::string_view text);

    /// What stands behind the last "." of the last component of a path; empty when that "." begins or ends it.
    [[nodiscard]] static std::string_view pathExtension(std::string_view path);
};

} // namespace quorvane::QVCache
