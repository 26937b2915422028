// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DynamicSQLiteDBResult.h"
#include "SQLite Connection/DBSockets/SQLiteAPISocket.h"

struct sqlite3;

namespace vellumo {

// An SQLite database, through the library loaded at run time; the library stays loaded while such sockets exist.
class DynamicSQLiteAPISocket : public SQLiteAPISocket {
public:
    // Loads the library; a failure is shown in `window` and told by everything that follows.
    explicit DynamicSQLiteAPISocket(LoadErrorWindow& window);
    ~DynamicSQLiteAPISocket() override;
    DynamicSQLiteAPISocket(const DynamicSQLiteAPISocket&) = delete;
    DynamicSQLiteAPISocket& operator=(const DynamicSQLiteAPISocket&) = delete;

    [[nodiscard]] bool connect() override;
    [[nodiscard]] int runQuery(const std::string& statement) override;
    [[nodiscard]] DBRow row() const override;
    [[nodiscard]] std::unique_ptr<DBStatement> prepare(const std::string& statement) override;
    [[nodiscard]] std::string getLastErrorMessage() const override;
    [[nodiscard]] bool isFileBroken() const override;
    bool stopQuery() override;
    void close() override;
    [[nodiscard]] int libraryVersionNumber() const override;

    // Of the last statement; null when it failed, there was none, or the library cannot read rows.
    [[nodiscard]] const SQLiteDBResult* result() const { return m_result.get(); }

private:
    struct CloseDatabase {
        void operator()(sqlite3* database) const;
    };

    [[nodiscard]] int open();
    [[nodiscard]] int applyPassword();

    bool m_isLibraryLoaded; // by this socket
    std::unique_ptr<sqlite3, CloseDatabase> m_dbHandler;
    std::string m_refusal;                           // why the library is not able to connect; "" when it is
    std::unique_ptr<DynamicSQLiteDBResult> m_result; // goes before the database
};

} // namespace vellumo
