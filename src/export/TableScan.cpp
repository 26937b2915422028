// SPDX-License-Identifier: MIT
#include "export/TableScan.h"

#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectCells.h"
#include "text/ByteScan.h"
#include "text/CaseFold.h"
#include "text/UTF8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace vellumo {

namespace {

using enum CellTrait;

constexpr std::size_t largeBytes = 65'535;
constexpr std::size_t longUnits = 32'740;

// What the bytes of a text can tell, as bits.
enum ByteClass : std::uint8_t { IsBackslash = 1, IsReturn = 2, IsMarkup = 4, IsControl = 8, IsOther = 16 };

constexpr std::array<std::uint8_t, 256> byteClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (int byte = 0; byte < 32; ++byte)
        if (byte != '\t' && byte != '\n' && byte != '\r') classes[static_cast<std::size_t>(byte)] = IsControl;
    for (std::size_t byte = 0x80; byte < 256; ++byte)
        classes[byte] = IsOther;
    classes['\\'] = IsBackslash;
    classes['\r'] = IsReturn;
    classes['&'] = classes['<'] = IsMarkup;
    return classes;
}();

std::uint8_t classesOf(std::string_view text)
{
    std::uint8_t classes = 0;
    for (const auto byte : text)
        classes |= byteClasses[static_cast<unsigned char>(byte)];
    return classes;
}

constexpr auto isControlByte = [](auto byte) {
    return (byte < 0x20) & (byte != '\t') & (byte != '\n') & (byte != '\r');
};
constexpr auto isLetter = [](auto byte) { return byte >= 'A'; };

// Whether some text among these bytes has one of the traits that a byte tells.
bool mayHave(std::string_view bytes, CellTraits traits)
{
    const auto holds = [&](CellTrait trait, std::string_view any) {
        return (traits & bitOf(trait)) != 0
            && std::ranges::any_of(any, [&](char c) { return bytes.find(c) != std::string_view::npos; });
    };
    return holds(Backslash, "\\") || holds(CarriageReturn, "\r") || holds(Markup, "&<")
        || ((traits & bitOf(OtherLetters)) != 0 && !isAscii(bytes))
        || ((traits & bitOf(Control)) != 0 && hasByte(bytes, isControlByte));
}

std::size_t utf16Units(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; })
        + std::ranges::count_if(text, [](char byte) { return static_cast<unsigned char>(byte) >= 0xF0; }));
}

// Where the digits of a number lie.
struct NumberShape {
    int significant = 0;
    int whole = 0;    // in front of the point, without zeros before them
    int decimals = 0; // behind the point, without zeros behind them
};

bool isPartOfNumber(char c) { return (c >= '0' && c <= '9') || c == '-' || c == '.' || c == 'e' || c == '+'; }

NumberShape shapeOf(std::string_view text, bool mayHaveExponent)
{
    int exponent = 0;
    if (const auto e = mayHaveExponent ? text.find('e') : text.npos; e != text.npos) {
        const auto digits = e + (text.substr(e + 1).starts_with('+') ? 2 : 1);
        std::from_chars(text.data() + digits, text.data() + text.size(), exponent);
        text = text.substr(0, e);
    }
    if (text.starts_with('-')) text.remove_prefix(1);
    const auto isOtherDigit = [](char c) { return c >= '1' && c <= '9'; };
    const auto size = static_cast<int>(text.size());
    const auto point = static_cast<int>(std::ranges::find(text, '.') - text.begin());
    int begin = 0;
    while (begin < size && !isOtherDigit(text[static_cast<std::size_t>(begin)]))
        ++begin;
    if (begin == size) return {};
    int end = size;
    while (!isOtherDigit(text[static_cast<std::size_t>(end) - 1]))
        --end;
    // Places of digits: the point is none.
    const auto first = begin > point ? begin - 1 : begin;
    const auto last = end > point ? end - 1 : end;
    const auto whole = point + exponent;
    return {last - first, std::max(0, whole - first), std::max(0, last - whole)};
}

// A number of so many characters does not have the trait, unless it has an exponent.
struct NumberLength {
    CellTrait trait;
    std::size_t tooShort;
};
constexpr NumberLength numberLengths[] = {{SixDigits, 6}, {FifteenDigits, 15}, {Fraction, 2}, {TwoDecimals, 4},
    {TenDigits, 10}, {ThirteenDigits, 13}, {BeyondSingle, 38}};

constexpr CellTraits lengthTraits = bitOf(LargeText) | bitOf(LongText);
constexpr CellTraits textTraits =
    lengthTraits | bitOf(Backslash) | bitOf(CarriageReturn) | bitOf(Markup) | bitOf(Control) | bitOf(OtherLetters);
constexpr CellTraits numberTraits = bitOf(SixDigits) | bitOf(FifteenDigits) | bitOf(Fraction) | bitOf(TwoDecimals)
    | bitOf(TenDigits) | bitOf(ThirteenDigits) | bitOf(BeyondSingle) | bitOf(NotANumber);
constexpr CellTraits emptyTraits = bitOf(Empty) | bitOf(Filled);
constexpr CellTraits dateTraits = bitOf(Seconds) | bitOf(BeyondSmallDates);

// Those that a text of this type can have.
CellTraits traitsOf(ColumnType type)
{
    if (type == ColumnType::Text || type == ColumnType::Memo) return textTraits;
    switch (factsOf(type).sortKind) {
    case SortKind::Number: return numberTraits;
    case SortKind::Date: return dateTraits;
    default: return 0;
    }
}

constexpr double maximumSingle = std::numeric_limits<float>::max();

// Infinity for what no double holds.
double valueOf(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? value : std::numeric_limits<double>::infinity();
}

class TableScanner {
public:
    TableScanner(const TAdmMDBTable& table, const WantedTraits& wanted)
        : m_table(table)
    {
        CellTraits all = 0;
        for (const auto& column : table.columns()) {
            m_traits.push_back(wanted(*column));
            all |= m_traits.back();
        }
        m_isLetter.resize((all & bitOf(OtherLetters)) != 0 ? 0x110000 : 0);
        m_scan.columns.resize(table.columns().size());
    }

    void scanGroup(const RowGroup& group);
    [[nodiscard]] TableScan take();

private:
    void scanChunk(const TextChunk& chunk, std::size_t column);
    static std::size_t scanLengths(const TextChunk& chunk, ColumnScan& counts);
    static void scanNotes(const TextChunk& chunk, ColumnType type, ColumnScan& counts);
    void scanTexts(const TextChunk& chunk, CellTraits traits, std::size_t longest, ColumnScan& counts);
    void scanText(std::string_view text, ColumnScan& counts);
    static void scanNumbers(const TextChunk& chunk, CellTraits traits, std::size_t longest, ColumnScan& counts);
    static void scanNumber(std::string_view text, bool mayHaveLetters, ColumnScan& counts);
    static void scanDate(std::string_view text, ColumnScan& counts);
    static void scanObject(const std::shared_ptr<TAdmBlobData>& cell, ColumnScan& counts);
    void noteLetters(std::string_view text);

    const TAdmMDBTable& m_table;
    std::vector<CellTraits> m_traits; // wanted, one a column
    TableScan m_scan;
    std::vector<bool> m_isLetter; // of every code point, whether it came
};

void TableScanner::scanGroup(const RowGroup& group)
{
    for (std::size_t c = 0; c < m_scan.columns.size(); ++c) {
        if (group.texts[c].rowCount() != 0) scanChunk(group.texts[c], c);
        for (const auto& cell : group.blobs[c])
            scanObject(cell, m_scan.columns[c]);
    }
}

void TableScanner::scanChunk(const TextChunk& chunk, std::size_t column)
{
    auto& counts = m_scan.columns[column];
    const auto type = m_table.columns()[column]->type();
    if (chunk.notes() != nullptr) scanNotes(chunk, type, counts);
    const auto traits = m_traits[column] & traitsOf(type);
    const bool needsLengths = ((m_traits[column] & emptyTraits) | (traits & (lengthTraits | numberTraits))) != 0;
    const auto longest = needsLengths ? scanLengths(chunk, counts) : 0;
    if ((traits & textTraits) != 0) scanTexts(chunk, traits, longest, counts);
    if ((traits & numberTraits) != 0) scanNumbers(chunk, traits, longest, counts);
    if ((traits & dateTraits) != 0)
        for (std::uint32_t row = 0; row < chunk.rowCount(); ++row)
            scanDate(chunk.text(row), counts);
}

// The length of the longest text. Four texts a step, as far as that goes.
std::size_t TableScanner::scanLengths(const TextChunk& chunk, ColumnScan& counts)
{
    constexpr std::size_t step = 4;
    using Lengths = std::uint32_t __attribute__((vector_size(step * sizeof(std::uint32_t))));
    const auto ends = chunk.ends();
    Lengths longest{ends.empty() ? 0 : ends[0]};
    Lengths empty{longest[0] == 0 ? 1U : 0U};
    std::size_t row = 1;
    for (; row + step <= ends.size(); row += step) {
        Lengths starts;
        Lengths lengths;
        std::memcpy(&starts, ends.data() + row - 1, sizeof starts);
        std::memcpy(&lengths, ends.data() + row, sizeof lengths);
        lengths -= starts;
        longest = lengths > longest ? lengths : longest;
        empty += lengths == 0 ? 1 : 0;
    }
    for (; row < ends.size(); ++row) {
        longest[0] = std::max(longest[0], ends[row] - ends[row - 1]);
        empty[0] += ends[row] == ends[row - 1] ? 1 : 0;
    }
    const auto emptyCount = empty[0] + empty[1] + empty[2] + empty[3];
    counts[Empty] += emptyCount;
    counts[Filled] += chunk.rowCount() - emptyCount;
    return std::max({longest[0], longest[1], longest[2], longest[3]});
}

void TableScanner::scanNotes(const TextChunk& chunk, ColumnType type, ColumnScan& counts)
{
    const bool isDate = factsOf(type).sortKind == SortKind::Date;
    for (std::uint32_t row = 0; row < chunk.rowCount(); ++row)
        if (chunk.notes()->at(row)) ++counts[isDate ? Milliseconds : chunk.text(row).empty() ? EmptyText : Zeros];
}

// Most runs of texts have none of what is looked for.
void TableScanner::scanTexts(const TextChunk& chunk, CellTraits traits, std::size_t longest, ColumnScan& counts)
{
    const bool mayBeLong = (traits & lengthTraits) != 0 && longest > longUnits;
    if (!mayBeLong && !mayHave(chunk.bytes(), traits)) return;
    for (std::uint32_t row = 0; row < chunk.rowCount(); ++row)
        scanText(chunk.text(row), counts);
}

void TableScanner::scanText(std::string_view text, ColumnScan& counts)
{
    if (text.size() > largeBytes) ++counts[LargeText];
    if (text.size() > longUnits && utf16Units(text) > longUnits) ++counts[LongText];
    const auto classes = classesOf(text);
    if (classes == 0) return;
    constexpr std::pair<ByteClass, CellTrait> traits[] = {{IsBackslash, Backslash}, {IsReturn, CarriageReturn},
        {IsMarkup, Markup}, {IsControl, Control}, {IsOther, OtherLetters}};
    for (const auto& [bit, trait] : traits)
        if ((classes & bit) != 0) ++counts[trait];
    if ((classes & IsOther) != 0 && !m_isLetter.empty()) noteLetters(text);
}

void TableScanner::noteLetters(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t letter = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length && i + k < text.size(); ++k)
            letter = letter << 6 | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        if (length > 1 && letter < m_isLetter.size()) m_isLetter[letter] = true;
        i += length;
    }
}

void TableScanner::scanNumbers(const TextChunk& chunk, CellTraits traits, std::size_t longest, ColumnScan& counts)
{
    auto tooShort = longest;
    for (const auto& length : numberLengths)
        if ((traits & bitOf(length.trait)) != 0) tooShort = std::min(tooShort, length.tooShort);
    // Words and exponents have letters, and what could not be read is none of ASCII.
    const bool hasLetters = hasByte(chunk.bytes(), isLetter);
    if (hasLetters) tooShort = 0;
    if (tooShort >= longest) return;
    for (std::uint32_t row = 0; row < chunk.rowCount(); ++row)
        if (const auto text = chunk.text(row); text.size() > tooShort) scanNumber(text, hasLetters, counts);
}

void TableScanner::scanNumber(std::string_view text, bool mayHaveLetters, ColumnScan& counts)
{
    if (mayHaveLetters && !std::ranges::all_of(text, isPartOfNumber)) {
        ++counts[NotANumber];
        return;
    }
    const auto shape = shapeOf(text, mayHaveLetters);
    const bool isBeyondSingle = shape.whole > 39 || (shape.whole == 39 && std::abs(valueOf(text)) > maximumSingle);
    counts[SixDigits] += shape.significant > 6 ? 1 : 0;
    counts[FifteenDigits] += shape.significant > 15 ? 1 : 0;
    counts[Fraction] += shape.decimals > 0 ? 1 : 0;
    counts[TwoDecimals] += shape.decimals > 2 ? 1 : 0;
    counts[TenDigits] += shape.whole > 10 ? 1 : 0;
    counts[ThirteenDigits] += shape.whole > 13 ? 1 : 0;
    counts[BeyondSingle] += isBeyondSingle ? 1 : 0;
}

// "MM/dd/yyyy HH:mm:ss".
void TableScanner::scanDate(std::string_view text, ColumnScan& counts)
{
    if (text.size() != 19) return;
    const auto year = text.substr(6, 4);
    const bool isBehind = year > "2079" || (year == "2079" && text.substr(0, 5) > "06/06");
    if (year < "1900" || isBehind) ++counts[BeyondSmallDates];
    if (text.substr(17) != "00") ++counts[Seconds];
}

void TableScanner::scanObject(const std::shared_ptr<TAdmBlobData>& cell, ColumnScan& counts)
{
    if (cell) counts[FurtherFile] += cell->furtherFiles().size();
    const auto* object = exportedObject(cell);
    ++counts[object == nullptr ? Empty : Filled];
    if (object == nullptr) return;
    ++counts[Object];
    const std::string_view bytes(reinterpret_cast<const char*>(object->data().data()), object->data().size());
    if (bytes.size() > largeBytes || !isWellFormedUTF8(bytes)) ++counts[BinaryObject];
}

TableScan TableScanner::take()
{
    for (std::size_t letter = 0x80; letter < m_isLetter.size(); ++letter)
        if (m_isLetter[letter]) m_scan.letters.insert(static_cast<char32_t>(letter));
    return std::move(m_scan);
}

} // namespace

TableScan scanTable(const TAdmMDBTable& table, const std::atomic<bool>& stop, const WantedTraits& wanted)
{
    TableScanner scanner(table, wanted);
    for (const auto& group : table.rows().groups()) {
        if (stop) break;
        scanner.scanGroup(group);
    }
    return scanner.take();
}

} // namespace vellumo
