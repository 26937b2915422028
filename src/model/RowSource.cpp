// SPDX-License-Identifier: MIT
#include "model/RowSource.h"

#include "model/SelectStatement.h"
#include "text/CaseFold.h"

#include <algorithm>

namespace vellumo {

namespace {

std::string_view withoutBlanks(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// Far beyond what anybody chooses from; queries over queries would multiply.
constexpr int mostLevels = 16;
constexpr std::size_t mostTables = 64;
constexpr std::size_t mostColumns = 255;
constexpr std::size_t mostTerms = 64;

struct NamedColumn {
    std::string name;
    SourceColumn column;
};

// What a name stands for: the columns of a table, or of a query.
struct Rows {
    std::string alias{};
    std::vector<NamedColumn> columns{};
    bool isLimited = false;
};

class Resolver {
public:
    explicit Resolver(const TAdmMDBFile& file)
        : m_file(file)
    {
    }
    [[nodiscard]] std::optional<Rows> rowsOf(std::string_view name, int level = 0);
    [[nodiscard]] std::optional<Rows> select(std::string_view sql, int level = 0);

private:
    [[nodiscard]] std::optional<Rows> rowsOf(const TAdmMDBTable& table);

    const TAdmMDBFile& m_file;
    std::size_t m_tableCount = 0; // as often as they are named
};

const TAdmMDBTable* tableNamed(const TAdmMDBFile& file, std::string_view name)
{
    const auto isNamed = [&](const auto& table) { return isSameName(table->name(), name); };
    const auto found = std::ranges::find_if(file.tables(), isNamed);
    return found == file.tables().end() ? nullptr : found->get();
}

std::optional<Rows> Resolver::rowsOf(const TAdmMDBTable& table)
{
    if (++m_tableCount > mostTables) return std::nullopt;
    Rows rows;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        const auto& column = *table.columns()[i];
        // An object has no text.
        const auto* known = column.isOLE() ? nullptr : &table;
        rows.columns.push_back({column.name(), {known, m_tableCount, {i}}});
    }
    return rows;
}

std::optional<Rows> Resolver::rowsOf(std::string_view name, int level)
{
    if (const auto* table = tableNamed(m_file, name)) return rowsOf(*table);
    for (const auto& query : m_file.contents().queries)
        if (level < mostLevels && isSameName(query.name, name)) return select(query.sql, level + 1);
    return std::nullopt;
}

// The column of the name; null when it is in none of them or, for want of a qualifier, in several.
const SourceColumn* columnNamed(const WrittenTerm& term, const std::vector<Rows>& sources)
{
    const SourceColumn* found = nullptr;
    for (const auto& source : sources) {
        if (!term.qualifier.empty() && !isSameName(term.qualifier, source.alias)) continue;
        for (const auto& [name, column] : source.columns) {
            if (!isSameName(name, term.text)) continue;
            if (found != nullptr) return nullptr;
            found = &column;
        }
    }
    return found;
}

// Terms of one place only; else the column is not known.
SourceColumn columnOf(const WrittenColumn& written, const std::vector<Rows>& sources)
{
    SourceColumn made;
    for (const auto& term : written.terms) {
        if (term.kind == WrittenTerm::Kind::Text) {
            made.terms.emplace_back(term.text);
            continue;
        }
        const auto* column = term.kind == WrittenTerm::Kind::Name ? columnNamed(term, sources) : nullptr;
        if (column == nullptr || column->table == nullptr) return {};
        if (made.table != nullptr && made.place != column->place) return {};
        made.table = column->table;
        made.place = column->place;
        made.terms.insert(made.terms.end(), column->terms.begin(), column->terms.end());
    }
    return made.terms.size() <= mostTerms ? made : SourceColumn();
}

bool isAll(const WrittenColumn& column)
{
    return column.terms.size() == 1 && column.terms[0].kind == WrittenTerm::Kind::All;
}

std::optional<Rows> Resolver::select(std::string_view sql, int level)
{
    const auto statement = parseSelect(sql);
    if (!statement) return std::nullopt;
    Rows made{.isLimited = statement->isLimited};
    std::vector<Rows> sources;
    for (const auto& source : statement->sources) {
        auto rows = rowsOf(source.name, level);
        if (!rows) return std::nullopt;
        rows->alias = source.alias;
        made.isLimited = made.isLimited || rows->isLimited;
        sources.push_back(std::move(*rows));
    }
    for (const auto& written : statement->columns) {
        if (!isAll(written)) {
            made.columns.push_back({written.name, columnOf(written, sources)});
            continue;
        }
        const auto& qualifier = written.terms[0].qualifier;
        for (const auto& source : sources)
            if (qualifier.empty() || isSameName(qualifier, source.alias))
                made.columns.insert(made.columns.end(), source.columns.begin(), source.columns.end());
        if (made.columns.size() > mostColumns) return std::nullopt;
    }
    return made;
}

} // namespace

std::optional<RowSource> rowSource(const TAdmMDBFile& file, std::string_view source)
{
    auto name = withoutBlanks(source);
    Resolver resolver(file);
    const bool isStatement = isSelect(name);
    if (!isStatement && name.starts_with('[') && name.ends_with(']')) name = name.substr(1, name.size() - 2);
    auto rows = isStatement ? resolver.select(name) : resolver.rowsOf(name);
    if (!rows) return std::nullopt;
    RowSource found{.isLimited = rows->isLimited};
    for (auto& column : rows->columns)
        found.columns.push_back(std::move(column.column));
    return found;
}

} // namespace vellumo
