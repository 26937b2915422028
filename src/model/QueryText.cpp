// SPDX-License-Identifier: MIT
#include "model/QueryText.h"

#include "model/ConnectionText.h"
#include "model/JoinTree.h"
#include "text/Format.h"

#include <algorithm>
#include <map>

// What the parts mean, by their attribute:
//    1 the kind (flag); target table (name1); the text itself of kinds that are kept so (expression)
//    2 a parameter (name1), its type (flag) and length (extra)
//    3 options, as bits of the flag
//    4 another database (name1) and its type (expression)
//    5 a table (name1) or a query in its place (expression), called name2; the halves of a union (expression)
//    6 a column (expression), called name1 or set to name2
//    7 a join of name1 and name2 on the expression, its direction (flag)
//    8 WHERE, 9 GROUP BY, 10 HAVING, 11 ORDER BY: the expression; 11 is descending with a name1 of "D"
//    0 and 255 say nothing
namespace vellumo {

namespace {

enum Attribute { Kind = 1, Parameter, Options, Database, Table, Column, Join, Where, GroupBy, Having, OrderBy };

// Bits of the flag of options.
constexpr int allColumns = 1;
constexpr int distinct = 2; // of a union: rows that are alike come once
constexpr int ownerAccess = 4;
constexpr int distinctRow = 8;
constexpr int top = 0x10;
constexpr int percent = 0x20;
// Of the flag of columns.
constexpr int appendedValues = 0x8000;
// In a crosstab query the flag of a column tells what it is for.
enum CrosstabUse { Transformed, Pivoted, Listed };

// One part of a name; one that has brackets keeps them.
std::string bracketedPart(std::string_view part)
{
    const bool isPlain = std::ranges::all_of(part, isNameByte);
    return isPlain || part == "*" || part.starts_with('[') ? std::string(part) : '[' + std::string(part) + ']';
}

std::string bracketedParts(std::string_view name, char separator)
{
    if (name.find('[') != std::string_view::npos) return std::string(name);
    std::string text;
    for (;;) {
        const auto end = name.find(separator);
        text += bracketedPart(name.substr(0, end));
        if (end == std::string_view::npos) return text;
        text += separator;
        name.remove_prefix(end + 1);
    }
}

std::string trimmed(std::string_view text)
{
    constexpr std::string_view unwanted(" \t\r\n\0", 5);
    const auto first = std::min(text.find_first_not_of(unwanted), text.size());
    const auto end = text.find_last_not_of(unwanted) + 1;
    return std::string(text.substr(first, std::max(first, end) - first));
}

std::string_view parameterType(int type)
{
    switch (type) {
    case 0: return "Value";
    case 1: return "Bit";
    case 2: return "Byte";
    case 3: return "Short";
    case 4: return "Long";
    case 5: return "Currency";
    case 6: return "IEEESingle";
    case 7: return "IEEEDouble";
    case 8: return "DateTime";
    case 9: return "Binary";
    case 10: return "Text";
    case 11: return "LongBinary";
    case 15: return "Guid";
    default: return "";
    }
}

std::string_view joinWord(int direction)
{
    switch (direction) {
    case 1: return "INNER JOIN";
    case 2: return "LEFT JOIN";
    case 3: return "RIGHT JOIN";
    default: return "";
    }
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator)
{
    std::string text;
    for (const auto& piece : pieces)
        text.append(text.empty() ? "" : separator).append(piece);
    return text;
}

QueryKind kindOfCatalogFlags(std::uint32_t flags)
{
    switch (flags & 0xF0) {
    case 0x10: return QueryKind::Crosstab;
    case 0x20: return QueryKind::Delete;
    case 0x30: return QueryKind::Update;
    case 0x40: return QueryKind::Append;
    case 0x50: return QueryKind::MakeTable;
    case 0x60: return QueryKind::DataDefinition;
    case 0x70: return QueryKind::PassThrough;
    case 0x80: return QueryKind::Union;
    default: return QueryKind::Select;
    }
}

// Puts the text together, clause by clause.
class Assembly {
public:
    Assembly(std::vector<QueryPart> parts, std::uint32_t catalogFlags);
    [[nodiscard]] QueryText text();

private:
    using Parts = std::span<const QueryPart>;
    [[nodiscard]] Parts of(Attribute attribute) const;
    [[nodiscard]] const QueryPart* first(Attribute attribute) const;
    [[nodiscard]] bool has(int option) const { return (m_options & option) != 0; }
    void takeKind(std::uint32_t catalogFlags);

    void addClause(std::string_view word, const std::string& text);
    void addParameters();
    void addStatement();
    void addSelection(std::string_view verb);
    void addCrosstab();
    void addAppend();
    void addUpdate();
    void addUnion();
    void addFrom();
    void addFilters();
    void addOrder();
    [[nodiscard]] std::string predicate() const;
    [[nodiscard]] std::string columnList() const;
    [[nodiscard]] std::string column(const QueryPart& part) const;
    [[nodiscard]] std::string tables();
    [[nodiscard]] std::string target();
    [[nodiscard]] std::vector<std::string> expressions(Attribute attribute) const;

    std::vector<QueryPart> m_parts;
    int m_options = 0;
    QueryText m_result;
};

Assembly::Assembly(std::vector<QueryPart> parts, std::uint32_t catalogFlags)
    : m_parts(std::move(parts))
{
    std::ranges::stable_sort(m_parts, [](const QueryPart& left, const QueryPart& right) {
        return std::tie(left.attribute, left.order) < std::tie(right.attribute, right.order);
    });
    for (auto& part : m_parts)
        part.expression = trimmed(part.expression);
    takeKind(catalogFlags);
    if (const auto* options = first(Options)) m_options = options->flag.value_or(0);
}

// A select query may do without the part that tells the kind.
void Assembly::takeKind(std::uint32_t catalogFlags)
{
    const auto inCatalog = kindOfCatalogFlags(catalogFlags);
    const auto* part = first(Kind);
    const auto stored = part == nullptr ? std::nullopt : part->flag;
    const bool isKnown = stored && *stored >= 1 && *stored <= static_cast<int>(QueryKind::Union);
    m_result.kind = isKnown ? static_cast<QueryKind>(*stored) : inCatalog;
    if (!isKnown && (stored || inCatalog != QueryKind::Select)) m_result.isWhole = false;
    if (m_parts.empty()) m_result.isWhole = false;
}

Assembly::Parts Assembly::of(Attribute attribute) const
{
    const auto range = std::ranges::equal_range(m_parts, static_cast<int>(attribute), {}, &QueryPart::attribute);
    return {range.begin(), range.end()};
}

const QueryPart* Assembly::first(Attribute attribute) const
{
    const auto parts = of(attribute);
    return parts.empty() ? nullptr : &parts.front();
}

QueryText Assembly::text()
{
    if (m_result.kind == QueryKind::DataDefinition || m_result.kind == QueryKind::PassThrough) {
        const auto* stored = first(Kind);
        if (stored != nullptr) m_result.sql = stored->expression;
        if (m_result.sql.empty()) m_result.isWhole = false;
    } else if (!m_parts.empty()) {
        addParameters();
        addStatement();
        if (has(ownerAccess)) addClause("WITH OWNERACCESS OPTION", "");
        m_result.sql += ';';
    }
    m_result.sql = withoutPasswords(m_result.sql);
    return std::move(m_result);
}

// A line of its own for each clause, as people write them.
void Assembly::addClause(std::string_view word, const std::string& text)
{
    auto& sql = m_result.sql;
    if (!sql.empty()) sql += '\n';
    sql += word;
    if (!text.empty()) sql += ' ' + text;
}

void Assembly::addParameters()
{
    std::vector<std::string> list;
    for (const auto& part : of(Parameter)) {
        const auto type = parameterType(part.flag.value_or(-1));
        // A reference to a control of a form is made of several names; any other is one, whatever stands in it.
        auto text = bracketedParts(part.name1, '!') + ' ' + std::string(type);
        if (type == "Text" && part.extra.value_or(0) > 0) text += format(" ( %ld )", {*part.extra});
        if (type.empty() || part.name1.empty()) m_result.isWhole = false;
        list.push_back(std::move(text));
    }
    if (!list.empty()) addClause("PARAMETERS", joined(list, ", ") + ';');
}

void Assembly::addStatement()
{
    switch (m_result.kind) {
    case QueryKind::Update: return addUpdate();
    case QueryKind::Union: return addUnion();
    case QueryKind::Append: return addAppend();
    case QueryKind::Crosstab: return addCrosstab();
    case QueryKind::Delete: return addSelection("DELETE");
    default: return addSelection("SELECT");
    }
}

void Assembly::addSelection(std::string_view verb)
{
    const auto list = columnList();
    addClause(verb, predicate() + list);
    // Deleting names no columns where the table says it all.
    if (list.empty() && m_result.kind != QueryKind::Delete) m_result.isWhole = false;
    if (m_result.kind == QueryKind::MakeTable) addClause("INTO", target());
    addFrom();
    addFilters();
    addOrder();
}

void Assembly::addCrosstab()
{
    std::vector<std::string> transformed;
    std::vector<std::string> pivoted;
    for (const auto& part : of(Column)) {
        if (part.flag.value_or(Listed) == Transformed) transformed.push_back(column(part));
        if (part.flag.value_or(Listed) == Pivoted) pivoted.push_back(part.expression);
    }
    if (transformed.empty() || pivoted.empty()) m_result.isWhole = false;
    addClause("TRANSFORM", joined(transformed, ", "));
    addSelection("SELECT");
    addClause("PIVOT", joined(pivoted, ", "));
}

void Assembly::addAppend()
{
    std::vector<std::string> names;
    std::vector<std::string> values;
    bool areValues = false;
    for (const auto& part : of(Column)) {
        if (!part.name2.empty()) names.push_back(bracketed(part.name2));
        values.push_back(part.expression);
        areValues = areValues || (part.flag.value_or(0) & appendedValues) != 0;
    }
    const auto list = names.empty() ? std::string() : " ( " + joined(names, ", ") + " )";
    addClause("INSERT INTO", target() + list);
    if (areValues)
        addClause("VALUES", '(' + joined(values, ", ") + ')');
    else
        addSelection("SELECT");
}

void Assembly::addUpdate()
{
    addClause("UPDATE", predicate() + tables());
    std::vector<std::string> changes;
    for (const auto& part : of(Column)) {
        changes.push_back(bracketed(part.name2) + " = " + part.expression);
        if (part.name2.empty() || part.expression.empty()) m_result.isWhole = false;
    }
    if (changes.empty()) m_result.isWhole = false;
    addClause("SET", joined(changes, ", "));
    addFilters();
}

void Assembly::addUnion()
{
    for (const auto& part : of(Table)) {
        auto half = std::string_view(part.expression);
        while (half.ends_with(';'))
            half.remove_suffix(1);
        if (&part != &of(Table).front()) addClause(has(distinct) ? "UNION" : "UNION ALL", "");
        addClause(trimmed(half), "");
        if (half.empty()) m_result.isWhole = false;
    }
    if (of(Table).size() < 2) m_result.isWhole = false;
    addOrder();
}

void Assembly::addFrom()
{
    const auto from = tables();
    if (!from.empty()) addClause("FROM", from);
    if (const auto* other = first(Database)) {
        const auto type = other->expression.empty() ? std::string() : " [" + other->expression + ']';
        addClause("IN", '\'' + other->name1 + '\'' + type);
    }
}

void Assembly::addFilters()
{
    const struct {
        Attribute attribute;
        std::string_view word;
        std::string_view separator;
    } clauses[] = {{Where, "WHERE", " AND "}, {GroupBy, "GROUP BY", ", "}, {Having, "HAVING", " AND "}};
    for (const auto& [attribute, word, separator] : clauses)
        if (const auto list = expressions(attribute); !list.empty()) addClause(word, joined(list, separator));
}

void Assembly::addOrder()
{
    std::vector<std::string> list;
    for (const auto& part : of(OrderBy))
        list.push_back(part.expression + (part.name1 == "D" ? " DESC" : ""));
    if (!list.empty()) addClause("ORDER BY", joined(list, ", "));
}

std::string Assembly::predicate() const
{
    std::string text;
    if (has(distinct)) text += "DISTINCT ";
    if (has(distinctRow)) text += "DISTINCTROW ";
    if (has(top)) text += "TOP " + first(Options)->name1 + (has(percent) ? " PERCENT " : " ");
    return text;
}

std::string Assembly::columnList() const
{
    std::vector<std::string> list;
    for (const auto& part : of(Column)) {
        const bool isListed = m_result.kind != QueryKind::Crosstab || part.flag.value_or(Listed) == Listed;
        if (isListed) list.push_back(column(part));
    }
    if (has(allColumns)) list.emplace_back("*");
    return joined(list, ", ");
}

std::string Assembly::column(const QueryPart& part) const
{
    return part.name1.empty() ? part.expression : part.expression + " AS " + bracketedPart(part.name1);
}

std::vector<std::string> Assembly::expressions(Attribute attribute) const
{
    std::vector<std::string> list;
    for (const auto& part : of(attribute)) {
        // What a crosstab query groups by stands beside what it only shows.
        const bool isUsed =
            attribute != GroupBy || m_result.kind != QueryKind::Crosstab || part.flag.value_or(Listed) == Listed;
        if (isUsed) list.push_back(part.expression);
    }
    return list;
}

// With the joins; not every table that they name stands in a part of its own.
std::string Assembly::tables()
{
    JoinTree tree;
    for (const auto& part : of(Table)) {
        const auto text = part.expression.empty() ? bracketed(part.name1) : '(' + part.expression + ')';
        const auto alias = part.name2.empty() ? std::string() : " AS " + bracketedPart(part.name2);
        tree.addTable(part.name2.empty() ? part.name1 : part.name2, text + alias);
        if (part.name1.empty() && part.expression.empty()) m_result.isWhole = false;
    }
    for (const auto& part : of(Join)) {
        const auto word = joinWord(part.flag.value_or(0));
        const bool isSensible = !word.empty() && !part.name1.empty() && !part.name2.empty();
        if (!isSensible || !tree.join(part.name1, part.name2, word, part.expression)) m_result.isWhole = false;
    }
    return tree.text();
}

// The table that rows are put into, and its database where that is another one.
std::string Assembly::target()
{
    const auto* part = first(Kind);
    if (part == nullptr || part->name1.empty()) m_result.isWhole = false;
    if (part == nullptr) return {};
    auto text = bracketed(part->name1);
    if (!part->name2.empty()) text += " IN '" + part->name2 + '\'';
    if (!part->expression.empty()) text += (part->name2.empty() ? " IN '' [" : " [") + part->expression + ']';
    return text;
}

} // namespace

QueryText queryText(std::vector<QueryPart> parts, std::uint32_t catalogFlags)
{
    return Assembly(std::move(parts), catalogFlags).text();
}

std::string bracketed(std::string_view name) { return bracketedParts(name, '.'); }

} // namespace vellumo
