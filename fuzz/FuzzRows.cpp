// SPDX-License-Identifier: MIT
#include "embedded/TAdmBlobData.h"
#include "fuzz/PageInput.h"
#include "fuzz/RowTable.h"
#include "jet/Limits.h"
#include "jet/TableReader.h"

namespace {

using namespace vellumo;
using namespace vellumo::jet;

// Small pages besides the real ones: an input of few bytes has several.
constexpr PageFormat formats[] = {jet4Pages, jet3Pages, {false, 512, 12}, {true, 512, 8}};

// Keeps objects as they are stored.
struct Decoder {
    std::uint64_t broken = 0; // that it was told of

    DecodedObject operator()(ByteSpan stored, bool isWhole)
    {
        if (!isWhole) ++broken;
        if (stored.empty()) return {};
        const auto bytes = std::as_bytes(stored);
        const ObjectFacts facts{.state = isWhole ? ObjectState::Whole : ObjectState::Damaged};
        return {std::make_shared<TAdmBlobData>(std::vector<std::byte>(bytes.begin(), bytes.end()), "", facts)};
    }
};

// What the cells of a table came to.
struct Sums {
    std::size_t objectBytes = 0;
    std::uint64_t damagedObjects = 0;
    std::uint64_t unreadableNumbers = 0;
};

bool isStoredText(const ColumnDef& column)
{
    return column.type == ColumnType::Text || column.type == ColumnType::Memo;
}

// The most bytes that the texts of a column can take. Rows never overlap, and a byte becomes at most three; a damaged
// cell adds a character. Memos elsewhere take no more than the budget.
std::size_t mostText(const ColumnDef& column, std::size_t rows, std::size_t inputSize, std::size_t budget)
{
    if (column.type == ColumnType::Memo) return 3 * (inputSize + budget) + 6 * rows;
    return 3 * inputSize + 48 * rows;
}

void checkTexts(const TableDef& table, std::size_t column, const RowGroup& group, Sums& sums)
{
    const auto& texts = group.texts[column];
    require(texts.rowCount() == group.rowCount);
    for (std::uint32_t row = 0; row < group.rowCount; ++row) {
        const auto text = texts.text(row);
        const auto& def = table.columns[column];
        if (def.type == ColumnType::Boolean && !def.isWrapped) require(text == "0" || text == "1");
        if (!isStoredText(def) && text == replacementCharacter) ++sums.unreadableNumbers;
    }
}

// Cells of attachments share their objects.
void checkObjects(bool areOwn, std::span<const std::shared_ptr<TAdmBlobData>> objects, Sums& sums)
{
    for (const auto& object : objects) {
        if (!object) continue;
        require(object->state() == ObjectState::Damaged || !object->data().empty());
        if (areOwn) sums.objectBytes += object->data().size();
        if (object->state() == ObjectState::Damaged) ++sums.damagedObjects;
    }
}

void checkDamage(const TableDef& table, const RowRun& run, const Pages& pages)
{
    for (const auto& record : run.damage.records()) {
        require(record.count > 0 && record.page < pages.count());
        const bool isCell = record.kind >= DamageKind::Value;
        require(isCell || record.kind == DamageKind::Page || record.kind == DamageKind::Row);
        require(record.row <= (isCell ? run.rowCount : 0));
        require((record.row != 0) == (isCell && record.page != 0));
    }
    const auto cells = run.rowCount * (table.columns.size() + table.histories.size());
    require(run.damage.total(DamageKind::Value) + run.damage.total(DamageKind::LongText)
            + run.damage.total(DamageKind::Object) + run.damage.total(DamageKind::Budget)
        <= cells);
}

void checkSums(
    const TableDef& table, const RowRun& run, std::size_t inputSize, std::size_t budget, std::uint64_t broken)
{
    Sums sums;
    std::size_t rows = 0;
    std::vector<std::size_t> textBytes(table.columns.size());
    for (const auto& group : run.groups) {
        rows += group.rowCount;
        require(group.historyGroups.size() == 1 && group.historyGroups[0].size() == group.rowCount);
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            textBytes[column] += group.texts[column].bytes().size();
            const auto type = table.columns[column].type;
            if (isObjectType(type))
                checkObjects(type == ColumnType::Ole, group.blobs[column], sums);
            else
                checkTexts(table, column, group, sums);
        }
    }
    require(rows == run.rowCount);
    for (std::size_t column = 0; column < table.columns.size(); ++column)
        require(textBytes[column] <= mostText(table.columns[column], rows, inputSize, budget));
    require(sums.objectBytes <= inputSize + budget);
    const auto lost = run.damage.total(DamageKind::Object);
    const auto overBudget = run.damage.total(DamageKind::Budget);
    require(sums.damagedObjects >= broken && sums.damagedObjects >= lost && sums.damagedObjects <= lost + overBudget);
    require(sums.unreadableNumbers <= run.damage.total(DamageKind::Value) + overBudget);
}

std::size_t readTable(test::MemoryPages& pages, std::size_t inputSize, std::size_t budget, RowChoice choice)
{
    static const auto table = [] {
        auto made = rowTable();
        for (std::uint32_t page = 1; page < 1000; ++page)
            made.dataPages.pages.push_back(page);
        return made;
    }();
    LongValue::Budget left = static_cast<std::int64_t>(budget);
    Decoder decoder;
    TableReader reader(table, {pages, {pages.format().isJet3, &western()}, left, std::ref(decoder)}, choice);
    RowRun run;
    for (std::uint32_t page = 1; page < pages.count(); ++page)
        reader.readPage(page, run);
    reader.finish(run);
    checkDamage(table, run, pages);
    checkSums(table, run, inputSize, budget, decoder.broken);
    return run.rowCount + run.damage.total(DamageKind::Row);
}

} // namespace

// The first byte tells the version and the size of the pages, which follow: rows of the table, and long values.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const auto& format = formats[data[0] % std::size(formats)];
    const ByteSpan bytes(data + 1, size - 1);
    test::MemoryPages pages(format, pageCountOf(bytes.size(), format));
    putPages(bytes, pages);
    const auto live = readTable(pages, bytes.size(), longValueBytesPerFileByte * bytes.size(), RowChoice::Live);
    const auto deleted = readTable(pages, bytes.size(), 16, RowChoice::Deleted);
    require(live + deleted <= mostRowsOnPage * pages.count());
    return 0;
}
