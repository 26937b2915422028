// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Database.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace vellumo {

// What the object columns of a table hold: objects as programs embed them, or the files of attachment columns.
enum class ObjectForm : std::uint8_t { Object, Attachment };

struct RowsWanted {
    jet::RowChoice choice = jet::RowChoice::Live;
    ObjectForm objectForm = ObjectForm::Object;
};

// Reads the rows of the tables of one file with several readers at once: each has pages of its own and takes ranges of
// the table's pages, whose rows are joined in page order. The calling thread is one of the readers.
class TableRowsLoader {
public:
    // Told, on the calling thread, how many rows of the table have been read; returns false to stop.
    using Observer = std::function<bool(std::size_t rowsDone)>;

    // `readerCount` 0: as many as there are cores. The database outlives the loader.
    TableRowsLoader(jet::Database& database, unsigned readerCount);
    ~TableRowsLoader();

    // Fills `rows`, which is empty and has the table's columns, and adds to `damage` what could not be read. False when
    // stopped; `rows` stays empty then. Throws std::bad_alloc on the calling thread when any reader runs out of memory.
    [[nodiscard]] bool load(const jet::TableDef& table, RowStore& rows, DamageReport& damage, const Observer& observer,
        RowsWanted wanted = {});

private:
    struct Work;

    [[nodiscard]] std::size_t helperCount(std::size_t rangeCount);
    [[nodiscard]] std::vector<std::jthread> startHelpers(std::size_t count, Work& work);
    void readRanges(jet::Pages& pages, Work& work, const Observer* observer);
    void takeRanges(jet::Pages& pages, Work& work, const Observer* observer);
    [[nodiscard]] jet::DecodedObject decodeObject(ObjectForm form, jet::ByteSpan stored, bool isWhole);

    jet::Database& m_database;
    unsigned m_readerCount;
    std::vector<std::unique_ptr<jet::PageSource>> m_helperPages;
    std::atomic<std::int64_t> m_unpackBudget; // bytes that objects may still become
};

} // namespace vellumo
