// SPDX-License-Identifier: MIT
#include "browser/NameFilters.h"

#include "text/CaseFold.h"

namespace vellumo {

namespace {

// `folded`: the text looked for, case-folded.
bool nameContains(const TAdmMDBObject& object, const std::string& folded)
{
    return foldCase(object.name()).find(folded) != std::string::npos;
}

std::vector<TAdmMDBTable*> tablesWith(const TAdmMDBFile::Tables& tables, const std::string& folded)
{
    std::vector<TAdmMDBTable*> kept;
    for (const auto& table : tables)
        if (nameContains(*table, folded)) kept.push_back(table.get());
    return kept;
}

} // namespace

std::vector<TAdmMDBTable*> filterTableName(const TAdmMDBFile::Tables& tables, std::string_view text)
{
    return tablesWith(tables, foldCase(text));
}

std::vector<TAdmMDBFile*> filterFileName(std::span<TAdmMDBFile* const> files, std::string_view text)
{
    const auto folded = foldCase(text);
    std::vector<TAdmMDBFile*> kept;
    for (auto* file : files)
        if (nameContains(*file, folded) || (file->active() && !tablesWith(file->tables(), folded).empty()))
            kept.push_back(file);
    return kept;
}

} // namespace vellumo
