#include "model/TableRowsLoader.h"

#include "embedded/OleField.h"
#include "embedded/TAdmBlobData.h"

#include <algorithm>
#include <new>
#include <span>
#include <system_error>

namespace vellumo {

namespace {

constexpr std::size_t pagesPerRange = 128; // enough to make fetching the next range cheap, few enough to share work

// A cell whose content cannot be decoded is shown as null, without a word.
std::shared_ptr<TAdmBlobData> decodeObject(std::span<const std::uint8_t> stored)
{
    OlePayload payload;
    if (mdb_read_ole_field(std::as_bytes(stored), payload) != 0 || payload.data.empty()) return nullptr;
    return std::make_shared<TAdmBlobData>(std::move(payload.data), std::move(payload.extension));
}

} // namespace

// What the readers of one table share. Each range is written by the one reader that took it.
struct TableRowsLoader::Work {
    const jet::TableDef& table;
    std::vector<std::vector<RowGroup>> ranges;
    std::atomic<std::size_t> nextRange{0};
    std::atomic<std::size_t> rowsDone{0};
    std::atomic<bool> isStopped{false};
    std::atomic<bool> isOutOfMemory{false};
};

TableRowsLoader::TableRowsLoader(jet::Database& database, std::string path, unsigned readerCount)
    : m_database(database)
    , m_path(std::move(path))
    , m_readerCount(readerCount != 0 ? readerCount : std::max(1U, std::thread::hardware_concurrency()))
{
}

TableRowsLoader::~TableRowsLoader() = default;

// Opens as many further handles as the table can use; one that fails to open is done without.
std::size_t TableRowsLoader::helperCount(std::size_t rangeCount)
{
    const auto wanted = std::min<std::size_t>(m_readerCount, rangeCount) - 1;
    while (m_helperDatabases.size() < wanted) {
        auto database = jet::Database::open(m_path);
        if (!database) break;
        m_helperDatabases.push_back(std::move(database));
    }
    return std::min(wanted, m_helperDatabases.size());
}

bool TableRowsLoader::load(const jet::TableDef& table, RowStore& rows, const Observer& observer)
{
    const auto rangeCount = (table.dataPages.size() + pagesPerRange - 1) / pagesPerRange;
    if (rangeCount == 0) return true;
    Work work{table, std::vector<std::vector<RowGroup>>(rangeCount)};
    {
        const auto helpers = startHelpers(helperCount(rangeCount), work);
        readRanges(m_database, work, &observer);
    }
    if (work.isOutOfMemory) throw std::bad_alloc();
    if (work.isStopped) return false;
    for (auto& groups : work.ranges)
        for (auto& group : groups)
            rows.append(std::move(group));
    return true;
}

// Fewer threads than asked for do as well.
std::vector<std::jthread> TableRowsLoader::startHelpers(std::size_t count, Work& work)
{
    std::vector<std::jthread> helpers;
    try {
        for (std::size_t i = 0; i < count; ++i)
            helpers.emplace_back([this, i, &work] { readRanges(*m_helperDatabases[i], work, nullptr); });
    } catch (const std::system_error&) {
    }
    return helpers;
}

void TableRowsLoader::readRanges(jet::Database& database, Work& work, const Observer* observer)
{
    try {
        takeRanges(database, work, observer);
    } catch (const std::bad_alloc&) {
        work.isOutOfMemory = true;
        work.isStopped = true;
    }
}

void TableRowsLoader::takeRanges(jet::Database& database, Work& work, const Observer* observer)
{
    jet::RowReader reader(database, work.table, decodeObject);
    RowGroupBuilder builder(jet::cellKinds(work.table));
    const std::span<const std::uint32_t> pages(work.table.dataPages);
    while (!work.isStopped) {
        const auto range = work.nextRange++;
        if (range >= work.ranges.size()) return;
        const auto first = range * pagesPerRange;
        auto& groups = work.ranges[range];
        std::size_t rowsRead = 0;
        for (const auto page : pages.subspan(first, std::min(pagesPerRange, pages.size() - first)))
            rowsRead += reader.readPage(page, builder, groups);
        if (!builder.isEmpty()) groups.push_back(builder.take());
        work.rowsDone += rowsRead;
        if (observer != nullptr && !(*observer)(work.rowsDone)) work.isStopped = true;
    }
}

} // namespace vellumo
