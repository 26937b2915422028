// SPDX-License-Identifier: MIT
#include "export/sql/SQLRowWriter.h"

#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectCells.h"
#include "export/sql/SQLText.h"

namespace vellumo {

SQLRowWriter::SQLRowWriter(
    std::string start, const std::vector<SQLRowColumn>& columns, std::string_view end, std::string decimalSymbol)
    : m_start(std::move(start))
    , m_end(end)
    , m_decimalSymbol(std::move(decimalSymbol))
{
    for (const auto& layout : columns)
        m_columns.push_back({layout});
}

void SQLRowWriter::beginGroup(const RowGroup& group)
{
    m_group = &group;
    for (std::size_t c = 0; c < m_columns.size(); ++c)
        m_columns[c].isPlain = isPlain(m_columns[c].layout.form, group.texts[c].bytes());
}

bool SQLRowWriter::isPlain(SQLCellForm form, std::string_view texts) const
{
    const auto has = [&](char character) { return texts.find(character) != std::string_view::npos; };
    if (form == SQLCellForm::Decimal) return m_decimalSymbol == "." || !has('.');
    return !has('\'') && !has('\\');
}

std::string SQLRowWriter::blobLiteral(std::size_t column, std::uint32_t row) const
{
    const auto* blob = exportedObject(m_group->blobs[column][row]);
    return blob != nullptr ? encodeSqlBlobValue(blob->data()) : std::string();
}

} // namespace vellumo
