// SPDX-License-Identifier: MIT
#include "export/sql/ExactSchema.h"

#include "export/exact/ExactCells.h"
#include "model/TAdmMDBFile.h"
#include "text/CaseFold.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::size_t longestDeclaredText = 4000;
constexpr std::size_t longestDeclaredBytes = 2000;
constexpr std::size_t usualBytes = 510; // the most that Access gives a binary column
constexpr int usualPrecision = 28;

int scaleOf(const TAdmMDBColumn& column, const ColumnSurvey& survey)
{
    return std::max(column.scale(), survey.decimals);
}

// No number has too many digits, but those of a calculation begin and end at different places.
bool exceedsDeclaration(const TAdmMDBColumn& column, const ColumnSurvey& survey, const ExactDialectFacts& facts)
{
    const auto scale = scaleOf(column, survey);
    return facts.declaredDigits != 0 && exactKind(column.type()) == ExactKind::Decimal
        && (survey.wholeDigits + scale > facts.declaredDigits || scale > facts.declaredDecimals);
}

bool becomesDigits(const TAdmMDBColumn& column, const ColumnSurvey& survey, const ExactDialectFacts& facts)
{
    return (facts.keptDigits != 0 && survey.significantDigits > facts.keptDigits)
        || (facts.floatingType.empty() && exceedsDeclaration(column, survey, facts));
}

// An expression without "=" in front and blanks around.
std::string_view bareExpression(std::string_view text)
{
    const auto trim = [&] {
        const auto start = std::min(text.find_first_not_of(" \t\r\n"), text.size());
        text = text.substr(start, text.find_last_not_of(" \t\r\n") + 1 - start);
    };
    trim();
    if (text.starts_with('=')) text.remove_prefix(1);
    trim();
    return text;
}

bool isPlainNumber(std::string_view text)
{
    if (text.starts_with('-')) text.remove_prefix(1);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return !text.empty() && isDigit(text.front()) && isDigit(text.back()) && std::ranges::count(text, '.') <= 1
        && std::ranges::all_of(text, [&](char c) { return isDigit(c) || c == '.'; });
}

std::optional<bool> truthOf(std::string_view expression)
{
    const auto word = lowerCase(expression);
    if (word == "yes" || word == "true" || word == "on") return true;
    if (word == "no" || word == "false" || word == "off") return false;
    if (isPlainNumber(expression)) return expression.find_first_of("123456789") != expression.npos;
    return std::nullopt;
}

std::optional<std::string> quotedText(std::string_view expression)
{
    if (expression.size() < 2 || expression.front() != '"' || expression.back() != '"') return std::nullopt;
    expression = expression.substr(1, expression.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < expression.size(); ++i) {
        if (expression[i] == '"' && (++i == expression.size() || expression[i] != '"')) return std::nullopt;
        text += expression[i];
    }
    return text;
}

std::string textLiteral(std::string_view text, const ExactDialectFacts& facts)
{
    TextBuffer literal;
    facts.literals.text(literal, text);
    return std::string(literal.view());
}

// nullopt for an expression that says the same nowhere else, or that no server knows.
std::optional<std::string> defaultExpression(
    ExactKind kind, std::string_view expression, const ExactDialectFacts& facts)
{
    const auto call = lowerCase(expression);
    const auto known = [](std::string_view text) {
        return text.empty() ? std::nullopt : std::optional(std::string(text));
    };
    switch (kind) {
    case ExactKind::Boolean:
        if (const auto truth = truthOf(expression)) return std::string(*truth ? facts.literals.yes : facts.literals.no);
        return std::nullopt;
    case ExactKind::Date:
        if (call == "now()") return known(facts.now);
        return call == "date()" ? known(facts.today) : std::nullopt;
    case ExactKind::Guid: return call == "genguid()" ? known(facts.guid) : std::nullopt;
    case ExactKind::Text:
        if (const auto text = quotedText(expression)) return textLiteral(*text, facts);
        return isPlainNumber(expression) ? std::optional(textLiteral(expression, facts)) : std::nullopt;
    case ExactKind::Binary:
    case ExactKind::Object: return std::nullopt;
    default: return isPlainNumber(expression) ? std::optional(std::string(expression)) : std::nullopt;
    }
}

std::string numberText(std::size_t number) { return std::to_string(number); }

} // namespace

ExactSchema::ExactSchema(const ExactDialectFacts& facts, const TAdmMDBFile& file,
    std::vector<const TAdmMDBTable*> tables, ExactSchemaOptions options)
    : m_facts(facts)
    , m_file(file)
    , m_options(options)
{
    // Names of tables are given before those of indexes.
    for (const auto* table : tables)
        addTable(*table);
    for (auto& table : m_tables)
        addKeys(table);
    if (m_options.includeForeignKeys) addRelations();
    for (auto& table : m_tables)
        widenRows(table);
}

const ExactTable* ExactSchema::find(const TAdmMDBTable& table) const
{
    const auto found = std::ranges::find(m_tables, &table, &ExactTable::table);
    return found == m_tables.end() ? nullptr : &*found;
}

void ExactSchema::note(
    ExactLoss loss, std::string_view table, std::string_view column, std::size_t count, std::string_view detail)
{
    if (count > 0) m_notes.push_back({loss, std::string(table), std::string(column), count, std::string(detail)});
}

void ExactSchema::addTable(const TAdmMDBTable& table)
{
    ExactTable made{&table, exactName(table.name(), NameUse::Table, m_facts, m_tableNames), {}, surveyRows(table)};
    if (made.name != table.name()) note(ExactLoss::NameChanged, table.name(), "", 1, made.name);
    made.comment = commentOf(table.description().value_or(""), table.name(), "");
    TakenNames taken;
    for (const auto& column : table.columns())
        addColumn(*column, taken, made);
    m_tables.push_back(std::move(made));
}

void ExactSchema::addColumn(const TAdmMDBColumn& column, TakenNames& taken, ExactTable& made)
{
    const auto& survey = made.surveys[made.columns.size()];
    ExactColumn added{&column, exactName(column.name(), NameUse::Column, m_facts, taken), declaredType(column, survey)};
    const auto& table = made.table->name();
    if (added.name != column.name()) note(ExactLoss::NameChanged, table, column.name(), 1, added.name);
    added.fractionDigits = survey.fractionDigits;
    added.comment = commentOf(column.description().value_or(""), table, column.name());
    setRules(column, survey, added);
    setDefault(column, added);
    noteValues(column, survey);
    made.columns.push_back(std::move(added));
}

std::string ExactSchema::declaredType(const TAdmMDBColumn& column, const ColumnSurvey& survey)
{
    auto type = column.type();
    const auto kind = exactKind(type);
    if (kind == ExactKind::Object && m_options.hasObjectPaths) type = ColumnType::Memo;
    const auto stated = column.fieldSize() > 0 ? static_cast<std::size_t>(column.fieldSize()) : 0;
    auto size = std::max({stated, survey.longestText, std::size_t{1}});
    if (type == ColumnType::Text && size > longestDeclaredText) type = ColumnType::Memo;
    if (kind == ExactKind::Binary) {
        size = std::max(usualBytes, survey.longestBytes);
        if (size > longestDeclaredBytes) type = ColumnType::Ole;
    }
    if (becomesDigits(column, survey, m_facts)) return std::string(m_facts.digitsType);
    if (exceedsDeclaration(column, survey, m_facts)) return std::string(m_facts.floatingType);
    // A calculated column states none, and each of its values has one of its own.
    const auto scale = scaleOf(column, survey);
    const auto precision =
        std::max(column.precision() > 0 ? column.precision() : usualPrecision, survey.wholeDigits + scale);
    return fillTemplate(exactType(type, m_facts.dialect),
        {{"{n}", numberText(size)}, {"{p}", std::to_string(precision)}, {"{s}", std::to_string(scale)},
            {"{f}", std::to_string(std::min(survey.fractionDigits, 3))}});
}

void ExactSchema::setRules(const TAdmMDBColumn& column, const ColumnSurvey& survey, ExactColumn& made)
{
    const auto& table = column.table()->name();
    const auto& literals = m_facts.literals;
    auto nulls = survey.nulls + survey.unreadable;
    if (!literals.hasEmptyText) nulls += survey.emptyTexts;
    if (literals.notANumber.empty()) nulls += survey.notANumbers;
    if (literals.infinity.empty()) nulls += survey.infinities;
    if (column.required() == true) {
        made.isNotNull = nulls == 0;
        note(ExactLoss::NullsAgainstRule, table, column.name(), nulls);
    }
    if (exactKind(column.type()) != ExactKind::Text || column.allowZeroLength() != false || m_facts.check.empty())
        return;
    made.isNotEmpty = survey.emptyTexts == 0;
    note(ExactLoss::EmptyAgainstRule, table, column.name(), survey.emptyTexts);
}

void ExactSchema::setDefault(const TAdmMDBColumn& column, ExactColumn& made)
{
    const auto stored = column.defaultValue().value_or("");
    const auto expression = bareExpression(stored);
    if (expression.empty() || lowerCase(expression) == "null" || column.isCalculatedType()) return;
    if (auto value = defaultExpression(exactKind(column.type()), expression, m_facts))
        made.defaultValue = std::move(*value);
    else
        note(ExactLoss::DefaultLeftOut, column.table()->name(), column.name(), 1, expression);
}

std::string ExactSchema::commentOf(std::string_view text, std::string_view table, std::string_view column)
{
    if (m_facts.longestComment == 0) return std::string(text);
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80 || characters++ < m_facts.longestComment) continue;
        note(ExactLoss::CommentCut, table, column);
        return std::string(text.substr(0, i));
    }
    return std::string(text);
}

void ExactSchema::noteValues(const TAdmMDBColumn& column, const ColumnSurvey& survey)
{
    const auto& literals = m_facts.literals;
    const auto& table = column.table()->name();
    const auto isSpecial = [&](std::string_view word) { return word.empty(); };
    note(ExactLoss::Unreadable, table, column.name(), survey.unreadable);
    note(ExactLoss::NotANumber, table, column.name(),
        (isSpecial(literals.notANumber) ? survey.notANumbers : 0)
            + (isSpecial(literals.infinity) ? survey.infinities : 0));
    if (isSpecial(literals.minusZero)) note(ExactLoss::MinusZero, table, column.name(), survey.minusZeros);
    if (!literals.takesZero) note(ExactLoss::CharactersReplaced, table, column.name(), survey.zeroTexts);
    if (!literals.hasEmptyText) note(ExactLoss::EmptyTextAsNull, table, column.name(), survey.emptyTexts);
    if (!m_facts.takesHugeValues) note(ExactLoss::TooLong, table, column.name(), survey.hugeValues);
    if (m_facts.fractionDigits < 7) note(ExactLoss::FractionRounded, table, column.name(), survey.seventhDigits);
    if (becomesDigits(column, survey, m_facts))
        note(ExactLoss::DigitsAsText, table, column.name(), column.table()->rows().rowCount() - survey.nulls);
}

// Bytes that a column takes up in a row itself: long texts and bytes lie elsewhere.
void ExactSchema::widenRows(ExactTable& made)
{
    if (m_facts.longestRow == 0) return;
    constexpr std::size_t longestInside = 63; // characters of texts that always lie in the row
    constexpr std::size_t outside = 41;       // bytes of those that need not
    constexpr std::size_t mostDeclared = 65535;
    const auto sizeOf = [](const ExactColumn& column) {
        return static_cast<std::size_t>(std::max(column.column->fieldSize(), 1));
    };
    std::size_t inside = 0;
    std::size_t declared = 0;
    for (const auto& column : made.columns) {
        const bool isText = column.column->type() == ColumnType::Text;
        inside += isText && sizeOf(column) <= longestInside ? 4 * sizeOf(column) + 1 : isText ? outside : 20;
        declared += isText ? 4 * sizeOf(column) + 2 : 20;
    }
    if (inside <= m_facts.longestRow && declared <= mostDeclared) return;
    for (auto& column : made.columns)
        if (column.column->type() == ColumnType::Text && !isInKey(*column.column)) column.type = m_facts.wideTextType;
}

} // namespace vellumo
