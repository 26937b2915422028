// SPDX-License-Identifier: MIT
#include "model/TAdmMDBForeignKey.h"

namespace vellumo {

void TAdmMDBForeignKey::addColumnPair(std::string referencing, std::string referenced)
{
    m_referencingColumns.push_back(std::move(referencing));
    m_referencedColumns.push_back(std::move(referenced));
}

// The referencing table is not among it: a relation is always shown under that table.
Information TAdmMDBForeignKey::information() const
{
    return {{PropertyId::Name, name()}, {PropertyId::Columns, m_referencingColumns},
        {PropertyId::ReferencedTable, m_referencedTable}, {PropertyId::ReferencedColumns, m_referencedColumns},
        {PropertyId::OnUpdateCascade, m_onUpdateCascade}, {PropertyId::OnDeleteCascade, m_onDeleteCascade}};
}

} // namespace vellumo
