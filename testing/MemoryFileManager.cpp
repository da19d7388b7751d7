#include "testing/MemoryFileManager.h"

#include <filesystem>

namespace quorvane::testing {
namespace {

std::error_code failure(std::errc reason) {
    return std::make_error_code(reason);
}

/// Longest path and longest name in it, bytes, as usual file systems have them.
constexpr std::size_t maxPath = 4095;
constexpr std::size_t maxName = 255;

/// @p path without "." and "..", doubled slashes and a slash at its end, and "/" for the root. Empty when it cannot be
/// the path of anything: not absolute, with a zero byte in it, too long.
std::string normalized(const std::string& path) {
    if (path.empty() || path.front() != '/' || path.size() > maxPath || path.find('\0') != std::string::npos) {
        return {};
    }
    std::string result;
    for (const std::filesystem::path& name : std::filesystem::path(path).lexically_normal()) {
        if (name.native().size() > maxName) {
            return {};
        }
        if (!name.empty() && name != "/") {
            result += '/' + name.native();
        }
    }
    return result.empty() ? "/" : result;
}

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// What the path of everything in the directory @p path begins with.
std::string prefixOf(const std::string& path) {
    return path == "/" ? path : path + '/';
}

} // namespace

MemoryFileManager::MemoryFileManager(const platform::Clock& theClock, std::shared_ptr<Contents> contents)
    : clock(theClock), stored(contents ? std::move(contents) : std::make_shared<Contents>()) {
    const std::lock_guard lock(stored->mutex);
    stored->entries.try_emplace("/", Entry{true, {}, clock.now()});
}

std::string MemoryFileManager::cachesDirectory() const {
    return "/simulated/caches";
}

const MemoryFileManager::Entry* MemoryFileManager::find(const std::string& path) const {
    const auto found = stored->entries.find(path);
    return found == stored->entries.end() ? nullptr : &found->second;
}

MemoryFileManager::Entry& MemoryFileManager::directoryOf(const std::string& path) const {
    return stored->entries.find(parentOf(path))->second;
}

std::error_code MemoryFileManager::createDirectory(const std::string& path) {
    const std::string target = normalized(path);
    if (target.empty()) {
        return failure(std::errc::invalid_argument);
    }
    const std::lock_guard lock(stored->mutex);
    for (std::size_t end = 1; end <= target.size(); ++end) {
        if (end < target.size() && target[end] != '/') {
            continue;
        }
        const std::string part = target.substr(0, end);
        if (const Entry* present = find(part)) {
            if (!present->isDirectory) {
                return failure(std::errc::not_a_directory);
            }
            continue;
        }
        if (diskFull) {
            return failure(std::errc::no_space_on_device);
        }
        const platform::Date now = clock.now();
        stored->entries.emplace(part, Entry{true, {}, now});
        directoryOf(part).modified = now;
    }
    return {};
}

std::error_code MemoryFileManager::replace(const std::string& path, std::string_view content,
                                           std::optional<platform::Date> modified) {
    const std::string target = normalized(path);
    if (target.empty()) {
        return failure(std::errc::invalid_argument);
    }
    const std::lock_guard lock(stored->mutex);
    const Entry* present = find(target);
    if (present != nullptr && present->isDirectory) {
        return failure(std::errc::is_a_directory);
    }
    const Entry* directory = find(parentOf(target));
    if (directory == nullptr) {
        return failure(std::errc::no_such_file_or_directory);
    }
    if (!directory->isDirectory) {
        return failure(std::errc::not_a_directory);
    }
    if (diskFull) {
        return failure(std::errc::no_space_on_device);
    }
    const platform::Date now = clock.now();
    stored->entries.insert_or_assign(target, Entry{false, std::string(content), modified.value_or(now)});
    directoryOf(target).modified = now;
    return {};
}

std::optional<std::string> MemoryFileManager::read(const std::string& path, std::error_code& error) const {
    const std::string target = normalized(path);
    const std::lock_guard lock(stored->mutex);
    const Entry* entry = find(target);
    if (entry == nullptr) {
        error = failure(std::errc::no_such_file_or_directory);
    } else if (entry->isDirectory) {
        error = failure(std::errc::is_a_directory);
    } else if (unreadablePaths.contains(target)) {
        error = failure(std::errc::permission_denied);
    } else {
        error.clear();
        return entry->content;
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> MemoryFileManager::list(const std::string& path, std::error_code& error) const {
    const std::string target = normalized(path);
    const std::lock_guard lock(stored->mutex);
    const Entry* directory = find(target);
    if (directory == nullptr) {
        error = failure(std::errc::no_such_file_or_directory);
        return std::nullopt;
    }
    if (!directory->isDirectory) {
        error = failure(std::errc::not_a_directory);
        return std::nullopt;
    }
    if (unreadablePaths.contains(target)) {
        error = failure(std::errc::permission_denied);
        return std::nullopt;
    }
    error.clear();
    const std::string prefix = prefixOf(target);
    std::vector<std::string> names;
    for (auto entry = stored->entries.lower_bound(prefix);
         entry != stored->entries.end() && entry->first.starts_with(prefix); ++entry) {
        std::string name = entry->first.substr(prefix.size());
        if (!name.empty() && name.find('/') == std::string::npos) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

bool MemoryFileManager::exists(const std::string& path) const {
    const std::lock_guard lock(stored->mutex);
    return find(normalized(path)) != nullptr;
}

std::optional<platform::Date> MemoryFileManager::modificationDate(const std::string& path,
                                                                  std::error_code& error) const {
    const std::lock_guard lock(stored->mutex);
    const Entry* entry = find(normalized(path));
    if (entry == nullptr) {
        error = failure(std::errc::no_such_file_or_directory);
        return std::nullopt;
    }
    error.clear();
    return entry->modified;
}

std::error_code MemoryFileManager::setModificationDate(const std::string& path, platform::Date date) {
    const std::lock_guard lock(stored->mutex);
    const auto entry = stored->entries.find(normalized(path));
    if (entry == stored->entries.end()) {
        return failure(std::errc::no_such_file_or_directory);
    }
    entry->second.modified = date;
    return {};
}

std::error_code MemoryFileManager::protect(const std::string& path, platform::FileProtection protection) {
    const std::lock_guard lock(stored->mutex);
    const auto entry = stored->entries.find(normalized(path));
    if (entry == stored->entries.end()) {
        return failure(std::errc::no_such_file_or_directory);
    }
    entry->second.protection = protection;
    return {};
}

std::error_code MemoryFileManager::remove(const std::string& path) {
    const std::string target = normalized(path);
    const std::lock_guard lock(stored->mutex);
    if (target == "/") {
        return failure(std::errc::operation_not_permitted);
    }
    if (stored->entries.erase(target) == 0) {
        return failure(std::errc::no_such_file_or_directory);
    }
    const std::string prefix = prefixOf(target);
    auto entry = stored->entries.lower_bound(prefix);
    while (entry != stored->entries.end() && entry->first.starts_with(prefix)) {
        entry = stored->entries.erase(entry);
    }
    directoryOf(target).modified = clock.now();
    return {};
}

void MemoryFileManager::setDiskFull(bool full) {
    const std::lock_guard lock(stored->mutex);
    diskFull = full;
}

void MemoryFileManager::setUnreadable(const std::string& path, bool unreadable) {
    const std::lock_guard lock(stored->mutex);
    if (unreadable) {
        unreadablePaths.insert(normalized(path));
    } else {
        unreadablePaths.erase(normalized(path));
    }
}

} // namespace quorvane::testing
