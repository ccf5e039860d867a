// SQLite. What fails throws a FileError that names the database.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace inspect {

class Connection {
public:
    enum class Access {
        kWrite,  // it is made where there is none
        kRead,
        kTemporary,  // it has no name and goes with the object
    };

    Connection(std::string path, Access access);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void run(const char* sql);
    int64_t number(const char* sql);  // that a query gives
    int64_t changes() const;          // rows of the statement that ran last
    bool isBusy() const;              // whether that failed because of another process
    [[noreturn]] void fail(const std::string& why) const;

private:
    friend class Statement;
    void check(int result) const;

    std::string mPath;
    sqlite3* mDatabase = nullptr;
};

// From its making to commit(); without that nothing is changed.
class Transaction {
public:
    explicit Transaction(Connection& connection, const char* begin = "BEGIN IMMEDIATE");
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& mConnection;
    bool mIsOpen = true;
};

class Statement {
public:
    Statement(Connection& connection, const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    // Begins anew. The values have to stay until the last step.
    template <typename... Values>
    Statement& bind(const Values&... values) {
        reset();
        int index = 0;
        (bindAt(++index, values), ...);
        return *this;
    }
    bool step();  // whether there is another row
    template <typename... Values>
    void run(const Values&... values) {
        bind(values...);
        while (step()) continue;
    }

    // Columns of the row, from 0.
    bool isNull(int column) const;
    int64_t number(int column) const;
    double real(int column) const;
    std::string text(int column) const;  // or bytes; empty for null
    std::optional<int64_t> optionalNumber(int column) const;
    std::optional<double> optionalReal(int column) const;

private:
    void reset();
    void bindAt(int index, int64_t value);
    void bindAt(int index, double value);
    void bindAt(int index, const std::string& value);  // as a BLOB when it is no UTF-8
    void bindNull(int index);
    template <typename T>
    void bindAt(int index, const std::optional<T>& value) {
        value ? bindAt(index, *value) : bindNull(index);
    }

    Connection& mConnection;
    sqlite3_stmt* mStatement = nullptr;
};

}  // namespace inspect
