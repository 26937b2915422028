// SPDX-License-Identifier: MIT
#pragma once

#include "export/files/OutputFile.h"
#include "export/objects/ObjectFile.h"
#include "model/TAdmMDBFile.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace vellumo {

// What became of the objects. `failures`: "path: the system's reason", localised.
struct ObjectsReport {
    std::size_t written = 0; // files
    std::size_t damaged = 0; // objects of which there is only a part; those with bytes were written too
    std::size_t linked = 0;  // objects whose file lies elsewhere
    std::vector<std::string> failures;
    bool isStopped = false;
};

// Makes the objects of a database files of their own, TABLE/COLUMN/ROW[-NAME].EXT below a folder, and lists them in its
// `manifest.csv`. What cannot be written is a failure of the report, and the rest goes on. One thread at a time.
class ObjectFolder {
public:
    // `folder` is made when it is missing, its parent is there. `file` outlives the object.
    ObjectFolder(const TAdmMDBFile& file, std::string folder);

    // False when the folder or the manifest in it cannot be made: nothing can be added then.
    [[nodiscard]] bool open();
    // Writes the object of a cell, `row` counted from 0, and the further files of an attachment cell. Returns the path
    // of its file relative to the folder, "" when there is none: it could not be written, or there are no bytes. Once a
    // cell.
    std::string add(const TAdmMDBTable& table, std::size_t column, std::size_t row, const TAdmBlobData& object);
    // Writes the manifest. Without it there is none, or an older one.
    void finish();

    [[nodiscard]] const ObjectsReport& report() const { return m_report; }

private:
    struct TableNames {
        std::string folder;
        FolderNames columns;
        std::map<std::size_t, std::string> columnFolders; // by number of the column
    };

    // The path of a column's folder relative to the folder; "" when it cannot be made.
    [[nodiscard]] std::string columnFolder(const TAdmMDBTable& table, std::size_t column);
    [[nodiscard]] bool makeFolder(const std::string& path);
    struct Place {
        const TAdmMDBTable& table;
        std::size_t column;
        std::size_t row;
        std::size_t number; // of the file in the cell, from 1
    };
    std::string addFile(const Place& place, const TAdmBlobData& object);
    [[nodiscard]] std::string writeObject(const Place& place, const TAdmBlobData& object);
    void fail(const std::string& path, std::string_view reason);

    const TAdmMDBFile& m_file;
    std::string m_folder;
    FolderNames m_tableFolders;
    std::map<std::string, TableNames> m_tables; // by name
    OutputFile m_manifest;
    ObjectsReport m_report;
};

// Does so with all objects of the tables (of the file). `observer` is told how many of how many objects are done; when
// it stops the run, the manifest is not written.
[[nodiscard]] ObjectsReport exportObjects(const TAdmMDBFile& file, std::span<const TAdmMDBTable* const> tables,
    const std::string& folder, const OpenObserver& observer);

} // namespace vellumo
