// SPDX-License-Identifier: MIT
#include "model/ContentsLoader.h"

#include "model/ConnectionText.h"
#include "model/QueryText.h"
#include "text/FinderCompare.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

namespace vellumo {

namespace {

constexpr int odbcLink = 4;
constexpr int query = 5;
constexpr int link = 6;
constexpr std::string_view queriesTable = "MSysQueries";

// What Access made for itself: sources of forms and reports, and what was deleted.
bool isHidden(const jet::CatalogEntry& entry) { return entry.name.starts_with('~') || entry.name.starts_with("MSys"); }

std::optional<int> numberIn(const std::string& text)
{
    int number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<ObjectKind> objectKindOf(int storedType)
{
    switch (storedType) {
    case -32768: return ObjectKind::Form;
    case -32766: return ObjectKind::Macro;
    case -32764: return ObjectKind::Report;
    case -32761: return ObjectKind::Module;
    case -32756: return ObjectKind::DataAccessPage;
    default: return std::nullopt;
    }
}

// "03/15/2023 12:00:00" is "2023-03-15T12:00:00"; what is no date is "".
std::string isoDate(std::string_view text)
{
    constexpr std::string_view shape = "00/00/0000 00:00:00";
    const bool isDate = text.size() == shape.size() && std::ranges::equal(text, shape, [](char c, char expected) {
        return expected == '0' ? c >= '0' && c <= '9' : c == expected;
    });
    if (!isDate) return {};
    return std::string(text.substr(6, 4))
        .append("-")
        .append(text.substr(0, 2))
        .append("-")
        .append(text.substr(3, 2))
        .append("T")
        .append(text.substr(11));
}

LinkedTable linkOf(const jet::CatalogEntry& entry)
{
    LinkedTable made{.name = entry.name, .source = entry.foreignName, .connect = maskedConnection(entry.connect)};
    made.kind = entry.connect.substr(0, entry.connect.find(';'));
    if (entry.storedType == odbcLink) made.kind = "ODBC";
    // A connection that begins with a password, or with what is no name at all, says nothing of its kind.
    if (made.kind.empty() || made.kind.find('=') != std::string::npos) made.kind = "Access";
    if (entry.database.empty()) return made;
    if (!made.connect.empty()) made.connect += made.connect.ends_with(';') ? "DATABASE=" : ";DATABASE=";
    made.connect += entry.database;
    return made;
}

// The file keeps the definition of a table on a server, which has no rows here.
std::vector<LinkedColumn> columnsOf(jet::Database& database, const jet::CatalogEntry& entry, DamageReport& damage)
{
    if (entry.storedType != odbcLink) return {};
    jet::PageBuffer buffer;
    const auto page = database.pages().read(entry.page, buffer);
    if (page.empty() || page[0] != jet::DefinitionPageType) return {};
    const auto table = database.readTable(entry, damage);
    if (!table) return {};
    std::vector<LinkedColumn> columns;
    for (const auto& column : table->columns)
        columns.push_back({column.name, column.type});
    for (const auto& index : table->indices)
        for (const auto& key : index.keys)
            if (index.type == jet::IndexDef::primaryKeyType) columns[key.column].isPrimaryKey = true;
    return columns;
}

// The parts of all queries by the id of their query; nullopt when they cannot be read.
using PartsById = std::map<std::uint32_t, std::vector<QueryPart>>;
std::optional<PartsById> readParts(
    jet::Database& database, const std::vector<jet::CatalogEntry>& catalog, DamageReport& damage)
{
    const auto entry = std::ranges::find_if(
        catalog, [](const auto& listed) { return listed.isSystemTable() && listed.name == queriesTable; });
    if (entry == catalog.end()) return std::nullopt;
    const auto rows = database.readTexts(*entry,
        {"ObjectId", "Attribute", "Order", "Name1", "Name2", "Expression", "Flag", "LvExtra"}, 7, DamageKind::Queries,
        damage);
    if (!rows) return std::nullopt;
    PartsById parts;
    for (const auto& row : *rows) {
        const auto id = static_cast<std::uint32_t>(numberIn(row[0]).value_or(0));
        parts[id].push_back(
            {numberIn(row[1]).value_or(0), row[2], row[3], row[4], row[5], numberIn(row[6]), numberIn(row[7])});
    }
    return parts;
}

std::vector<SavedQuery> readQueries(
    jet::Database& database, const std::vector<jet::CatalogEntry>& catalog, DamageReport& damage)
{
    const auto isShown = [](const auto& entry) { return entry.storedType == query && !isHidden(entry); };
    if (std::ranges::none_of(catalog, isShown)) return {};
    DamageReport found;
    auto parts = readParts(database, catalog, found).value_or(PartsById());
    std::vector<SavedQuery> queries;
    std::uint64_t incomplete = 0;
    for (const auto& entry : catalog) {
        if (!isShown(entry)) continue;
        auto text = queryText(std::move(parts[entry.id]), entry.flags);
        if (!text.isWhole) ++incomplete;
        queries.push_back({entry.name, text.kind, std::move(text.sql)});
    }
    // Parts that are missing from the table are told by the queries that miss them, as far as these can tell.
    if (incomplete != 0)
        damage.add({.kind = DamageKind::Queries, .count = incomplete});
    else
        damage.append(found, {}, 0);
    return queries;
}

} // namespace

FileContents readContents(jet::Database& database, const std::vector<jet::CatalogEntry>& catalog, DamageReport& damage)
{
    FileContents contents{.queries = readQueries(database, catalog, damage)};
    for (const auto& entry : catalog) {
        if (isHidden(entry)) continue;
        if (entry.storedType == link || entry.storedType == odbcLink) {
            contents.links.push_back(linkOf(entry));
            contents.links.back().columns = columnsOf(database, entry, damage);
        }
        if (const auto kind = objectKindOf(entry.storedType))
            contents.objects.push_back({*kind, entry.name, isoDate(entry.created), isoDate(entry.modified)});
    }
    const auto byName = [](const auto& left, const auto& right) { return finderCompare(left.name, right.name) < 0; };
    std::ranges::stable_sort(contents.queries, byName);
    std::ranges::stable_sort(contents.links, byName);
    std::ranges::stable_sort(contents.objects, byName);
    std::ranges::stable_sort(contents.objects, {}, &ProgramObject::kind);
    return contents;
}

} // namespace vellumo
