// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"
#include "export/RelationFindings.h"
#include "export/TableScan.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>

namespace vellumo {

class MainThread;

// The scans of some tables, and then of all relations of a file, made one after the other on a thread of their own.
// Main thread only.
class TableScans {
public:
    struct Wanted {
        const TAdmMDBTable* table;
        TableChoice choice;
    };
    // `relationsOf`: null for no relations. The file and the tables stay as they are, and all references valid, as long
    // as the object. `changed` is called with each scan.
    TableScans(std::vector<Wanted> tables, const TAdmMDBFile* relationsOf, MainThread& mainThread,
        std::function<void()> changed);
    // Ends the thread.
    ~TableScans();
    TableScans(const TableScans&) = delete;
    TableScans& operator=(const TableScans&) = delete;

    // Null while there is none.
    [[nodiscard]] const TableScan* find(std::string_view tableName) const;
    // nullopt while there is none.
    [[nodiscard]] std::optional<RelationScan> find(const TAdmMDBForeignKey& relation) const;

private:
    // What the thread leaves on the main thread: it outlives the object where the object is gone by then.
    struct State {
        std::map<std::string, TableScan, std::less<>> scans; // by name of the table
        std::map<const TAdmMDBForeignKey*, RelationScan> relations;
        std::function<void()> changed;
        bool isGone = false;
    };
    void run(const std::vector<Wanted>& tables, const TAdmMDBFile* relationsOf);
    void scanTables(const std::vector<Wanted>& tables);
    void scanRelations(const TAdmMDBFile& file);

    MainThread& m_mainThread;
    std::shared_ptr<State> m_state = std::make_shared<State>();
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

} // namespace vellumo
