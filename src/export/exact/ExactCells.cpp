// SPDX-License-Identifier: MIT
#include "export/exact/ExactCells.h"

#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectCells.h"
#include "model/TAdmMDBTable.h"

#include <algorithm>
#include <charconv>

namespace vellumo {

namespace {

struct TypeKind {
    ColumnType type;
    ExactKind kind;
};

constexpr TypeKind typeKinds[] = {
    {ColumnType::Boolean, ExactKind::Boolean},
    {ColumnType::Byte, ExactKind::Integer},
    {ColumnType::Integer, ExactKind::Integer},
    {ColumnType::LongInteger, ExactKind::Integer},
    {ColumnType::Currency, ExactKind::Decimal},
    {ColumnType::Single, ExactKind::Single},
    {ColumnType::Double, ExactKind::Double},
    {ColumnType::DateTime, ExactKind::Date},
    {ColumnType::Binary, ExactKind::Binary},
    {ColumnType::Text, ExactKind::Text},
    {ColumnType::Ole, ExactKind::Object},
    {ColumnType::Memo, ExactKind::Text},
    {ColumnType::ReplicationId, ExactKind::Guid},
    {ColumnType::Numeric, ExactKind::Decimal},
    {ColumnType::ComplexAutoNumber, ExactKind::Integer},
    {ColumnType::BigInt, ExactKind::BigInteger},
    {ColumnType::DateTimeExtended, ExactKind::Date},
    {ColumnType::Attachment, ExactKind::Object},
    {ColumnType::MultipleValues, ExactKind::Text},
};

template <typename T> T parsed(std::string_view text)
{
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    // Only what is nearer to zero than any number, since every text was made of one.
    return result.ec == std::errc::result_out_of_range ? T{} : value;
}

int digitValue(char digit) { return digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10; }

} // namespace

ExactKind exactKind(ColumnType type)
{
    const auto* found = std::ranges::find(typeKinds, type, &TypeKind::type);
    return found == std::end(typeKinds) ? ExactKind::Binary : found->kind;
}

std::int64_t ExactCell::integer() const { return parsed<std::int64_t>(text); }

// A Single's shortest text names another double than the one that has its bits.
double ExactCell::real() const { return kind == ExactKind::Single ? parsed<float>(text) : parsed<double>(text); }

bool ExactCell::isFinite() const { return text.back() != 'n' && text.back() != 'f'; }

std::string_view ExactCell::guid() const
{
    const bool isBraced = text.size() > 2 && text.front() == '{' && text.back() == '}';
    return isBraced ? text.substr(1, text.size() - 2) : text;
}

int ExactCell::significantDigits() const
{
    const auto isOtherDigit = [](char c) { return c >= '1' && c <= '9'; };
    const auto* const first = std::ranges::find_if(text, isOtherDigit);
    if (first == text.end()) return 0;
    const auto* const point = std::ranges::find(text, '.');
    auto last = text.end() - 1;
    while (last > point && !isOtherDigit(*last))
        --last;
    const bool isPointInside = first < point && point < text.end();
    return static_cast<int>(last - first) + (isPointInside ? 0 : 1);
}

void ExactCell::appendBytes(std::string& out) const
{
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        out += static_cast<char>(digitValue(text[i]) << 4 | digitValue(text[i + 1]));
}

ExactCells::ExactCells(ColumnType type, const RowGroup& group, std::size_t column)
    : m_kind(exactKind(type))
    , m_texts(&group.texts[column])
    , m_objects(&group.blobs[column])
{
}

ExactCell ExactCells::objectAt(std::uint32_t row) const
{
    const auto& cell = (*m_objects)[row];
    if (!cell) return {ExactState::Null, m_kind};
    const auto* object = exportedObject(cell);
    return {object == nullptr ? ExactState::Unreadable : ExactState::Value, m_kind, {}, 0, object};
}

ExactCell ExactCells::notedAt(std::uint32_t row, std::string_view text)
{
    const auto note = m_texts->notes()->at(row);
    if (!note) {
        if (text.empty()) return {ExactState::Null, m_kind};
        return {isReadable(text) ? ExactState::Value : ExactState::Unreadable, m_kind, text};
    }
    if (m_kind == ExactKind::Date) return {ExactState::Value, m_kind, text, *note};
    if (*note >= 0) return {ExactState::Value, m_kind, m_texts->notes()->wholeText(*note)};
    m_text.assign(text);
    m_text.append(RowNotes::zerosBehind(*note), '\0');
    return {ExactState::Value, m_kind, m_text};
}

bool hasFractions(const TAdmMDBTable& table, std::size_t column)
{
    if (exactKind(table.columns()[column]->type()) != ExactKind::Date) return false;
    return std::ranges::any_of(
        table.rows().groups(), [column](const RowGroup& group) { return group.texts[column].notes() != nullptr; });
}

} // namespace vellumo
