// SPDX-License-Identifier: MIT
#include "jet/TableReader.h"

#include "embedded/TAdmBlobData.h"
#include "jet/ByteReader.h"
#include "jet/CalculatedValue.h"
#include "jet/Limits.h"
#include "jet/UnicodeText.h"

#include <algorithm>

namespace vellumo::jet {

namespace {

DamageKind damageOf(const ColumnDef& column)
{
    switch (column.type) {
    case ColumnType::Memo: return DamageKind::LongText;
    case ColumnType::Ole:
    case ColumnType::Attachment: return DamageKind::Object;
    default: return DamageKind::Value;
    }
}

// An object of which not even the first byte can be read: still no empty cell.
std::shared_ptr<TAdmBlobData> nothingLeft()
{
    return std::make_shared<TAdmBlobData>(
        std::vector<std::byte>(), std::string(), ObjectFacts{.state = ObjectState::Damaged});
}

} // namespace

TableReader::TableReader(const TableDef& table, Source source, RowChoice choice)
    : m_table(table)
    , m_source(std::move(source))
    , m_choice(choice)
    , m_layout(table, m_source.pages.format().isJet3)
    , m_longValue(m_source.pages, m_source.longValueBudget)
    , m_builder(cellKinds(table), table.histories.size())
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
    const bool isHere = place.state == RowState::Live || place.state == RowState::MovedHere;
    if (isHere && m_layout.frame(place.bytes, frame))
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
    return moved && moved->state == RowState::MovedHere;
}

void TableReader::addRows(std::uint32_t page, RowRun& run)
{
    m_run = &run;
    m_pageNumber = page;
    m_cellBytesLeft = cellBytesPerPageByte * m_source.pages.format().size;
    for (std::size_t i = 0; i < m_table.columns.size(); ++i) {
        const auto& column = m_table.columns[i];
        switch (column.type) {
        case ColumnType::Boolean: column.isWrapped ? addTexts(i) : addBooleans(i); break;
        case ColumnType::Memo: addMemos(i); break;
        case ColumnType::Ole: addObjects(i); break;
        case ColumnType::Attachment: addAttachments(i); break;
        case ColumnType::MultipleValues: addValues(i); break;
        default: addTexts(i); break;
        }
    }
    for (std::size_t i = 0; i < m_table.histories.size(); ++i)
        addHistory(i);
    m_builder.endRows(m_rows.size());
    run.rowCount += m_rows.size();
}

// A damaged cell has been told.
inline Cell TableReader::cellOf(const ColumnDef& column, std::size_t row)
{
    auto cell = m_layout.cell(m_rows[row], column);
    const auto isWithinBudget = cell.bytes.size() <= m_cellBytesLeft;
    if (isWithinBudget && cell.state != CellState::Damaged) {
        m_cellBytesLeft -= cell.bytes.size();
        if (!column.isWrapped || column.type == ColumnType::Memo || cell.state == CellState::Null) return cell;
        cell = unwrapped(cell.bytes);
        if (cell.state == CellState::Damaged) addDamage(damageOf(column), column, row);
        return cell;
    }
    addDamage(isWithinBudget ? damageOf(column) : DamageKind::Budget, column, row);
    return {CellState::Damaged};
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
        const auto cell = cellOf(def, row);
        if (cell.state == CellState::Present) {
            if (!append(cell.bytes, text)) addDamage(DamageKind::Value, def, row);
            text.noteUnlessTold();
        } else if (cell.state == CellState::Damaged) {
            text.append(replacementCharacter); // it is no null
        }
        text.endText();
    }
}

void TableReader::addMemos(std::size_t column)
{
    auto& text = m_builder.text(column);
    const auto& def = m_table.columns[column];
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto cell = cellOf(def, row);
        if (cell.state == CellState::Present) {
            m_longValue.read(cell.bytes);
            const auto memo =
                def.isWrapped ? unwrapped(m_longValue.bytes()) : Cell{CellState::Present, m_longValue.bytes()};
            const bool isWhole = appendStoredText(memo.bytes, m_source.rules, text) && memo.state != CellState::Damaged;
            if (!m_longValue.isComplete() || memo.state == CellState::Damaged) text.append(replacementCharacter);
            if (memo.state != CellState::Null) text.noteUnlessTold();
            if (m_longValue.isOverBudget())
                addDamage(DamageKind::Budget, def, row);
            else if (!isWhole || !m_longValue.isComplete())
                addDamage(DamageKind::LongText, def, row);
        } else if (cell.state == CellState::Damaged) {
            text.append(replacementCharacter);
        }
        text.endText();
    }
}

void TableReader::addObjects(std::size_t column)
{
    const auto& def = m_table.columns[column];
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto cell = cellOf(def, row);
        if (cell.state == CellState::Present)
            m_builder.addBlob(column, readObject(def, row, cell.bytes));
        else
            m_builder.addBlob(column, cell.state == CellState::Damaged ? nothingLeft() : nullptr);
    }
}

std::shared_ptr<TAdmBlobData> TableReader::readObject(const ColumnDef& column, std::size_t row, ByteSpan stored)
{
    m_longValue.read(stored);
    const bool isWhole = m_longValue.isComplete();
    auto [object, isOverBudget] = m_source.decodeObject(m_longValue.bytes(), isWhole);
    if (!isWhole && !object) object = nothingLeft();
    if (isOverBudget || m_longValue.isOverBudget())
        addDamage(DamageKind::Budget, column, row);
    else if (object && object->state() == ObjectState::Damaged)
        addDamage(DamageKind::Object, column, row);
    return object;
}

// A number without values that could be had is damage; one of no values says that there are none.
TableReader::ValuesOfCell TableReader::valuesOf(const ColumnDef& column, std::size_t row)
{
    constexpr std::size_t numberSize = 4;
    const auto cell = cellOf(column, row);
    if (cell.state != CellState::Present) return {cell.state};
    if (cell.bytes.size() < numberSize || !column.groups) {
        addDamage(damageOf(column), column, row);
        return {CellState::Damaged};
    }
    const auto number = loadNumber<std::int32_t>(cell.bytes.data());
    return {CellState::Present, number, column.groups->claim(number)};
}

void TableReader::addAttachments(std::size_t column)
{
    const auto& def = m_table.columns[column];
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto values = valuesOf(def, row);
        if (values.group != nullptr)
            m_builder.addBlob(column, values.group->object);
        else
            m_builder.addBlob(column, values.state == CellState::Damaged ? nothingLeft() : nullptr);
    }
}

void TableReader::addValues(std::size_t column)
{
    auto& text = m_builder.text(column);
    const auto& def = m_table.columns[column];
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const auto values = valuesOf(def, row);
        if (values.group != nullptr)
            appendValues(def, row, *values.group, text);
        else if (values.state == CellState::Damaged)
            text.append(replacementCharacter);
        text.endText();
    }
}

// Any number of damaged cells may name the same values.
void TableReader::appendValues(
    const ColumnDef& column, std::size_t row, const ValueGroup& group, TextColumnBuilder& text)
{
    const auto size = static_cast<std::int64_t>(group.text.size());
    if (m_source.longValueBudget.fetch_sub(size) >= size) {
        text.append(group.text);
        text.noteUnlessTold();
        return;
    }
    text.append(replacementCharacter);
    addDamage(DamageKind::Budget, column, row);
}

void TableReader::addHistory(std::size_t history)
{
    const auto& column = m_table.histories[history].column;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        m_builder.addHistoryGroup(history, valuesOf(column, row).number);
}

void TableReader::addDamage(DamageKind kind, const ColumnDef& column, std::size_t row)
{
    m_run->damage.add({.kind = kind, .column = column.name, .page = m_pageNumber, .row = m_run->rowCount + row + 1});
}

} // namespace vellumo::jet
