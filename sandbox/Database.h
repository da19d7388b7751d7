#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

struct sqlite3;
struct sqlite3_stmt;

namespace quorvane::sandbox {

class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One SQL statement, ready to run once. Throws a `DatabaseError` whenever the database refuses.
class Statement {
public:
    Statement(sqlite3* database, std::string_view sql);

    Statement& bind(std::string_view text);
    Statement& bind(const char* text) { return bind(std::string_view(text)); }
    Statement& bind(std::int64_t number);
    Statement& bind(double number);
    Statement& bindBytes(std::string_view bytes);

    /// Goes to the next row; false when there is none.
    bool step();
    void run();

    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::string bytes(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* handle) const;
    };
    sqlite3* database;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement;
    int bound = 0;
};

/// The sandbox's store. One connection, shared by the threads of both services: whoever uses it holds a
/// `Transaction`.
class Database {
public:
    /// Opens @p path, which is created when there is none, readable by its owner only; an empty path is a database in
    /// memory. Answers a sentence when the file is none of ours, cannot be used or is in use.
    static std::variant<std::unique_ptr<Database>, std::string> open(const std::string& path);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    [[nodiscard]] Statement prepare(std::string_view sql) { return {handle, sql}; }
    /// Runs one or more statements without results.
    void execute(const char* sql);
    /// Rows that the last statement changed.
    [[nodiscard]] int changes() const;

private:
    friend class Transaction;
    explicit Database(sqlite3* theHandle) : handle(theHandle) {}
    sqlite3* handle;
    std::mutex mutex;
};

/// Has the database to itself; what it wrote stays only after `commit`.
class Transaction {
public:
    explicit Transaction(Database& theDatabase);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

private:
    std::unique_lock<std::mutex> lock;
    Database& database;
    bool isOpen = true;
};

} // namespace quorvane::sandbox
