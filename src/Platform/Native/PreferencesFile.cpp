#include "Platform/Native/PreferencesFile.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Native/OwnerOnly.h"

namespace quorvane::platform::native {
namespace {

std::uint64_t numberOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

int bindText(sqlite3_stmt* statement, int index, std::string_view text) {
    // A null pointer would bind no text instead of an empty one.
    return sqlite3_bind_text64(statement, index, text.data() == nullptr ? "" : text.data(), text.size(), SQLITE_STATIC,
                               SQLITE_UTF8);
}

std::string columnText(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text == nullptr ? std::string()
                           : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
}

/// The type's mark in the table.
struct TypeMark {
    const char* operator()(std::monostate) const { return ""; }
    const char* operator()(const std::string&) const { return "text"; }
    const char* operator()(std::int64_t) const { return "integer"; }
    const char* operator()(double) const { return "double"; }
    const char* operator()(bool) const { return "bool"; }
    const char* operator()(Date) const { return "date"; }
    const char* operator()(const StoredDictionary&) const { return "dictionary"; }
};

struct BindValue {
    sqlite3_stmt* statement;
    int operator()(std::monostate) const { return sqlite3_bind_null(statement, 3); }
    int operator()(const std::string& text) const { return bindText(statement, 3, text); }
    int operator()(std::int64_t number) const { return sqlite3_bind_int64(statement, 3, number); }
    int operator()(double number) const { return sqlite3_bind_double(statement, 3, number); }
    int operator()(bool flag) const { return sqlite3_bind_int64(statement, 3, flag ? 1 : 0); }
    int operator()(Date date) const { return sqlite3_bind_int64(statement, 3, date.time_since_epoch().count()); }
    int operator()(const StoredDictionary& dictionary) const { return bindText(statement, 3, dictionary.text); }
};

/// The value of the row that @p statement stands on. One whose type and value do not fit reads as absent.
StoredValue rowValue(sqlite3_stmt* statement) {
    const std::string type = columnText(statement, 0);
    const int kind = sqlite3_column_type(statement, 1);
    if (type == "text" && kind == SQLITE_TEXT) {
        return columnText(statement, 1);
    }
    if (type == "dictionary" && kind == SQLITE_TEXT) {
        return StoredDictionary{columnText(statement, 1)};
    }
    if (type == "double" && kind == SQLITE_FLOAT) {
        return sqlite3_column_double(statement, 1);
    }
    if (type == "double" && kind == SQLITE_NULL) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (kind == SQLITE_INTEGER) {
        const std::int64_t number = sqlite3_column_int64(statement, 1);
        if (type == "integer") {
            return number;
        }
        if (type == "bool") {
            return number != 0;
        }
        if (type == "date") {
            return Date(std::chrono::nanoseconds(number));
        }
    }
    return {};
}

/// Ends one use of a prepared statement.
struct Use {
    explicit Use(sqlite3_stmt* theStatement) : statement(theStatement) {}
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() {
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
    }
    sqlite3_stmt* statement;
};

} // namespace

/// Tries again soon and often: SQLite's own handler waits ever longer, and starves beside a process that writes all
/// the time.
bool PreferencesFile::Patience::waitFor(int attempts) {
    const auto now = std::chrono::steady_clock::now();
    if (attempts == 0) {
        began = now;
    }
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    return now - began < longest;
}

int PreferencesFile::waitForOthers(void* patience, int attempts) {
    return static_cast<Patience*>(patience)->waitFor(attempts) ? 1 : 0;
}

/// Held while the file is opened or put aside, so that two processes do not judge one file at once. The system lets
/// go of it when its holder dies.
struct PreferencesFile::Lock {
    Lock(const std::string& path, Patience& patience)
        : file(::open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
        // Where there is no file, or the file system has no locks, the work goes on without one.
        for (int i = 0; file >= 0 && flock(file, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
             ++i) {
            if (!patience.waitFor(i)) {
                isOthers = true;
                return;
            }
        }
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() {
        if (file >= 0) {
            ::close(file);
        }
    }
    const int file;
    /// Another process has held it all the time.
    bool isOthers = false;
};

PreferencesFile::PreferencesFile(std::string thePath, std::chrono::milliseconds longestWait)
    : path(std::move(thePath)), patience{longestWait, {}} {}

PreferencesFile::~PreferencesFile() {
    close();
}

FileOutcome PreferencesFile::open() {
    const Lock lock(path, patience);
    if (lock.isOthers) {
        lastReason = "another process holds it";
        return FileOutcome::refused;
    }
    const FileOutcome result = openLocked();
    if (result != FileOutcome::done) {
        close();
    }
    return result;
}

FileOutcome PreferencesFile::openLocked() {
    if (const std::error_code error = makeFile(path)) {
        lastReason = error == std::errc::invalid_argument ? "it is no regular file" : error.message();
        return FileOutcome::refused;
    }
    // SQLite gives its two other files the rights of the first; left-over ones keep theirs.
    for (const char* suffix : {"-wal", "-shm"}) {
        if (const std::string other = path + suffix; access(other.c_str(), F_OK) == 0) {
            static_cast<void>(makeFile(other));
        }
    }
    fileNumber = numberOf(path);
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    if (const FileOutcome result = outcome(sqlite3_open_v2(path.c_str(), &database, flags, nullptr));
        result != FileOutcome::done) {
        return result;
    }
    sqlite3_busy_handler(database, &waitForOthers, &patience);
    for (const char* sql : {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = NORMAL",
                            // The value has no declared type: SQLite would make a number of a text that looks like one.
                            "CREATE TABLE IF NOT EXISTS preferences "
                            "(key TEXT PRIMARY KEY, type TEXT NOT NULL, value) WITHOUT ROWID"}) {
        if (const FileOutcome result = execute(sql); result != FileOutcome::done) {
            return result;
        }
    }
    if (const FileOutcome result = check(); result != FileOutcome::done) {
        return result;
    }
    for (const auto& [sql, statement] :
         {std::pair("SELECT type, value FROM preferences WHERE key = ?1", &select),
          std::pair("INSERT INTO preferences (key, type, value) VALUES (?1, ?2, ?3) "
                    "ON CONFLICT (key) DO UPDATE SET type = excluded.type, value = excluded.value",
                    &upsert),
          std::pair("DELETE FROM preferences WHERE key = ?1", &erase)}) {
        if (const FileOutcome result = prepare(sql, *statement); result != FileOutcome::done) {
            return result;
        }
    }
    return FileOutcome::done;
}

void PreferencesFile::close() {
    for (sqlite3_stmt** statement : {&select, &upsert, &erase}) {
        sqlite3_finalize(std::exchange(*statement, nullptr));
    }
    indexHead = nullptr;
    knownAt.reset();
    sqlite3_close(std::exchange(database, nullptr));
}

FileOutcome PreferencesFile::outcome(int code) {
    switch (code & 0xFF) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return FileOutcome::done;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        // Another table stands under our table's name.
        case SQLITE_ERROR:
        case SQLITE_FORMAT:
        case SQLITE_CONSTRAINT:
            lastReason = sqlite3_errstr(code);
            return FileOutcome::damaged;
        default:
            lastReason = sqlite3_errstr(code);
            return FileOutcome::refused;
    }
}

FileOutcome PreferencesFile::execute(const char* sql) {
    return outcome(sqlite3_exec(database, sql, nullptr, nullptr, nullptr));
}

FileOutcome PreferencesFile::prepare(const char* sql, sqlite3_stmt*& statement) {
    return outcome(sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
}

FileOutcome PreferencesFile::check() {
    sqlite3_stmt* statement = nullptr;
    if (const FileOutcome result = prepare("PRAGMA quick_check(1)", statement); result != FileOutcome::done) {
        return result;
    }
    FileOutcome result = outcome(sqlite3_step(statement));
    if (result == FileOutcome::done && columnText(statement, 0) != "ok") {
        lastReason = sqlite3_errstr(SQLITE_CORRUPT);
        result = FileOutcome::damaged;
    }
    sqlite3_finalize(statement);
    return result;
}

std::optional<PreferencesFile::Stamp> PreferencesFile::stamp() {
    if (indexHead == nullptr) {
        sqlite3_file* file = nullptr;
        volatile void* head = nullptr;
        // The first region of the index, which is there since the first read, unless the file system has no shared
        // memory to offer; it is mapped for as long as the file is open. A commit writes its head last.
        constexpr int regionSize = 32 * 1024;
        if (access((path + "-shm").c_str(), F_OK) != 0 ||
            sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
            file->pMethods == nullptr || file->pMethods->iVersion < 2 || file->pMethods->xShmMap == nullptr ||
            file->pMethods->xShmMap(file, 0, regionSize, 0, &head) != SQLITE_OK || head == nullptr) {
            return std::nullopt;
        }
        indexHead = static_cast<const volatile std::uint32_t*>(head);
    }
    Stamp result{};
    std::copy(indexHead, indexHead + result.size(), result.begin());
    return result;
}

FileOutcome PreferencesFile::read(std::string_view key, StoredValue& value) {
    const std::optional<Stamp> before = stamp();
    if (before && before == knownAt) {
        if (const auto found = known.find(key); found != known.end()) {
            value = found->second;
            return FileOutcome::done;
        }
    }
    const FileOutcome result = readRow(key, value);
    if (result == FileOutcome::done && before && before == stamp()) {
        if (before != knownAt) {
            known.clear();
            knownAt = before;
        }
        known.emplace(key, value);
    }
    return result;
}

FileOutcome PreferencesFile::readRow(std::string_view key, StoredValue& value) {
    value = {};
    const Use use(select);
    bindText(select, 1, key);
    const int code = sqlite3_step(select);
    if (code == SQLITE_ROW) {
        value = rowValue(select);
    }
    return outcome(code);
}

FileOutcome PreferencesFile::write(std::string_view key, const StoredValue& value) {
    if (std::holds_alternative<std::monostate>(value)) {
        const Use use(erase);
        bindText(erase, 1, key);
        return outcome(sqlite3_step(erase));
    }
    const Use use(upsert);
    bindText(upsert, 1, key);
    bindText(upsert, 2, std::visit(TypeMark(), value));
    if (const FileOutcome result = outcome(std::visit(BindValue{upsert}, value)); result != FileOutcome::done) {
        return result;
    }
    return outcome(sqlite3_step(upsert));
}

FileOutcome PreferencesFile::synchronize() {
    return outcome(sqlite3_wal_checkpoint_v2(database, nullptr, SQLITE_CHECKPOINT_FULL, nullptr, nullptr));
}

std::string PreferencesFile::putAside() {
    close();
    const Lock lock(path, patience);
    if (lock.isOthers || numberOf(path) != fileNumber) {
        return {};
    }
    std::string aside = path + ".damaged";
    for (int i = 2; access(aside.c_str(), F_OK) == 0; ++i) {
        aside = path + ".damaged-" + std::to_string(i);
    }
    // The log goes first: it must never be played into the empty file that comes next.
    static_cast<void>(rename((path + "-wal").c_str(), (aside + "-wal").c_str()));
    unlink((path + "-shm").c_str());
    return rename(path.c_str(), aside.c_str()) == 0 ? aside : std::string();
}

} // namespace quorvane::platform::native
