#include "benchmarks/Cache/Databases.h"

#include <cstdlib>

#include <leveldb/db.h>
#include <sqlite3.h>

namespace quorvane {

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

class SQLiteStore : public KeyValueStore {
public:
    explicit SQLiteStore(const std::string& path) {
        require(sqlite3_open(path.c_str(), &database) == SQLITE_OK);
        for (const char* sql : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL",
                                "CREATE TABLE entries(key TEXT PRIMARY KEY, value BLOB) WITHOUT ROWID"}) {
            require(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
        }
        require(sqlite3_prepare_v2(database, "REPLACE INTO entries VALUES(?,?)", -1, &write, nullptr) == SQLITE_OK);
        require(sqlite3_prepare_v2(database, "SELECT value FROM entries WHERE key=?", -1, &read, nullptr) == SQLITE_OK);
    }
    ~SQLiteStore() override {
        sqlite3_finalize(write);
        sqlite3_finalize(read);
        sqlite3_close(database);
    }

    void put(const std::string& key, std::string_view value) override {
        sqlite3_bind_text(write, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
        sqlite3_bind_blob(write, 2, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
        require(sqlite3_step(write) == SQLITE_DONE);
        sqlite3_reset(write);
    }

    std::optional<std::string> get(const std::string& key) override {
        sqlite3_bind_text(read, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
        std::optional<std::string> value;
        if (sqlite3_step(read) == SQLITE_ROW) {
            value.emplace(static_cast<const char*>(sqlite3_column_blob(read, 0)),
                          static_cast<std::size_t>(sqlite3_column_bytes(read, 0)));
        }
        sqlite3_reset(read);
        return value;
    }

private:
    sqlite3* database = nullptr;
    sqlite3_stmt* write = nullptr;
    sqlite3_stmt* read = nullptr;
};

class LevelDBStore : public KeyValueStore {
public:
    explicit LevelDBStore(const std::string& path) {
        leveldb::Options options;
        options.create_if_missing = true;
        leveldb::DB* opened = nullptr;
        require(leveldb::DB::Open(options, path, &opened).ok());
        database.reset(opened);
    }

    void put(const std::string& key, std::string_view value) override {
        require(database->Put({}, key, leveldb::Slice(value.data(), value.size())).ok());
    }

    std::optional<std::string> get(const std::string& key) override {
        std::string value;
        return database->Get({}, key, &value).ok() ? std::optional(std::move(value)) : std::nullopt;
    }

private:
    std::unique_ptr<leveldb::DB> database;
};

} // namespace

std::unique_ptr<KeyValueStore> openSQLite(const std::string& directory) {
    return std::make_unique<SQLiteStore>(directory + "/entries.db");
}

std::unique_ptr<KeyValueStore> openLevelDB(const std::string& directory) {
    return std::make_unique<LevelDBStore>(directory + "/entries.leveldb");
}

} // namespace quorvane
