// SPDX-License-Identifier: MIT
#include "export/TableScan.h"

#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectCells.h"
#include "text/UTF8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
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
    bool isNumber = false;
};

NumberShape shapeOf(std::string_view text)
{
    int count = 0;
    int point = -1;
    int first = -1;
    int last = -1;
    int exponent = 0;
    for (std::size_t i = text.starts_with('-') ? 1 : 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == 'e') {
            std::from_chars(
                text.data() + i + (text.substr(i + 1).starts_with('+') ? 2 : 1), text.data() + text.size(), exponent);
            break;
        }
        if (c == '.') {
            point = count;
            continue;
        }
        if (c < '0' || c > '9') return {};
        if (c != '0') last = count;
        if (c != '0' && first < 0) first = count;
        ++count;
    }
    if (first < 0) return {0, 0, 0, count > 0};
    const int whole = (point < 0 ? count : point) + exponent;
    return {last - first + 1, std::max(0, whole - first), std::max(0, last + 1 - whole), true};
}

constexpr CellTraits textTraits = bitOf(LargeText) | bitOf(LongText) | bitOf(Backslash) | bitOf(CarriageReturn)
    | bitOf(Markup) | bitOf(Control) | bitOf(OtherLetters);
constexpr CellTraits numberTraits = bitOf(SixDigits) | bitOf(FifteenDigits) | bitOf(Fraction) | bitOf(TwoDecimals)
    | bitOf(TenDigits) | bitOf(ThirteenDigits) | bitOf(BeyondSingle) | bitOf(NotANumber);
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
    TableScanner(const TAdmMDBTable& table, CellTraits traits)
        : m_table(table)
        , m_traits(traits)
        , m_isLetter((traits & bitOf(OtherLetters)) != 0 ? 0x110000 : 0)
    {
        m_scan.columns.resize(table.columns().size());
    }

    void scanGroup(const RowGroup& group);
    [[nodiscard]] TableScan take();

private:
    void scanChunk(const TextChunk& chunk, ColumnType type, ColumnScan& counts);
    [[nodiscard]] bool mayHave(std::string_view bytes, CellTraits traits) const;
    static void scanNotes(const TextChunk& chunk, ColumnType type, ColumnScan& counts);
    void scanText(std::string_view text, ColumnScan& counts);
    static void scanNumber(std::string_view text, ColumnScan& counts);
    static void scanDate(std::string_view text, ColumnScan& counts);
    static void scanObject(const std::shared_ptr<TAdmBlobData>& cell, ColumnScan& counts);
    void noteLetters(std::string_view text);

    const TAdmMDBTable& m_table;
    CellTraits m_traits;
    TableScan m_scan;
    std::vector<bool> m_isLetter; // of every code point, whether it came
};

void TableScanner::scanGroup(const RowGroup& group)
{
    for (std::size_t c = 0; c < m_scan.columns.size(); ++c) {
        auto& counts = m_scan.columns[c];
        if (group.texts[c].rowCount() != 0) scanChunk(group.texts[c], m_table.columns()[c]->type(), counts);
        for (const auto& cell : group.blobs[c])
            scanObject(cell, counts);
    }
}

void TableScanner::scanChunk(const TextChunk& chunk, ColumnType type, ColumnScan& counts)
{
    std::uint32_t start = 0;
    for (const auto end : chunk.ends())
        counts[std::exchange(start, end) == end ? Empty : Filled] += 1;
    if (chunk.notes() != nullptr) scanNotes(chunk, type, counts);
    const auto traits = m_traits & traitsOf(type);
    if (traits == 0 || !mayHave(chunk.bytes(), traits)) return;
    for (std::uint32_t row = 0; row < chunk.rowCount(); ++row) {
        const auto text = chunk.text(row);
        if (text.empty()) continue;
        if ((traits & textTraits) != 0) scanText(text, counts);
        if ((traits & numberTraits) != 0) scanNumber(text, counts);
        if ((traits & dateTraits) != 0) scanDate(text, counts);
    }
}

void TableScanner::scanNotes(const TextChunk& chunk, ColumnType type, ColumnScan& counts)
{
    const bool isDate = factsOf(type).sortKind == SortKind::Date;
    for (std::uint32_t row = 0; row < chunk.rowCount(); ++row)
        if (chunk.notes()->at(row)) ++counts[isDate ? Milliseconds : chunk.text(row).empty() ? EmptyText : Zeros];
}

// Nearly all texts have none of these, and a search over all of them together is much faster than one after the other.
bool TableScanner::mayHave(std::string_view bytes, CellTraits traits) const
{
    if ((traits & ~(bitOf(LargeText) | bitOf(LongText) | bitOf(Backslash) | bitOf(CarriageReturn))) != 0) return true;
    const auto holds = [&](CellTrait trait, char what) {
        return (traits & bitOf(trait)) != 0 && bytes.find(what) != std::string_view::npos;
    };
    const bool mayBeLong = (traits & (bitOf(LargeText) | bitOf(LongText))) != 0 && bytes.size() > longUnits;
    return mayBeLong || holds(Backslash, '\\') || holds(CarriageReturn, '\r');
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

void TableScanner::scanNumber(std::string_view text, ColumnScan& counts)
{
    const auto shape = shapeOf(text);
    const bool isBeyondSingle = shape.whole > 39 || (shape.whole == 39 && std::abs(valueOf(text)) > maximumSingle);
    const std::pair<bool, CellTrait> traits[] = {{!shape.isNumber, NotANumber}, {shape.significant > 6, SixDigits},
        {shape.significant > 15, FifteenDigits}, {shape.decimals > 0, Fraction}, {shape.decimals > 2, TwoDecimals},
        {shape.whole > 10, TenDigits}, {shape.whole > 13, ThirteenDigits}, {isBeyondSingle, BeyondSingle}};
    for (const auto& [has, trait] : traits)
        if (has) ++counts[trait];
}

// "MM/dd/yyyy HH:mm:ss".
void TableScanner::scanDate(std::string_view text, ColumnScan& counts)
{
    if (text.size() != 19) return;
    const std::string day = std::string(text.substr(6, 4)).append(text.substr(0, 2)).append(text.substr(3, 2));
    if (day < "19000101" || day > "20790606") ++counts[BeyondSmallDates];
    if (text.substr(17) != "00") ++counts[Seconds];
}

void TableScanner::scanObject(const std::shared_ptr<TAdmBlobData>& cell, ColumnScan& counts)
{
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

TableScan scanTable(const TAdmMDBTable& table, const std::atomic<bool>& stop, CellTraits traits)
{
    TableScanner scanner(table, traits);
    for (const auto& group : table.rows().groups()) {
        if (stop) break;
        scanner.scanGroup(group);
    }
    return scanner.take();
}

} // namespace vellumo
