#include "Database.h"

#include <sqlite3.h>

Statement::Statement(sqlite3* iDatabase, const char* iSql) : database(iDatabase) {
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(database, iSql, -1, &prepared, nullptr));
    statement.reset(prepared);
}

Statement& Statement::Bind(int iPos, const BexUnicodeString& iText) {
    if (iText.IsNull()) {
        Check(sqlite3_bind_null(statement.get(), iPos));
        return *this;
    }
    // UTF-16 is what both sides know, so no character is lost between them.
    std::u16string units;
    for (int i = 0; i < iText.GetLengthInChar(); ++i) {
        units += iText[i].Code();
    }
    Check(sqlite3_bind_text16(statement.get(), iPos, units.data(), static_cast<int>(units.size() * sizeof(char16_t)),
                              SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::Bind(int iPos, long iNumber) {
    Check(sqlite3_bind_int64(statement.get(), iPos, iNumber));
    return *this;
}

Statement& Statement::BindBytes(int iPos, const std::string& iBytes) {
    Check(sqlite3_bind_blob(statement.get(), iPos, iBytes.data(), static_cast<int>(iBytes.size()), SQLITE_TRANSIENT));
    return *this;
}

bool Statement::Next() {
    const int result = sqlite3_step(statement.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        Check(result);
    }
    return result == SQLITE_ROW;
}

BexUnicodeString Statement::Text(int iColumn) const {
    const void* text = sqlite3_column_text16(statement.get(), iColumn - 1);
    if (text == nullptr) {
        return BexUnicodeString();
    }
    const int bytes = sqlite3_column_bytes16(statement.get(), iColumn - 1);
    return BexUnicodeString(static_cast<const char16_t*>(text), bytes / static_cast<int>(sizeof(char16_t)));
}

long Statement::Number(int iColumn) const {
    return static_cast<long>(sqlite3_column_int64(statement.get(), iColumn - 1));
}

std::string Statement::Bytes(int iColumn) const {
    const void* bytes = sqlite3_column_blob(statement.get(), iColumn - 1);
    const int length = sqlite3_column_bytes(statement.get(), iColumn - 1);
    return bytes == nullptr ? std::string()
                            : std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

void Statement::Check(int iResult) const {
    if (iResult != SQLITE_OK) {
        throw DatabaseError(sqlite3_errmsg(database));
    }
}

void Statement::Finalizer::operator()(sqlite3_stmt* iStatement) const noexcept {
    sqlite3_finalize(iStatement);
}

Database::Database(const std::string& iFile, bool iCreate) {
    sqlite3* opened = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (iCreate ? SQLITE_OPEN_CREATE : 0);
    const int result = sqlite3_open_v2(iFile.c_str(), &opened, flags, nullptr);
    database.reset(opened);  // there is something to close even when it could not be opened
    if (result != SQLITE_OK) {
        throw DatabaseError(iFile + ": " + sqlite3_errstr(result));
    }
    Run("PRAGMA foreign_keys = ON");
}

void Database::Run(const std::string& iScript) {
    char* message = nullptr;
    if (sqlite3_exec(database.get(), iScript.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        const std::string text = message == nullptr ? sqlite3_errmsg(database.get()) : message;
        sqlite3_free(message);
        throw DatabaseError(text);
    }
}

int Database::Changed() const {
    return sqlite3_changes(database.get());
}

void Database::Closer::operator()(sqlite3* iDatabase) const noexcept {
    sqlite3_close(iDatabase);
}

Transaction::~Transaction() {
    if (open) {
        try {
            database.Run("ROLLBACK");
        } catch (const DatabaseError&) {
            // SQLite has taken it back already, which is why we are here
        }
    }
}

void Transaction::Commit() {
    database.Run("COMMIT");
    open = false;
}
