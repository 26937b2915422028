// SPDX-License-Identifier: MIT
#include "export/ClassicFindings.h"

#include "export/ExportFormat.h"
#include "export/sql/SQLDialectFacts.h"
#include "model/TAdmMDBFile.h"
#include "text/TextEncoding.h"

#include <algorithm>
#include <cctype>

namespace vellumo {

namespace {

using enum CellTrait;
using Kind = FindingKind;

// Where an export goes, as bits.
enum Target : std::uint16_t {
    Delimited = 1,
    XML = 2,
    XLS = 4,
    MySQL = 8,
    Postgres = 16,
    Oracle = 32,
    SQLiteScript = 64,
    SQLServer = 128,
    SQLiteFile = 256,
    AnySQLite = SQLiteScript | SQLiteFile,
    AnyScript = MySQL | Postgres | Oracle | SQLiteScript | SQLServer,
    AnySQL = AnyScript | SQLiteFile,
    AnyTarget = Delimited | XML | XLS | AnySQL,
};

std::uint16_t targetOf(const ExportOptions& options)
{
    switch (options.fileType) {
    case ExportFileType::CSV:
    case ExportFileType::TXT: return Delimited;
    case ExportFileType::XML: return XML;
    case ExportFileType::XLS: return XLS;
    case ExportFileType::SQLite: return SQLiteFile;
    case ExportFileType::SQL: break;
    default: return 0;
    }
    switch (options.sqlDialect) {
    case SQLDialect::MySQL: return MySQL;
    case SQLDialect::PostgreSQL: return Postgres;
    case SQLDialect::Oracle: return Oracle;
    case SQLDialect::SQLite: return SQLiteScript;
    case SQLDialect::SQLServer: return SQLServer;
    }
    return 0;
}

// As people call it.
std::string titleOf(const ExportOptions& options)
{
    const auto& format = exportFormat(options.fileType);
    return std::string(format.has(ExportOption::Dialect) ? sqlDialectFacts(options.sqlDialect).title : format.title);
}

constexpr std::uint32_t typeBit(ColumnType type) { return 1U << columnTypeIndex(type); }
template <typename... Types> constexpr std::uint32_t types(Types... columnTypes)
{
    return (typeBit(columnTypes) | ...);
}

using enum ColumnType;
constexpr std::uint32_t anyType = ~0U;
constexpr auto texts = types(ColumnType::Text, Memo);
constexpr auto floats = types(Single, Double);
constexpr auto exactNumbers = types(Currency, Numeric);

// Each cell of these types that has the trait meets with this at these targets.
struct Rule {
    Kind kind;
    CellTrait trait;
    std::uint32_t types;
    std::uint16_t targets;
};

constexpr Rule rules[] = {
    {Kind::ObjectsLeftOut, Object, anyType, Delimited | XML | XLS},
    {Kind::ObjectsLeftOut, FurtherFile, anyType, Delimited | XML | XLS},
    {Kind::ObjectsRefused, Object, anyType, Postgres | Oracle | SQLServer},
    {Kind::ObjectsRefused, BinaryObject, anyType, MySQL},
    {Kind::FilesLeftOut, FurtherFile, anyType, AnySQL},
    {Kind::TextsRefused, LargeText, texts, MySQL},
    {Kind::TextsTooLong, LongText, texts, XLS},
    {Kind::BytesAsDigits, Filled, types(Binary), Postgres | SQLServer | AnySQLite},
    {Kind::ValuesRefused, Filled, types(ReplicationId), MySQL | Oracle | SQLiteScript},
    {Kind::NumbersRounded, SixDigits, types(Currency, Single, Double), MySQL},
    {Kind::NumbersRefused, BeyondSingle, types(Double), MySQL},
    {Kind::NumbersRounded, Fraction, types(Numeric), MySQL | SQLServer},
    {Kind::NumbersRefused, TenDigits, types(Numeric), MySQL},
    {Kind::NumbersRounded, TwoDecimals, exactNumbers, Postgres},
    {Kind::NumbersRounded, TwoDecimals, types(Currency), Oracle},
    {Kind::NumbersRefused, ThirteenDigits, exactNumbers, Postgres},
    {Kind::NumbersRefused, ThirteenDigits, types(Currency), Oracle},
    {Kind::NumbersRounded, FifteenDigits, exactNumbers, XLS | AnySQLite},
    {Kind::NumbersRefused, NotANumber, floats, AnySQL | XLS},
    {Kind::BackslashesDoubled, Backslash, texts, AnySQL & ~MySQL},
    {Kind::LineBreaks, CarriageReturn, texts, MySQL | SQLiteScript | XML},
    {Kind::DatesRefused, BeyondSmallDates, types(DateTime), SQLServer},
    {Kind::SecondsLost, Seconds, types(DateTime), SQLServer},
    {Kind::MillisecondsLost, Milliseconds, types(DateTime), AnyTarget},
    {Kind::ValuesAsText, Filled, types(DateTime), XLS | AnySQLite},
    {Kind::ValuesAsText, Filled, types(Boolean, Byte, BigInt, DateTimeExtended), XLS},
    {Kind::TextsBreakXML, Markup, texts, XML},
    {Kind::TextsBreakXML, Control, texts, XML},
    {Kind::EmptyText, CellTrait::EmptyText, texts, AnyTarget},
    {Kind::ZerosLost, Zeros, texts, AnyTarget},
};

struct NoTypeRule {
    std::uint32_t types;
    std::uint16_t targets;
};
constexpr NoTypeRule noTypeRules[] = {
    {types(Binary), MySQL | Oracle}, // without a size, which the one wants
    {types(ReplicationId), SQLServer},
};

std::size_t utf16Units(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; })
        + std::ranges::count_if(text, [](char byte) { return static_cast<unsigned char>(byte) >= 0xF0; }));
}

bool hasCharacterBeyondFFFF(std::string_view text)
{
    return std::ranges::any_of(text, [](char byte) { return static_cast<unsigned char>(byte) >= 0xF0; });
}

// Letters, digits and a few signs; whatever is not ASCII passes for a letter.
bool isXMLName(std::string_view name)
{
    const auto isLetter = [](unsigned char c) { return c >= 0x80 || std::isalpha(c) != 0 || c == '_'; };
    const auto isInside = [&](unsigned char c) { return isLetter(c) || std::isdigit(c) != 0 || c == '-' || c == '.'; };
    return !name.empty() && isLetter(static_cast<unsigned char>(name.front())) && std::ranges::all_of(name, isInside);
}

std::string utf8Of(char32_t letter)
{
    const auto tail = [&](unsigned shift) { return static_cast<char>(0x80 | (letter >> shift & 0x3F)); };
    if (letter < 0x800) return {static_cast<char>(0xC0 | letter >> 6), tail(0)};
    if (letter < 0x10000) return {static_cast<char>(0xE0 | letter >> 12), tail(6), tail(0)};
    return {static_cast<char>(0xF0 | letter >> 18), tail(12), tail(6), tail(0)};
}

// An unusual character tells nothing here; a letter of ASCII has zero bytes in every encoding of fixed wider units.
bool writesZeroBytes(TextEncoder& encoder)
{
    std::string bytes;
    return encoder.append("a", bytes) && bytes.find('\0') != std::string::npos;
}

class Collector {
public:
    Collector(const TAdmMDBTable& table, const TableScan& scan, const ExportOptions& options, ExportFindings& findings)
        : m_table(table)
        , m_scan(scan)
        , m_options(options)
        , m_target(targetOf(options))
        , m_title(titleOf(options))
        , m_findings(findings)
    {
    }

    void collect()
    {
        if (m_options.exportStructure || !is(AnySQL)) collectStructure();
        if (m_options.exportData) collectRows();
        if (exportFormat(m_options.fileType).has(ExportOption::Encoding)) collectEncoding();
    }

private:
    [[nodiscard]] bool is(unsigned targets) const { return (m_target & targets) != 0; }
    void add(Kind kind, std::string_view column, std::uint64_t count = 1)
    {
        m_findings.add(kind, m_table.name(), column, count, m_title);
    }

    void collectStructure();
    void collectName(const std::string& name);
    [[nodiscard]] bool refusesName(std::string_view name) const;
    [[nodiscard]] bool areRowsTooWide() const;
    void collectRows();
    void collectColumn(const TAdmMDBColumn& column, const ColumnScan& counts);
    void collectDecimalSymbol(const TAdmMDBColumn& column, const ColumnScan& counts);
    void collectEncoding();

    const TAdmMDBTable& m_table;
    const TableScan& m_scan;
    const ExportOptions& m_options;
    std::uint16_t m_target;
    std::string m_title;
    ExportFindings& m_findings;
};

void Collector::collectStructure()
{
    if (is(AnySQLite) && m_table.name().starts_with("sqlite_")) add(Kind::NameRefused, "");
    if (is(AnySQL)) collectName(m_table.name());
    for (const auto& column : m_table.columns()) {
        if (is(AnySQL)) collectName(column->name());
        if (is(XML) && !isXMLName(column->name())) add(Kind::NameBreaksXML, column->name());
        for (const auto& rule : noTypeRules)
            if (is(rule.targets) && (rule.types & typeBit(column->type())) != 0) add(Kind::NoType, column->name());
    }
    if (m_options.includeIndexes && is(AnySQL))
        for (const auto& index : m_table.indices())
            if (!index->isPrimaryKey()) collectName(index->name());
    if (is(MySQL) && areRowsTooWide()) add(Kind::RowsTooWide, "");
}

void Collector::collectName(const std::string& name)
{
    if (is(Postgres) && name.size() > 63) add(Kind::NameCut, name);
    if (refusesName(name)) add(Kind::NameRefused, name);
}

bool Collector::refusesName(std::string_view name) const
{
    if (is(MySQL)) return utf16Units(name) > 64 || hasCharacterBeyondFFFF(name) || name.ends_with(' ');
    if (is(Oracle)) return name.size() > 128;
    return is(SQLServer) && utf16Units(name) > 128;
}

// By the texts alone: a row holds short ones whole, and the beginnings of longer ones; their sizes together have a
// limit of their own.
bool Collector::areRowsTooWide() const
{
    constexpr std::size_t pageBytes = 8126;
    constexpr std::size_t rowBytes = 65'535;
    std::size_t inPage = 0;
    std::size_t inRow = 0;
    for (const auto& column : m_table.columns()) {
        if (column->type() != ColumnType::Text) continue;
        const auto size = static_cast<std::size_t>(std::max(column->fieldSize(), 0));
        inPage += size <= 63 ? 4 * size + 1 : 41;
        inRow += 4 * size + 2;
    }
    return inPage > pageBytes || inRow > rowBytes;
}

void Collector::collectRows()
{
    for (std::size_t c = 0; c < m_scan.columns.size(); ++c)
        collectColumn(*m_table.columns()[c], m_scan.columns[c]);
}

void Collector::collectColumn(const TAdmMDBColumn& column, const ColumnScan& counts)
{
    for (const auto& rule : rules)
        if (is(rule.targets) && (rule.types & typeBit(column.type())) != 0 && counts[rule.trait] != 0)
            add(rule.kind, column.name(), counts[rule.trait]);
    if (is(AnySQL) && column.allowZeroLength() == false && counts[Empty] != 0)
        add(Kind::EmptyForNull, column.name(), counts[Empty]);
    if (factsOf(column.type()).hasDecimalSymbol) collectDecimalSymbol(column, counts);
}

void Collector::collectDecimalSymbol(const TAdmMDBColumn& column, const ColumnScan& counts)
{
    // Currency has its four digits even where they are zeros.
    const auto count = counts[column.type() == Currency ? Filled : Fraction];
    const auto& symbol = m_options.decimalSymbol;
    if (count == 0 || symbol == ".") return;
    if (is(AnyScript)) add(Kind::NumbersRefused, column.name(), count);
    if (is(Delimited) && symbol.find(fieldDelimiterText(m_options.fieldDelimiter)) != std::string::npos)
        add(Kind::NumbersParted, column.name(), count);
}

void Collector::collectEncoding()
{
    auto encoder = TextEncoder::create(m_options.encoding);
    std::string bytes;
    if (!encoder || writesZeroBytes(*encoder)) return;
    const auto missing =
        std::ranges::count_if(m_scan.letters, [&](char32_t letter) { return !encoder->append(utf8Of(letter), bytes); });
    if (missing != 0)
        add(Kind::NotInEncoding, "", static_cast<std::uint64_t>(missing));
    else if (is(XML) && m_options.encoding != encodingUTF8 && !m_scan.letters.empty())
        add(Kind::EncodingNotSaid, "");
}

} // namespace

WantedTraits classicTraits(const ExportOptions& options)
{
    const auto target = targetOf(options);
    const bool needsLetters =
        exportFormat(options.fileType).has(ExportOption::Encoding) && options.encoding != encodingUTF8;
    const CellTraits ofAll =
        (options.decimalSymbol == "." ? 0 : bitOf(Fraction) | bitOf(Filled)) | (needsLetters ? bitOf(OtherLetters) : 0);
    return [target, ofAll](const TAdmMDBColumn& column) {
        CellTraits traits = ofAll;
        if ((target & AnySQL) != 0 && column.allowZeroLength() == false) traits |= bitOf(Empty);
        for (const auto& rule : rules)
            if ((rule.targets & target) != 0 && (rule.types & typeBit(column.type())) != 0) traits |= bitOf(rule.trait);
        return traits;
    };
}

void addClassicFindings(
    const TAdmMDBTable& table, const TableScan& scan, const ExportOptions& options, ExportFindings& findings)
{
    Collector(table, scan, options, findings).collect();
}

void addClassicFindings(const TAdmMDBFile& file, std::span<const std::string> tables, const ExportOptions& options,
    ExportFindings& findings)
{
    auto encoder = TextEncoder::create(options.encoding);
    if (exportFormat(options.fileType).has(ExportOption::Encoding) && encoder && writesZeroBytes(*encoder))
        findings.add(Kind::CutAtZero, "", "");
    if ((targetOf(options) & AnySQL) == 0 || !options.includeForeignKeys || !options.exportStructure) return;
    const auto isExported = [&](const std::string& name) { return std::ranges::find(tables, name) != tables.end(); };
    for (const auto& relation : file.allForeignKeys()) {
        if (!isExported(relation->referencingTable())) continue;
        const auto add = [&](Kind kind) { findings.add(kind, relation->referencingTable(), relation->name()); };
        if (!isExported(relation->referencedTable())) add(Kind::RelationToNowhere);
        if (!relation->isEnforced())
            add(Kind::RelationEnforced);
        else if (!relation->onUpdateCascade() || !relation->onDeleteCascade())
            add(Kind::RelationSetsNull);
    }
}

} // namespace vellumo
