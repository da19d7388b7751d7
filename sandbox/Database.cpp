#include "sandbox/Database.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane::sandbox {
namespace {

/// Marks a file as a store of this program ("QVSB"), and the layout of its tables.
constexpr std::int64_t applicationID = 0x51565342;
constexpr std::int64_t layoutVersion = 2;

constexpr const char* layout = R"(
    CREATE TABLE settings (name TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
    CREATE TABLE codes (code TEXT PRIMARY KEY, client TEXT NOT NULL, user TEXT NOT NULL, redirect TEXT NOT NULL,
                        challenge TEXT NOT NULL, expiry INTEGER NOT NULL) WITHOUT ROWID;
    CREATE TABLE access_tokens (token TEXT PRIMARY KEY, client TEXT NOT NULL, user TEXT NOT NULL,
                                expiry INTEGER NOT NULL) WITHOUT ROWID;
    CREATE TABLE refresh_tokens (token TEXT PRIMARY KEY, client TEXT NOT NULL, user TEXT NOT NULL,
                                 expiry INTEGER NOT NULL) WITHOUT ROWID;
    CREATE TABLE places (id INTEGER PRIMARY KEY, latitude REAL NOT NULL, longitude REAL NOT NULL, body TEXT NOT NULL);
    CREATE VIRTUAL TABLE places_area USING rtree(id, south, north, west, east);
    CREATE TABLE tasks (id INTEGER PRIMARY KEY, latitude REAL NOT NULL, longitude REAL NOT NULL, body TEXT NOT NULL,
                        key TEXT NOT NULL UNIQUE, state TEXT NOT NULL, campaign TEXT NOT NULL, place_id TEXT NOT NULL, place_key TEXT NOT NULL);
    CREATE VIRTUAL TABLE tasks_area USING rtree(id, south, north, west, east);
    CREATE TABLE positions (user TEXT PRIMARY KEY, latitude REAL NOT NULL, longitude REAL NOT NULL) WITHOUT ROWID;
    CREATE TABLE claims (number INTEGER PRIMARY KEY, task INTEGER NOT NULL, user TEXT NOT NULL, state TEXT NOT NULL,
                         next TEXT NOT NULL, score INTEGER NOT NULL, claimed INTEGER NOT NULL,
                         completed INTEGER NOT NULL, UNIQUE (task, user));
    CREATE TABLE responses (number INTEGER PRIMARY KEY, claim INTEGER NOT NULL, question TEXT NOT NULL,
                            content TEXT NOT NULL, body TEXT NOT NULL, photo TEXT NOT NULL, UNIQUE (claim, question));
    CREATE TABLE photos (id TEXT PRIMARY KEY, type TEXT NOT NULL, bytes BLOB NOT NULL);
)";

[[noreturn]] void fail(sqlite3* database) {
    throw DatabaseError(sqlite3_errmsg(database));
}

void check(sqlite3* database, int code) {
    if (code != SQLITE_OK) {
        fail(database);
    }
}

/// SQLite would create the file with the permissions of the process; its journals copy those of the file.
std::string makePrivateFile(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) {
        return "The database \"" + path + "\" cannot be opened: " + std::strerror(errno) + ".";
    }
    struct stat status {};
    const bool isFile = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    ::close(file);
    return isFile ? std::string() : "The database \"" + path + "\" is no file.";
}

std::int64_t pragma(Database& database, const char* sql) {
    Statement statement = database.prepare(sql);
    return statement.step() ? statement.integer(0) : 0;
}

bool isEmpty(Database& database) {
    return pragma(database, "SELECT count(*) FROM sqlite_schema") == 0;
}

} // namespace

Statement::Statement(sqlite3* theDatabase, std::string_view sql) : database(theDatabase) {
    sqlite3_stmt* raw = nullptr;
    check(database, sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &raw, nullptr));
    statement.reset(raw);
}

void Statement::Finalizer::operator()(sqlite3_stmt* handle) const {
    sqlite3_finalize(handle);
}

Statement& Statement::bind(std::string_view text) {
    // An empty text needs an address too, or it becomes null.
    const char* bytes = text.empty() ? "" : text.data();
    check(database, sqlite3_bind_text(statement.get(), ++bound, bytes, static_cast<int>(text.size()),
                                      SQLITE_TRANSIENT)); // NOLINT
    return *this;
}

Statement& Statement::bind(std::int64_t number) {
    check(database, sqlite3_bind_int64(statement.get(), ++bound, number));
    return *this;
}

Statement& Statement::bindBytes(std::string_view bytes) {
    const char* address = bytes.empty() ? "" : bytes.data();
    check(database, sqlite3_bind_blob64(statement.get(), ++bound, address, bytes.size(), SQLITE_TRANSIENT)); // NOLINT
    return *this;
}

Statement& Statement::bind(double number) {
    check(database, sqlite3_bind_double(statement.get(), ++bound, number));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        fail(database);
    }
    return code == SQLITE_ROW;
}

void Statement::run() {
    while (step()) {
    }
}

std::string Statement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column));
    return bytes == nullptr ? std::string() : std::string(bytes, size);
}

std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(statement.get(), column);
}

double Statement::real(int column) const {
    return sqlite3_column_double(statement.get(), column);
}

std::string Statement::bytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement.get(), column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column));
    return bytes == nullptr ? std::string() : std::string(bytes, size);
}

std::variant<std::unique_ptr<Database>, std::string> Database::open(const std::string& path) {
    if (!path.empty()) {
        if (std::string problem = makePrivateFile(path); !problem.empty()) {
            return problem;
        }
    }
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.empty() ? ":memory:" : path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    std::unique_ptr<Database> database(new Database(handle));
    const std::string name = "The database \"" + path + "\"";
    try {
        check(handle, code);
        // Two programs on one file would hand out tokens that the other does not know.
        database->execute("PRAGMA locking_mode=EXCLUSIVE; PRAGMA synchronous=NORMAL; BEGIN EXCLUSIVE");
        if (isEmpty(*database)) {
            database->execute(layout);
            database->execute(("PRAGMA application_id=" + std::to_string(applicationID) +
                               "; PRAGMA user_version=" + std::to_string(layoutVersion))
                                  .c_str());
        } else if (pragma(*database, "PRAGMA application_id") != applicationID) {
            return name + " belongs to another program.";
        } else if (pragma(*database, "PRAGMA user_version") != layoutVersion) {
            return name + " was written by another version of this program.";
        }
        database->execute("COMMIT");
    } catch (const DatabaseError& error) {
        const bool isBusy = sqlite3_errcode(handle) == SQLITE_BUSY;
        return name + (isBusy ? std::string(" is in use by another program.")
                              : " cannot be used: " + std::string(error.what()) + ".");
    }
    if (!path.empty()) {
        ::chmod(path.c_str(), 0600);
    }
    return database;
}

Database::~Database() {
    sqlite3_close(handle);
}

void Database::execute(const char* sql) {
    check(handle, sqlite3_exec(handle, sql, nullptr, nullptr, nullptr));
}

int Database::changes() const {
    return sqlite3_changes(handle);
}

Transaction::Transaction(Database& theDatabase) : lock(theDatabase.mutex), database(theDatabase) {
    database.execute("BEGIN");
}

Transaction::~Transaction() {
    if (isOpen) {
        sqlite3_exec(database.handle, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void Transaction::commit() {
    database.execute("COMMIT");
    isOpen = false;
}

} // namespace quorvane::sandbox
