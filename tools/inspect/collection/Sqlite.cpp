#include "inspect/collection/Sqlite.h"

#include <sqlite3.h>

#include <cstring>
#include <utility>

#include "inspect/base/InputFile.h"
#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

constexpr int kPatienceMs = 60'000;  // with other processes that write

int flagsOf(Connection::Access access) {
    if (access == Connection::Access::kRead) return SQLITE_OPEN_READONLY;
    return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
}

std::string reasonOf(sqlite3* database) {
    const int code = sqlite3_errcode(database);
    const int system = sqlite3_system_errno(database);
    switch (code & 0xFF) {
        case SQLITE_NOTADB: return "is no database";
        case SQLITE_FULL: return "the disk is full";
        case SQLITE_BUSY: return "another program keeps it locked";
        case SQLITE_READONLY: return "may not be written to";
        case SQLITE_CORRUPT: return "is damaged";
        case SQLITE_CANTOPEN:
        case SQLITE_IOERR:
            if (system != 0) return std::strerror(system);
    }
    return sqlite3_errmsg(database);
}

}  // namespace

Connection::Connection(std::string path, Access access) : mPath(std::move(path)) {
    const bool isTemporary = access == Access::kTemporary;
    const int result = sqlite3_open_v2(mPath.c_str(), &mDatabase, flagsOf(access), nullptr);
    if (result != SQLITE_OK) {
        const std::string reason = mDatabase ? reasonOf(mDatabase) : sqlite3_errstr(result);
        sqlite3_close(mDatabase);
        fail(reason);
    }
    if (isTemporary) mPath = "temporary database";
    sqlite3_busy_timeout(mDatabase, kPatienceMs);
}

Connection::~Connection() {
    sqlite3_close(mDatabase);
}

void Connection::run(const char* sql) {
    check(sqlite3_exec(mDatabase, sql, nullptr, nullptr, nullptr));
}

int64_t Connection::number(const char* sql) {
    Statement statement(*this, sql);
    return statement.step() ? statement.number(0) : 0;
}

int64_t Connection::changes() const {
    return sqlite3_changes64(mDatabase);
}

bool Connection::isBusy() const {
    return (sqlite3_errcode(mDatabase) & 0xFF) == SQLITE_BUSY;
}

void Connection::fail(const std::string& why) const {
    throw FileError(std::string(mPath).append(": ").append(why));
}

void Connection::check(int result) const {
    if (result != SQLITE_OK) fail(reasonOf(mDatabase));
}

Transaction::Transaction(Connection& connection, const char* begin) : mConnection(connection) {
    connection.run(begin);
}

Transaction::~Transaction() {
    if (!mIsOpen) return;
    try {
        mConnection.run("ROLLBACK");
    } catch (const FileError&) {
        // An error may have ended it before.
    }
}

void Transaction::commit() {
    mConnection.run("COMMIT");
    mIsOpen = false;
}

Statement::Statement(Connection& connection, const char* sql) : mConnection(connection) {
    mConnection.check(sqlite3_prepare_v2(connection.mDatabase, sql, -1, &mStatement, nullptr));
}

Statement::~Statement() {
    sqlite3_finalize(mStatement);
}

void Statement::reset() {
    sqlite3_reset(mStatement);
}

bool Statement::step() {
    const int result = sqlite3_step(mStatement);
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) {
        reset();
        return false;
    }
    const std::string reason = reasonOf(mConnection.mDatabase);
    reset();
    mConnection.fail(reason);
}

void Statement::bindAt(int index, int64_t value) {
    mConnection.check(sqlite3_bind_int64(mStatement, index, value));
}

void Statement::bindAt(int index, double value) {
    mConnection.check(sqlite3_bind_double(mStatement, index, value));
}

void Statement::bindAt(int index, const std::string& value) {
    mConnection.check(isUtf8(value) ? sqlite3_bind_text64(mStatement, index, value.data(),
                                                          value.size(), nullptr, SQLITE_UTF8)
                                    : sqlite3_bind_blob64(mStatement, index, value.data(),
                                                          value.size(), nullptr));
}

void Statement::bindNull(int index) {
    mConnection.check(sqlite3_bind_null(mStatement, index));
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(mStatement, column) == SQLITE_NULL;
}

int64_t Statement::number(int column) const {
    return sqlite3_column_int64(mStatement, column);
}

double Statement::real(int column) const {
    return sqlite3_column_double(mStatement, column);
}

std::string Statement::text(int column) const {
    const void* const bytes = sqlite3_column_blob(mStatement, column);
    const auto sizeBytes = static_cast<size_t>(sqlite3_column_bytes(mStatement, column));
    return bytes == nullptr ? std::string()
                            : std::string(static_cast<const char*>(bytes), sizeBytes);
}

std::optional<int64_t> Statement::optionalNumber(int column) const {
    return isNull(column) ? std::nullopt : std::optional(number(column));
}

std::optional<double> Statement::optionalReal(int column) const {
    return isNull(column) ? std::nullopt : std::optional(real(column));
}

}  // namespace inspect
