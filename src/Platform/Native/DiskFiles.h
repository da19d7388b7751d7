#pragma once

#include <atomic>
#include <string>

#include "Platform/FileManager.h"

namespace quorvane::platform::native {

/// Files of the file system. A new content is written to a file in `staging` and renamed into its place; for a
/// directory on another file system the staging directory stands beside that directory for the moment.
///
/// Where the system can, the new file and an older one exchange their names and the older one is removed: a rename over
/// an older file makes some file systems write the content to the disk at once, which takes many times longer. So a
/// content is safe from the end of a process, but one of the last seconds before a power cut may be found empty.
class DiskFiles final : public FileManager {
public:
    DiskFiles(std::string caches, std::string staging);

    [[nodiscard]] std::string cachesDirectory() const override { return caches; }
    std::error_code createDirectory(const std::string& path) override;
    std::error_code replace(const std::string& path, std::string_view content,
                            std::optional<Date> modified = std::nullopt) override;
    [[nodiscard]] std::optional<std::string> read(const std::string& path, std::error_code& error) const override;
    [[nodiscard]] std::optional<std::vector<std::string>> list(const std::string& path,
                                                               std::error_code& error) const override;
    [[nodiscard]] bool exists(const std::string& path) const override;
    [[nodiscard]] std::optional<Date> modificationDate(const std::string& path, std::error_code& error) const override;
    std::error_code setModificationDate(const std::string& path, Date date) override;
    std::error_code protect(const std::string& path, FileProtection protection) override;
    std::error_code remove(const std::string& path) override;

private:
    std::error_code replaceThrough(const std::string& directory, const std::string& path, std::string_view content,
                                   std::optional<Date> modified);
    void removeLeftovers();

    const std::string caches;
    const std::string staging;
    std::atomic<std::uint64_t> lastStaged = 0;
};

} // namespace quorvane::platform::native
