// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/Connection/SQLConnection.h"
#include "export/ExportReport.h"

#include <memory>
#include <string>
#include <vector>

namespace vellumo {

class ExportJob;
class Replacement;
class SQLiteInserter;
class TAdmMDBTable;

// The SQLite database that an export of either style writes, beside the one whose place it takes in the end. A
// statement that the database refuses costs its table; a disk that refuses costs the whole file. All failures are told
// to the job.
class SQLiteTarget {
public:
    // The job outlives it.
    explicit SQLiteTarget(ExportJob& job);
    ~SQLiteTarget();

    // False when nothing can be written.
    [[nodiscard]] bool open();
    [[nodiscard]] SQLConnection& connection() { return m_connection; }
    // Nothing that is written from now on will be kept.
    [[nodiscard]] bool isDamaged() const { return m_isDamaged; }

    // Makes a table and its rows in one transaction, without which each row would cost a commit. A table of which a row
    // is refused is taken back: with some of its rows it would look like one that has no others. `rows`: null for none.
    // `last`: statements behind the rows.
    void writeTable(const TAdmMDBTable& table, const std::string& create, SQLiteInserter* rows,
        const std::vector<std::string>& last = {});
    // A statement behind the tables; `reason`: of its failure.
    void runStep(const std::string& statement, ExportReason reason);
    // Closes the file and gives it its name, unless the job was stopped. Then the tables are done.
    void finish();

private:
    [[nodiscard]] bool createFile();
    [[nodiscard]] bool connect();
    [[nodiscard]] bool switchForeignKeysOff();
    [[nodiscard]] bool create(const TAdmMDBTable& table, const std::string& statement);
    [[nodiscard]] bool insertRows(const TAdmMDBTable& table, SQLiteInserter& rows);
    [[nodiscard]] bool insertGroup(const TAdmMDBTable& table, std::size_t group, SQLiteInserter& rows);
    [[nodiscard]] bool commit(const TAdmMDBTable& table, const std::vector<std::string>& last);
    void takeBack();
    void close();
    [[nodiscard]] bool publish();
    // With what the library said of the last statement.
    [[nodiscard]] ExportReason refused(ExportReason reason, std::uint64_t row = 0);

    ExportJob& m_job;
    std::unique_ptr<Replacement> m_replacement; // null: errno then is m_creationError
    int m_creationError;
    SQLConnection m_connection;
    std::vector<std::string> m_finishedTables;
    bool m_isDamaged = false;
    std::string m_damageCause; // as the library tells it
};

} // namespace vellumo
