#pragma once
// Thin prepared-statement wrapper over the SQLite C interface. Hot paths read and bind many
// columns per row, so this avoids per-column allocations; errors become vantlib exceptions.
#include <sqlite3.h>

#include <cstdint>
#include <string>

#include <OdString.h>

namespace vantlib {

class Statement {
public:
    Statement(sqlite3* db, const std::string& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    // Ready for a new execution: previous results and bindings dropped.
    Statement& reset();

    Statement& bind(int index, int64_t value);
    Statement& bind(int index, uint32_t value) { return bind(index, int64_t(value)); }
    Statement& bind(int index, int value) { return bind(index, int64_t(value)); }
    Statement& bind(int index, double value);
    Statement& bind(int index, const OdString& text);
    Statement& bind(int index, const std::string& utf8);
    Statement& bindNull(int index);
    // Binds 0 as NULL (an absent reference).
    Statement& bindRef(int index, uint32_t id) { return id ? bind(index, id) : bindNull(index); }

    // Advances to the next row; false when done.
    bool step();
    // Runs a statement that returns no rows.
    void run();

    bool isNull(int column) const { return sqlite3_column_type(m_stmt, column) == SQLITE_NULL; }
    int64_t int64(int column) const { return sqlite3_column_int64(m_stmt, column); }
    uint32_t id(int column) const { return uint32_t(sqlite3_column_int64(m_stmt, column)); }
    int integer(int column) const { return sqlite3_column_int(m_stmt, column); }
    bool boolean(int column) const { return sqlite3_column_int(m_stmt, column) != 0; }
    double real(int column) const { return sqlite3_column_double(m_stmt, column); }
    OdString text(int column) const;
    std::string utf8(int column) const;

    sqlite3_stmt* handle() const { return m_stmt; }

private:
    [[noreturn]] void fail(int code) const;
    sqlite3* m_db;
    sqlite3_stmt* m_stmt = nullptr;
};

// Raises the vantlib exception that fits an SQLite result code (constraint violations are
// ConsistencyError, everything else StorageError).
[[noreturn]] void throwSqliteError(sqlite3* db, int code, const char* context);

// Runs SQL text without results (several statements allowed).
void execute(sqlite3* db, const char* sql);

}  // namespace vantlib
