#include "Statement.h"

#include <vantlib/Exception.h>

#include "Text.h"

namespace vantlib {

void throwSqliteError(sqlite3* db, int code, const char* context) {
    OdString message = OdString::formatted(L"%ls: %ls", textFromUtf8(std::string(context)).c_str(),
                                           textFromUtf8(std::string(db ? sqlite3_errmsg(db) : sqlite3_errstr(code))).c_str());
    if ((code & 0xFF) == SQLITE_CONSTRAINT)
        throw ConsistencyError(message);
    // The connection's extended code tells apart, say, a full disk from a journal that cannot
    // be created; it belongs to this failure when its primary part matches.
    int extended = db ? sqlite3_extended_errcode(db) : code;
    throw StorageError(message, (extended & 0xFF) == (code & 0xFF) ? extended : code);
}

void execute(sqlite3* db, const char* sql) {
    char* error = nullptr;
    int rc = sqlite3_exec(db, sql, nullptr, nullptr, &error);
    if (rc != SQLITE_OK) {
        sqlite3_free(error);
        throwSqliteError(db, rc, sql);
    }
}

Statement::Statement(sqlite3* db, const std::string& sql) : m_db(db) {
    int rc = sqlite3_prepare_v3(db, sql.c_str(), int(sql.size()), SQLITE_PREPARE_PERSISTENT, &m_stmt, nullptr);
    if (rc != SQLITE_OK)
        throwSqliteError(db, rc, sql.c_str());
}

Statement::~Statement() { sqlite3_finalize(m_stmt); }

Statement& Statement::reset() {
    sqlite3_reset(m_stmt);
    sqlite3_clear_bindings(m_stmt);
    return *this;
}

void Statement::fail(int code) const {
    const char* sql = sqlite3_sql(m_stmt);
    sqlite3_reset(m_stmt);
    throwSqliteError(m_db, code, sql ? sql : "statement");
}

Statement& Statement::bind(int index, int64_t value) {
    int rc = sqlite3_bind_int64(m_stmt, index, value);
    if (rc != SQLITE_OK) fail(rc);
    return *this;
}

Statement& Statement::bind(int index, double value) {
    int rc = sqlite3_bind_double(m_stmt, index, value);
    if (rc != SQLITE_OK) fail(rc);
    return *this;
}

Statement& Statement::bind(int index, const OdString& text) { return bind(index, textToUtf8(text)); }

Statement& Statement::bind(int index, const std::string& utf8) {
    int rc = sqlite3_bind_text(m_stmt, index, utf8.data(), int(utf8.size()), SQLITE_TRANSIENT);
    if (rc != SQLITE_OK) fail(rc);
    return *this;
}

Statement& Statement::bindNull(int index) {
    int rc = sqlite3_bind_null(m_stmt, index);
    if (rc != SQLITE_OK) fail(rc);
    return *this;
}

bool Statement::step() {
    int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    fail(rc);
}

void Statement::run() {
    while (step()) {
    }
    sqlite3_reset(m_stmt);
}

OdString Statement::text(int column) const {
    const unsigned char* data = sqlite3_column_text(m_stmt, column);
    if (!data)
        return OdString();
    return textFromUtf8(reinterpret_cast<const char*>(data), size_t(sqlite3_column_bytes(m_stmt, column)));
}

std::string Statement::utf8(int column) const {
    const unsigned char* data = sqlite3_column_text(m_stmt, column);
    if (!data)
        return std::string();
    return std::string(reinterpret_cast<const char*>(data), size_t(sqlite3_column_bytes(m_stmt, column)));
}

}  // namespace vantlib
