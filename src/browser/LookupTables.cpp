// SPDX-License-Identifier: MIT
#include "browser/LookupTables.h"

#include "model/LookupTexts.h"

namespace vellumo {

const TAdmMDBTable* LookupTables::find(const TAdmMDBTable& table)
{
    const auto [place, isNew] = m_tables.try_emplace(&table);
    if (isNew) place->second = tableWithLookupTexts(table);
    return place->second ? place->second.get() : &table;
}

void LookupTables::forget(const TAdmMDBFile& file)
{
    std::erase_if(m_tables, [&](const auto& entry) { return entry.first->file() == &file; });
}

} // namespace vellumo
