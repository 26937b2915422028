#include "jet/TableReader.h"

#include "embedded/TAdmBlobData.h"
#include "jet/ByteReader.h"
#include "jet/UnicodeText.h"

#include <algorithm>

namespace vellumo::jet {

namespace {

constexpr std::uint8_t outsideOfRow[1]{}; // too short for the header of a long value

} // namespace

TableReader::TableReader(const TableDef& table, Source source, RowChoice choice)
    : m_table(table)
    , m_source(std::move(source))
    , m_choice(choice)
    , m_layout(table, m_source.pages.format().isJet3)
    , m_longValue(m_source.pages, m_source.longValueBudget)
    , m_builder(cellKinds(table))
{
}

void TableReader::readPage(std::uint32_t page, RowRun& run)
{
    const auto bytes = m_source.pages.read(page, m_page);
    if (!isDataPage(bytes) || ownerOf(bytes) != m_table.definitionPage) {
        run.damage.add({.kind = DamageKind::Page, .page = page});
        return;
    }
    RowPlaces places(bytes, m_source.pages.format());
    if (!places.isCountPlausible()) run.damage.add({.kind = DamageKind::Page, .page = page});
    m_rows.clear();
    for (std::size_t row = 0; row < places.count(); ++row)
        takeRow(places.next(), page, run);
    addRows(page, run);
    if (m_builder.isFull()) run.groups.push_back(m_builder.take());
}

void TableReader::finish(RowRun& run)
{
    if (!m_builder.isEmpty()) run.groups.push_back(m_builder.take());
}

void TableReader::takeRow(const RowPlace& place, std::uint32_t page, RowRun& run)
{
    RowFrame frame;
    if (m_choice == RowChoice::Deleted) {
        // What was deleted may have been written over since: no damage.
        if (place.state == RowState::Deleted && m_layout.frame(place.bytes, frame)) m_rows.push_back(frame);
        return;
    }
    if (place.state == RowState::Deleted) return;
    if (place.state == RowState::MovedAway && movedToListedPage(place)) return;
    if (place.state == RowState::Live && m_layout.frame(place.bytes, frame))
        m_rows.push_back(frame);
    else
        run.damage.add({.kind = DamageKind::Row, .page = page});
}

// Then the row is read on the page where it is now.
bool TableReader::movedToListedPage(const RowPlace& place)
{
    if (place.bytes.size() < 4) return false;
    const auto pointer = load32(place.bytes.data());
    if (!std::ranges::binary_search(m_table.dataPages.pages, pageOf(pointer))) return false;
    const auto page = m_source.pages.read(pageOf(pointer), m_otherPage);
    if (!isDataPage(page) || ownerOf(page) != m_table.definitionPage) return false;
    const auto moved = rowAt(page, m_source.pages.format(), pointer);
    return moved && moved->state != RowState::Deleted;
}

void TableReader::addRows(std::uint32_t page, RowRun& run)
{
    m_run = &run;
    m_pageNumber = page;
    for (std::size_t i = 0; i < m_table.columns.size(); ++i) {
        switch (m_table.columns[i].type) {
        case ColumnType::Boolean: addBooleans(i); break;
        case ColumnType::Memo: addMemos(i); break;
        case ColumnType::Ole: addObjects(i); break;
        default: addTexts(i); break;
        }
    }
    m_builder.endRows(m_rows.size());
    run.rowCount += m_rows.size();
}

// A boolean has no bytes: the null mask holds its value.
void TableReader::addBooleans(std::size_t column)
{
    auto& text = m_builder.text(column);
    const auto number = m_table.columns[column].number;
    for (const auto& row : m_rows) {
        *text.room(1) = row.isSet(number) ? '1' : '0';
        text.commit(1);
        text.endText();
    }
}

void TableReader::addTexts(std::size_t column)
{
    auto& text = m_builder.text(column);
    const auto& def = m_table.columns[column];
    const CellAppender append(def, m_source.rules);
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto cell = m_layout.cell(m_rows[row], def);
        if (cell.state == CellState::Present) {
            if (!append(cell.bytes, text)) addDamage(DamageKind::Value, column, row);
        } else if (cell.state == CellState::Damaged) {
            // A value that is said to lie outside of its row is damage, not a null.
            text.append(replacementCharacter);
            addDamage(DamageKind::Value, column, row);
        }
        text.endText();
    }
}

void TableReader::addMemos(std::size_t column)
{
    auto& text = m_builder.text(column);
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto cell = m_layout.cell(m_rows[row], m_table.columns[column]);
        if (cell.state == CellState::Present) {
            m_longValue.read(cell.bytes);
            const bool isWhole = appendStoredText(m_longValue.bytes(), m_source.rules, text);
            if (!m_longValue.isComplete()) text.append(replacementCharacter);
            if (m_longValue.isOverBudget())
                addDamage(DamageKind::Budget, column, row);
            else if (!isWhole || !m_longValue.isComplete())
                addDamage(DamageKind::LongText, column, row);
        } else if (cell.state == CellState::Damaged) {
            text.append(replacementCharacter);
            addDamage(DamageKind::LongText, column, row);
        }
        text.endText();
    }
}

void TableReader::addObjects(std::size_t column)
{
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto cell = m_layout.cell(m_rows[row], m_table.columns[column]);
        // A value that is said to lie outside of its row: no byte of it is there, but the cell is not empty.
        const auto stored = cell.state == CellState::Damaged ? ByteSpan(outsideOfRow) : cell.bytes;
        const bool isNull = cell.state == CellState::Null;
        m_builder.addBlob(column, isNull ? nullptr : readObject(column, row, stored));
    }
}

std::shared_ptr<TAdmBlobData> TableReader::readObject(std::size_t column, std::size_t row, ByteSpan stored)
{
    m_longValue.read(stored);
    const bool isWhole = m_longValue.isComplete();
    auto [object, isOverBudget] = m_source.decodeObject(m_longValue.bytes(), isWhole);
    // Not even a first byte is left of it: still no empty cell.
    if (!isWhole && !object)
        object = std::make_shared<TAdmBlobData>(
            std::vector<std::byte>(), std::string(), ObjectFacts{.state = ObjectState::Damaged});
    if (isOverBudget || m_longValue.isOverBudget())
        addDamage(DamageKind::Budget, column, row);
    else if (object && object->state() == ObjectState::Damaged)
        addDamage(DamageKind::Object, column, row);
    return object;
}

void TableReader::addDamage(DamageKind kind, std::size_t column, std::size_t row)
{
    m_run->damage.add(
        {.kind = kind, .column = m_table.columns[column].name, .page = m_pageNumber, .row = m_run->rowCount + row + 1});
}

} // namespace vellumo::jet
