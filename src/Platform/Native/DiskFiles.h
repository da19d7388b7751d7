#pragma once

#include <atomic>
#include <chrono>
#include <string>

#include "Platform/FileManager.h"
#include "Platform/Native/SpareFile.h"

namespace quorvane::platform::native {

/// Files of the file system. A new content is written to a file in `staging`, which then takes its place; for a
/// directory on another file system the staging directory stands beside that directory for the moment.
///
/// Where the system can, the new file and an older one exchange their names: a rename over an older file makes some
/// file systems write the content to the disk at once, which takes many times longer. One older file is kept in
/// `staging`, for the next content to be written into, until something is removed or this object ends.
///
/// So a content is safe from the end of a process at any moment, but one of the last seconds before a power cut may be
/// found empty or as zeros, whatever was there before.
class DiskFiles final : public FileManager {
public:
    DiskFiles(std::string caches, std::string staging);
    DiskFiles(const DiskFiles&) = delete;
    DiskFiles& operator=(const DiskFiles&) = delete;
    ~DiskFiles() override;

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
    /// False when there is no spare file or it is of no use: nothing has changed then.
    bool replaceThroughSpare(const std::string& path, std::string_view content, std::optional<Date> modified);
    /// Whether the staged file of that number is the spare one now.
    bool keepSpare(std::uint64_t number, Replaced replaced);
    void dropSpare();
    [[nodiscard]] std::string stagedPath(const std::string& directory, std::uint64_t number) const;
    void removeLeftovers();

    const std::string caches;
    const std::string staging;
    const std::int64_t started = std::chrono::system_clock::now().time_since_epoch().count();
    std::atomic<std::uint64_t> lastStaged = 0;
    /// The number of the staged file that may be written to again; 0 for none.
    std::atomic<std::uint64_t> spare = 0;
};

} // namespace quorvane::platform::native
