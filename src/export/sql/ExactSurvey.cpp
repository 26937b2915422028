// SPDX-License-Identifier: MIT
#include "export/sql/ExactSurvey.h"

#include "embedded/TAdmBlobData.h"
#include "export/exact/ExactCells.h"
#include "model/TAdmMDBTable.h"
#include "text/CaseFold.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

namespace vellumo {

namespace {

constexpr std::size_t longestUsualLiteral = (std::size_t{16} << 20) - 1024;

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

// Looks at the cells of one column. What a whole group cannot have is looked for in its bytes, all at once.
class ColumnSurveyor {
public:
    explicit ColumnSurveyor(const TAdmMDBColumn& column)
        : m_column(column)
        , m_kind(exactKind(column.type()))
    {
    }

    void add(const RowGroup& group, std::size_t column)
    {
        ExactCells cells(m_column.type(), group, column);
        const auto& texts = group.texts[column];
        if (m_kind == ExactKind::Object || texts.notes() != nullptr || needsEachCell(texts.bytes()))
            return addCells(cells, group.rowCount);
        addPlain(texts);
    }
    [[nodiscard]] const ColumnSurvey& survey() const { return m_survey; }

private:
    // Whether nulls and lengths are not all that counts of a group whose texts tell its values.
    [[nodiscard]] bool needsEachCell(std::string_view bytes) const
    {
        if (m_column.isAutoNumber() && m_kind != ExactKind::Guid) return true;
        switch (m_kind) {
        case ExactKind::Text: return false;
        case ExactKind::Decimal: return true;
        case ExactKind::Single:
        case ExactKind::Double:
            return bytes.find('n') != bytes.npos || bytes.find("-0") != bytes.npos || bytes.find('\xEF') != bytes.npos;
        case ExactKind::Date: return m_column.type() != ColumnType::DateTime || bytes.find('\xEF') != bytes.npos;
        default: return bytes.find('\xEF') != bytes.npos;
        }
    }

    void addPlain(const TextChunk& texts)
    {
        std::uint32_t start = 0;
        std::uint32_t longest = 0;
        std::size_t nulls = 0;
        for (const auto end : texts.ends()) {
            nulls += end == start ? 1 : 0;
            longest = std::max(longest, end - start);
            start = end;
        }
        m_survey.nulls += nulls;
        if (m_kind == ExactKind::Binary) longest /= 2;
        m_survey.longestBytes = std::max<std::size_t>(m_survey.longestBytes, longest);
        if (m_kind != ExactKind::Text || longest <= declaredSize()) return;
        for (std::uint32_t row = 0; row < texts.rowCount(); ++row)
            addText(texts.text(row));
    }

    void addCells(ExactCells& cells, std::uint32_t count)
    {
        for (std::uint32_t row = 0; row < count; ++row) {
            const auto cell = cells.at(row);
            if (cell.hasValue())
                addValue(cell);
            else
                ++(cell.state == ExactState::Null ? m_survey.nulls : m_survey.unreadable);
        }
    }

    void addValue(const ExactCell& cell)
    {
        switch (m_kind) {
        case ExactKind::Text:
            m_survey.emptyTexts += cell.text.empty() ? 1 : 0;
            m_survey.zeroTexts += cell.text.find('\0') != cell.text.npos ? 1 : 0;
            return addText(cell.text);
        case ExactKind::Decimal: return addDigits(cell);
        case ExactKind::Single:
        case ExactKind::Double: return addReal(cell);
        case ExactKind::Integer:
        case ExactKind::BigInteger: m_survey.largest = std::max(m_survey.largest, cell.integer()); return;
        case ExactKind::Date: return addFraction(cell);
        case ExactKind::Binary: return addLength(cell.text.size() / 2);
        case ExactKind::Object: return addLength(cell.object->data().size());
        default: return;
        }
    }

    // A byte that is no letter takes two digits of a literal.
    void addLength(std::size_t bytes)
    {
        m_survey.longestBytes = std::max(m_survey.longestBytes, bytes);
        if (bytes * (m_kind == ExactKind::Text ? 1 : 2) > longestUsualLiteral) ++m_survey.hugeValues;
    }

    void addText(std::string_view text)
    {
        addLength(text.size());
        if (text.size() > m_survey.longestText)
            m_survey.longestText = std::max(m_survey.longestText, characterCount(text));
    }

    void addDigits(const ExactCell& cell)
    {
        const auto point = std::min(cell.text.find('.'), cell.text.size());
        const auto sign = cell.text.front() == '-' ? 1 : 0;
        m_survey.wholeDigits = std::max(m_survey.wholeDigits, static_cast<int>(point) - sign);
        const auto decimals = static_cast<int>(cell.text.size() - std::min(point + 1, cell.text.size()));
        m_survey.decimals = std::max(m_survey.decimals, decimals);
        // A shorter text has at most 15 digits.
        if (point > 11 || cell.text.size() > 16)
            m_survey.significantDigits = std::max(m_survey.significantDigits, cell.significantDigits());
    }

    void addReal(const ExactCell& cell)
    {
        if (cell.text == "-0") ++m_survey.minusZeros;
        if (!cell.isFinite()) ++(cell.text == "nan" ? m_survey.notANumbers : m_survey.infinities);
    }

    void addFraction(const ExactCell& cell)
    {
        if (cell.milliseconds != 0) m_survey.fractionDigits = std::max(m_survey.fractionDigits, 3);
        const auto point = cell.text.find('.');
        if (point != cell.text.npos && cell.text.find_first_not_of('0', point + 1) != cell.text.npos)
            m_survey.fractionDigits = 7;
        if (point != cell.text.npos && cell.text.size() == point + 8 && cell.text.back() != '0')
            ++m_survey.seventhDigits;
    }

    [[nodiscard]] std::size_t declaredSize() const
    {
        return m_column.fieldSize() < 0 ? 0 : static_cast<std::size_t>(m_column.fieldSize());
    }

    const TAdmMDBColumn& m_column;
    ExactKind m_kind;
    ColumnSurvey m_survey;
};

// The keys of a table's rows, one after the other.
class KeyReader {
public:
    KeyReader(const TAdmMDBTable& table, std::span<const std::size_t> columns, KeyComparison comparison,
        const std::atomic<bool>* stop)
        : m_table(table)
        , m_columns(columns)
        , m_comparison(comparison)
        , m_stop(stop)
    {
    }

    // Calls `take` with each key that has no null in it.
    template <typename Take> void forEach(Take take)
    {
        for (const auto& group : m_table.rows().groups()) {
            if (m_stop != nullptr && *m_stop) return;
            std::vector<ExactCells> cells;
            for (const auto column : m_columns)
                cells.emplace_back(m_table.columns()[column]->type(), group, column);
            for (std::uint32_t row = 0; row < group.rowCount; ++row)
                if (readKey(cells, row)) take(std::string_view(m_key));
        }
    }

private:
    bool readKey(std::vector<ExactCells>& cells, std::uint32_t row)
    {
        m_key.clear();
        for (auto& column : cells) {
            const auto cell = column.at(row);
            if (!cell.hasValue()) return false;
            addPart(cell);
        }
        return true;
    }

    // What tells one value of a column from another, and where it ends.
    void addPart(const ExactCell& cell)
    {
        auto text = cell.text;
        if (cell.kind == ExactKind::Object)
            text = {reinterpret_cast<const char*>(cell.object->data().data()), cell.object->data().size()};
        if (cell.kind == ExactKind::Text && m_comparison == KeyComparison::PaddedBlanks)
            text = text.substr(0, text.find_last_not_of(' ') + 1);
        if (cell.kind == ExactKind::Text && m_comparison == KeyComparison::IgnoringCase)
            m_key += lowerCase(text);
        else
            m_key += text;
        if (cell.milliseconds != 0) m_key += std::to_string(cell.milliseconds);
        m_key += '\0';
    }

    const TAdmMDBTable& m_table;
    std::span<const std::size_t> m_columns;
    KeyComparison m_comparison;
    const std::atomic<bool>* m_stop; // null: there is none
    std::string m_key;
};

// Hashes of 64 bits in place of the keys: two of a million are the same by chance once in thirty million tables.
std::vector<std::size_t> sortedKeys(const TAdmMDBTable& table, std::span<const std::size_t> columns,
    KeyComparison comparison, const std::atomic<bool>* stop = nullptr)
{
    std::vector<std::size_t> keys;
    keys.reserve(table.rows().rowCount());
    KeyReader(table, columns, comparison, stop).forEach([&](std::string_view key) {
        keys.push_back(std::hash<std::string_view>()(key));
    });
    std::ranges::sort(keys);
    return keys;
}

// Most primary keys: whole numbers that rise from row to row.
bool areRisingNumbers(const TAdmMDBTable& table, std::span<const std::size_t> columns)
{
    if (columns.size() != 1 || exactKind(table.columns()[columns[0]]->type()) != ExactKind::Integer) return false;
    std::optional<std::int64_t> last;
    for (const auto& group : table.rows().groups()) {
        ExactCells cells(table.columns()[columns[0]]->type(), group, columns[0]);
        for (std::uint32_t row = 0; row < group.rowCount; ++row) {
            const auto cell = cells.at(row);
            if (!cell.hasValue() || (last && cell.integer() <= *last)) return false;
            last = cell.integer();
        }
    }
    return true;
}

} // namespace

std::vector<ColumnSurvey> surveyRows(const TAdmMDBTable& table)
{
    std::vector<ColumnSurvey> surveys;
    for (std::size_t c = 0; c < table.columns().size(); ++c) {
        ColumnSurveyor surveyor(*table.columns()[c]);
        for (const auto& group : table.rows().groups())
            surveyor.add(group, c);
        surveys.push_back(surveyor.survey());
    }
    return surveys;
}

std::optional<std::size_t> columnIndex(const TAdmMDBTable& table, std::string_view name)
{
    for (std::size_t c = 0; c < table.columns().size(); ++c)
        if (table.columns()[c]->name() == name) return c;
    return std::nullopt;
}

std::optional<std::vector<std::size_t>> columnIndexes(const TAdmMDBTable& table, const std::vector<std::string>& names)
{
    std::vector<std::size_t> columns;
    for (const auto& name : names) {
        const auto column = columnIndex(table, name);
        if (!column) return std::nullopt;
        columns.push_back(*column);
    }
    return columns;
}

std::size_t countRepeats(const TAdmMDBTable& table, std::span<const std::size_t> columns, KeyComparison comparison)
{
    if (areRisingNumbers(table, columns)) return 0;
    const auto keys = sortedKeys(table, columns, comparison);
    std::size_t count = 0;
    for (std::size_t i = 1; i < keys.size(); ++i)
        count += keys[i] == keys[i - 1] ? 1 : 0;
    return count;
}

std::size_t countOrphans(const TAdmMDBTable& table, std::span<const std::size_t> columns,
    const TAdmMDBTable& referenced, std::span<const std::size_t> referencedColumns, KeyComparison comparison,
    const std::atomic<bool>* stop)
{
    const auto keys = sortedKeys(referenced, referencedColumns, comparison, stop);
    std::size_t count = 0;
    KeyReader(table, columns, comparison, stop).forEach([&](std::string_view key) {
        count += std::ranges::binary_search(keys, std::hash<std::string_view>()(key)) ? 0 : 1;
    });
    return count;
}

} // namespace vellumo
