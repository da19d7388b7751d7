#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Platform/FileManager.h"

namespace quorvane::testing {

/// Files in memory, dated by the simulated clock. Two managers over the same contents are two launches of one
/// application. The root directory exists, the caches directory does not yet.
class MemoryFileManager : public platform::FileManager {
public:
    /// A file or directory.
    struct Entry {
        bool isDirectory = false;
        std::string content;
        platform::Date modified;
        /// Set once it was protected.
        std::optional<platform::FileProtection> protection = std::nullopt;
    };

    /// What outlives a launch: entries by their absolute path, without a slash at the end.
    struct Contents {
        std::mutex mutex;
        std::map<std::string, Entry, std::less<>> entries;
    };

    /// @p clock outlives the manager.
    explicit MemoryFileManager(const platform::Clock& clock,
                               std::shared_ptr<Contents> contents = std::make_shared<Contents>());

    /// "/simulated/caches".
    [[nodiscard]] std::string cachesDirectory() const override;
    std::error_code createDirectory(const std::string& path) override;
    std::error_code replace(const std::string& path, std::string_view content,
                            std::optional<platform::Date> modified = std::nullopt) override;
    [[nodiscard]] std::optional<std::string> read(const std::string& path, std::error_code& error) const override;
    [[nodiscard]] std::optional<std::vector<std::string>> list(const std::string& path,
                                                               std::error_code& error) const override;
    [[nodiscard]] bool exists(const std::string& path) const override;
    [[nodiscard]] std::optional<platform::Date> modificationDate(const std::string& path,
                                                                 std::error_code& error) const override;
    std::error_code setModificationDate(const std::string& path, platform::Date date) override;
    std::error_code protect(const std::string& path, platform::FileProtection protection) override;
    std::error_code remove(const std::string& path) override;

    /// While on, nothing new can be written ("no space left on device"); old content stays as it is.
    void setDiskFull(bool full);

    /// While on, reading or listing @p path is refused ("permission denied").
    void setUnreadable(const std::string& path, bool unreadable);

    /// What a further launch starts from.
    [[nodiscard]] std::shared_ptr<Contents> contents() const { return stored; }

private:
    [[nodiscard]] const Entry* find(const std::string& path) const;
    [[nodiscard]] Entry& directoryOf(const std::string& path) const;

    const platform::Clock& clock;
    const std::shared_ptr<Contents> stored;
    /// Guarded by the contents' mutex.
    std::set<std::string> unreadablePaths;
    bool diskFull = false;
};

} // namespace quorvane::testing
