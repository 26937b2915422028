// SPDX-License-Identifier: MIT
#include "model/TableRowsLoader.h"

#include "embedded/Attachment.h"
#include "jet/Limits.h"

#include <algorithm>
#include <new>
#include <span>
#include <system_error>

namespace vellumo {

namespace {

constexpr std::size_t pagesPerRange = 128; // enough to make fetching the next range cheap, few enough to share work

} // namespace

// What the readers of one table share. Each range is written by the one reader that took it.
struct TableRowsLoader::Work {
    const jet::TableDef& table;
    RowsWanted wanted;
    std::vector<jet::RowRun> ranges;
    std::atomic<std::size_t> nextRange{0};
    std::atomic<std::size_t> rowsDone{0};
    std::atomic<bool> isStopped{false};
    std::atomic<bool> isOutOfMemory{false};
};

TableRowsLoader::TableRowsLoader(jet::Database& database, unsigned readerCount)
    : m_database(database)
    , m_readerCount(readerCount != 0 ? readerCount : std::max(1U, std::thread::hardware_concurrency()))
    , m_unpackBudget(static_cast<std::int64_t>(
          std::max(jet::unpackedBytesAtLeast, jet::unpackedBytesPerFileByte * database.fileSize())))
{
}

TableRowsLoader::~TableRowsLoader() = default;

// Gets pages for as many further readers as the table can use; one that gets none is done without.
std::size_t TableRowsLoader::helperCount(std::size_t rangeCount)
{
    const auto wanted = std::min<std::size_t>(m_readerCount, rangeCount) - 1;
    while (m_helperPages.size() < wanted) {
        auto pages = m_database.pages().another();
        if (!pages) break;
        m_helperPages.push_back(std::move(pages));
    }
    return std::min(wanted, m_helperPages.size());
}

bool TableRowsLoader::load(
    const jet::TableDef& table, RowStore& rows, DamageReport& damage, const Observer& observer, RowsWanted wanted)
{
    const auto rangeCount = (table.dataPages.pages.size() + pagesPerRange - 1) / pagesPerRange;
    Work work{table, wanted, std::vector<jet::RowRun>(rangeCount)};
    if (rangeCount != 0) {
        const auto helpers = startHelpers(helperCount(rangeCount), work);
        readRanges(m_database.pages(), work, &observer);
    }
    if (work.isOutOfMemory) throw std::bad_alloc();
    if (work.isStopped) return false;
    for (auto& run : work.ranges) {
        damage.append(run.damage, table.name, rows.rowCount());
        for (auto& group : run.groups)
            rows.append(std::move(group));
    }
    return true;
}

// Fewer threads than asked for do as well.
std::vector<std::jthread> TableRowsLoader::startHelpers(std::size_t count, Work& work)
{
    std::vector<std::jthread> helpers;
    try {
        for (std::size_t i = 0; i < count; ++i)
            helpers.emplace_back([this, i, &work] { readRanges(*m_helperPages[i], work, nullptr); });
    } catch (const std::system_error&) {
    }
    return helpers;
}

void TableRowsLoader::readRanges(jet::Pages& pages, Work& work, const Observer* observer)
{
    try {
        takeRanges(pages, work, observer);
    } catch (const std::bad_alloc&) {
        work.isOutOfMemory = true;
        work.isStopped = true;
    }
}

void TableRowsLoader::takeRanges(jet::Pages& pages, Work& work, const Observer* observer)
{
    const auto decode = [this, form = work.wanted.objectForm](
                            jet::ByteSpan stored, bool isWhole) { return decodeObject(form, stored, isWhole); };
    jet::TableReader reader(work.table, m_database.source(pages, decode), work.wanted.choice);
    const std::span<const std::uint32_t> numbers(work.table.dataPages.pages);
    while (!work.isStopped) {
        const auto range = work.nextRange++;
        if (range >= work.ranges.size()) return;
        const auto first = range * pagesPerRange;
        auto& run = work.ranges[range];
        for (const auto page : numbers.subspan(first, std::min(pagesPerRange, numbers.size() - first)))
            reader.readPage(page, run);
        reader.finish(run);
        work.rowsDone += run.rowCount;
        if (observer != nullptr && !(*observer)(work.rowsDone)) work.isStopped = true;
    }
}

// Two readers may be told the same bytes are left: that little more does no harm.
jet::DecodedObject TableRowsLoader::decodeObject(ObjectForm form, jet::ByteSpan stored, bool isWhole)
{
    const auto decoder = form == ObjectForm::Object ? decodeObjectCell : decodeAttachmentCell;
    UnpackBudget budget{static_cast<std::size_t>(std::max<std::int64_t>(m_unpackBudget, 0)), false};
    const auto before = budget.bytesLeft;
    auto object = decoder(std::as_bytes(stored), isWhole, budget);
    m_unpackBudget -= static_cast<std::int64_t>(before - budget.bytesLeft);
    return {std::move(object), budget.isExceeded};
}

} // namespace vellumo
