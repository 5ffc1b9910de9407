#ifndef Database_H
#define Database_H

#include <BexUnicodeString.h>

#include <memory>
#include <stdexcept>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

/** What SQLite says when it cannot do what it was asked to. */
class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/** A prepared statement. Values are bound, never pasted into the SQL. Positions of values and columns count from 1. */
class Statement {
public:
    Statement(sqlite3* iDatabase, const char* iSql);

    /** Gives a value; a null text is NULL. @return this statement. */
    Statement& Bind(int iPos, const BexUnicodeString& iText);
    Statement& Bind(int iPos, long iNumber);
    Statement& BindBytes(int iPos, const std::string& iBytes);

    /** Goes to the next row. @return whether there is one. */
    bool Next();

    /** @return a column of the row as text; null for NULL. */
    BexUnicodeString Text(int iColumn) const;
    long Number(int iColumn) const;
    std::string Bytes(int iColumn) const;

private:
    void Check(int iResult) const;

    struct Finalizer {
        void operator()(sqlite3_stmt* iStatement) const noexcept;
    };
    sqlite3* database;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement;
};

/** An open SQLite database. */
class Database {
public:
    /** Opens a file, which must be there unless it is to be created. */
    explicit Database(const std::string& iFile, bool iCreate = false);

    /** Runs a script of several statements. */
    void Run(const std::string& iScript);
    Statement Prepare(const char* iSql) const { return Statement(database.get(), iSql); }
    /** @return the number of rows that the last statement changed. */
    int Changed() const;

private:
    struct Closer {
        void operator()(sqlite3* iDatabase) const noexcept;
    };
    std::unique_ptr<sqlite3, Closer> database;
};

/** All or nothing: what was changed is taken back unless Commit() is reached. */
class Transaction {
public:
    explicit Transaction(Database& ioDatabase) : database(ioDatabase) { database.Run("BEGIN IMMEDIATE"); }
    ~Transaction();
    Transaction(const Transaction&) = delete;  // ends once
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    Database& database;
    bool open = true;
};

#endif
