#pragma once

#include "jet/Database.h"
#include "jet/RowReader.h"
#include "rows/RowStore.h"

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace vellumo {

// Reads the rows of the tables of one file with several readers at once: each has a handle of its own and takes
// ranges of the table's pages, whose rows are joined in page order. The calling thread is one of the readers.
class TableRowsLoader {
public:
    // Told, on the calling thread, how many rows of the table have been read; returns false to stop.
    using Observer = std::function<bool(std::size_t rowsDone)>;

    // `database` is the calling thread's handle; the others are opened from `path` when a table is worth it.
    TableRowsLoader(jet::Database& database, std::string path, unsigned readerCount);
    ~TableRowsLoader();

    // Fills `rows`, which is empty and has the table's columns. False when stopped; `rows` stays empty then.
    // Throws std::bad_alloc on the calling thread when any reader runs out of memory.
    [[nodiscard]] bool load(const jet::TableDef& table, RowStore& rows, const Observer& observer);

private:
    struct Work;

    [[nodiscard]] std::size_t helperCount(std::size_t rangeCount);
    [[nodiscard]] std::vector<std::jthread> startHelpers(std::size_t count, Work& work);
    void readRanges(jet::Database& database, Work& work, const Observer* observer);
    void takeRanges(jet::Database& database, Work& work, const Observer* observer);

    jet::Database& m_database;
    std::string m_path;
    unsigned m_readerCount;
    std::vector<std::unique_ptr<jet::Database>> m_helperDatabases;
};

} // namespace vellumo
