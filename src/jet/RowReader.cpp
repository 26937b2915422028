#include "jet/RowReader.h"

#include "jet/ByteReader.h"
#include "jet/DatabaseImpl.h"

namespace vellumo::jet {

namespace {

constexpr int booleanType = 1;
constexpr int oleType = 11;
constexpr int memoType = 12;

constexpr std::uint16_t deletedOrMovedAway = 0x4000; // a moved row is read where it went
constexpr std::uint16_t rowOffsetMask = 0x1FFF;

} // namespace

std::vector<CellKind> cellKinds(const TableDef& table)
{
    std::vector<CellKind> kinds;
    for (const auto& column : table.columns)
        kinds.push_back(column.typeCode == oleType ? CellKind::Blob : CellKind::Text);
    return kinds;
}

struct RowReader::Library {
    std::unique_ptr<LibraryTable> table;      // null when the file has changed since its definition was read
    std::vector<MdbField> fields;             // in the library's order
    std::vector<const MdbField*> storedOrder; // the same in the order of TableDef::columns
};

RowReader::RowReader(Database& database, const TableDef& table, ObjectDecoder decodeObject)
    : m_database(database)
    , m_table(table)
    , m_decodeObject(std::move(decodeObject))
    , m_rules{database.impl().isJet3(), &database.impl().codePage}
    , m_longValue(2 * database.fileSize())
    , m_library(std::make_unique<Library>())
{
    auto opened = LibraryTable::open(database.impl(), table.definitionPage);
    if (opened && opened->agrees(table)) m_library->table = std::move(opened);
    m_library->fields.resize(table.columns.size());
    m_library->storedOrder.resize(table.columns.size());
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        m_library->storedOrder[table.numberOrder[i]] = &m_library->fields[i];
}

RowReader::~RowReader() = default;

std::size_t RowReader::readPage(std::uint32_t page, RowGroupBuilder& builder, std::vector<RowGroup>& groups)
{
    auto& database = m_database.impl();
    if (!m_library->table || m_table.columns.empty() || !database.readPage(page)) return 0;
    const auto* bytes = database.handle->pg_buf;
    if (bytes[0] != MDB_PAGE_DATA || load32(bytes + 4) != m_table.definitionPage) return 0;
    const std::size_t countOffset = database.handle->fmt->row_count_offset;
    const auto mostRows = (database.pageSize() - countOffset - 2) / 2;
    const auto rows = std::min<std::size_t>(load16(bytes + countOffset), mostRows);
    std::size_t rowsRead = 0;
    for (unsigned row = 0; row < rows; ++row) {
        if (!readRow(row, builder)) continue;
        ++rowsRead;
        if (builder.isFull()) groups.push_back(builder.take());
    }
    return rowsRead;
}

bool RowReader::readRow(unsigned row, RowGroupBuilder& builder)
{
    auto& database = m_database.impl();
    auto* handle = database.handle.get();
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_row(handle, static_cast<int>(row), &start, &size) != 0 || size == 0) return false;
    if ((start & deletedOrMovedAway) != 0) return false;
    auto* fields = m_library->fields.data();
    if (mdb_crack_row(m_library->table->def.get(), start & rowOffsetMask, size, fields) < 0) return false;
    const std::span<const std::uint8_t> page(handle->pg_buf, database.pageSize());
    for (std::size_t column = 0; column < m_table.columns.size(); ++column) {
        const auto& field = *m_library->storedOrder[column];
        if (m_table.columns[column].typeCode == booleanType) {
            // A boolean has no bytes: the null mask holds its value.
            builder.addText(column, field.is_null != 0 ? "0" : "1");
            continue;
        }
        const bool lies = field.is_null == 0 && field.start >= 0 && field.siz >= 0
            && static_cast<std::size_t>(field.start) <= page.size()
            && static_cast<std::size_t>(field.siz) <= page.size() - static_cast<std::size_t>(field.start);
        if (lies) {
            addCell(column, page.subspan(static_cast<std::size_t>(field.start), static_cast<std::size_t>(field.siz)),
                builder);
        } else if (builder.kind(column) == CellKind::Blob) {
            builder.addBlob(column, nullptr);
        } else {
            // A value that is said to lie outside of the page is damage, not a null.
            builder.addText(column, field.is_null != 0 ? std::string_view() : replacementCharacter);
        }
    }
    builder.endRow();
    return true;
}

void RowReader::addCell(std::size_t column, std::span<const std::uint8_t> stored, RowGroupBuilder& builder)
{
    const auto& def = m_table.columns[column];
    if (def.typeCode == oleType) {
        m_longValue.read(stored, m_database.impl());
        const auto bytes = m_longValue.bytes();
        builder.addBlob(column, m_decodeObject && !bytes.empty() ? m_decodeObject(bytes) : nullptr);
        return;
    }
    auto& text = builder.text(column);
    if (def.typeCode == memoType)
        addMemo(stored, text);
    else
        appendCellText(def, stored, m_rules, text);
    text.endText();
}

void RowReader::addMemo(std::span<const std::uint8_t> stored, TextColumnBuilder& text)
{
    m_longValue.read(stored, m_database.impl());
    appendStoredText(m_longValue.bytes(), m_rules, text);
    if (!m_longValue.isComplete()) text.append(replacementCharacter);
}

} // namespace vellumo::jet
