#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "Platform/Clock.h"

struct sqlite3;
struct sqlite3_stmt;

namespace quorvane::platform::native {

/// A dictionary as it is stored: JSON text.
struct StoredDictionary {
    std::string text;
};

/// One stored value; no alternative but the first for an absent entry.
using StoredValue = std::variant<std::monostate, std::string, std::int64_t, double, bool, Date, StoredDictionary>;

/// What became of an operation on a preferences file.
enum class FileOutcome {
    done,
    /// The disk, or another process, refused it.
    refused,
    /// The file is no preferences file, or no longer a whole one.
    damaged,
};

/// The SQLite file that preferences are kept in: one table of key, type and value. One thread at a time.
///
/// Written ahead to a log that every other process on the file sees at once, and that a killed process cannot lose.
class PreferencesFile {
public:
    /// @p longestWait is how long each wait for another process lasts; few operations wait more than once.
    explicit PreferencesFile(std::string path, std::chrono::milliseconds longestWait = std::chrono::seconds(2));
    PreferencesFile(const PreferencesFile&) = delete;
    PreferencesFile& operator=(const PreferencesFile&) = delete;
    ~PreferencesFile();

    /// Opens the file and checks it, making an empty one when there is none.
    FileOutcome open();
    void close();

    FileOutcome read(std::string_view key, StoredValue& value);
    /// Stores @p value, or removes the entry when it holds none.
    FileOutcome write(std::string_view key, const StoredValue& value);
    /// Brings everything written to the disk itself.
    FileOutcome synchronize();

    /// Closes the file and renames it and its log, so that the next `open` starts empty. Answers the new path; empty
    /// when it could not be done. Another process's file that has taken the place meanwhile is left there.
    std::string putAside();

    /// Why the last operation was refused, for a developer's log.
    [[nodiscard]] const std::string& reason() const { return lastReason; }

private:
    struct Lock;
    /// How long another process is waited for, and since when.
    struct Patience {
        const std::chrono::milliseconds longest;
        std::chrono::steady_clock::time_point began;

        /// Waits a little; whether it is worth another attempt. @p attempts is how often was waited before.
        bool waitFor(int attempts);
    };
    static int waitForOthers(void* patience, int attempts);
    /// Changes with every write to the file, by whichever process.
    using Stamp = std::array<std::uint32_t, 12>;

    /// None when the file's state cannot be told.
    [[nodiscard]] std::optional<Stamp> stamp();
    FileOutcome readRow(std::string_view key, StoredValue& value);
    FileOutcome openLocked();
    FileOutcome execute(const char* sql);
    FileOutcome check();
    FileOutcome prepare(const char* sql, sqlite3_stmt*& statement);
    FileOutcome outcome(int code);

    const std::string path;
    sqlite3* database = nullptr;
    sqlite3_stmt* select = nullptr;
    sqlite3_stmt* upsert = nullptr;
    sqlite3_stmt* erase = nullptr;
    /// The head of the log's index, in memory that all processes on the file share.
    const volatile std::uint32_t* indexHead = nullptr;
    /// What was read while the file was as this stamp says.
    std::map<std::string, StoredValue, std::less<>> known;
    std::optional<Stamp> knownAt;
    /// The file's number on its file system when it was opened; 0 when it is not known.
    std::uint64_t fileNumber = 0;
    std::string lastReason;
    Patience patience;
};

} // namespace quorvane::platform::native
