#include "model/TAdmMDBForeignKey.h"

#include "text/Messages.h"

#include <fmt/ranges.h>

namespace vellumo {

void TAdmMDBForeignKey::addColumnPair(std::string referencing, std::string referenced)
{
    m_referencingColumns.push_back(std::move(referencing));
    m_referencedColumns.push_back(std::move(referenced));
}

std::vector<std::string> TAdmMDBForeignKey::getObjectLabels() const
{
    return {localized("Name"), localized("Columns"), localized("Referenced table"), localized("Referenced columns"),
        localized("On update cascade"), localized("On delete cascade")};
}

// The referencing table is not among them: a relation is always shown under that table.
std::vector<InfoValue> TAdmMDBForeignKey::infoValues() const
{
    return {name(), fmt::format("{}", fmt::join(m_referencingColumns, ", ")), m_referencedTable,
        fmt::format("{}", fmt::join(m_referencedColumns, ", ")), localized(m_onUpdateCascade ? "YES" : "NO"),
        localized(m_onDeleteCascade ? "YES" : "NO")};
}

} // namespace vellumo
