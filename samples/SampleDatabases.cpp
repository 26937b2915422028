// SPDX-License-Identifier: MIT
#include "samples/SampleDatabases.h"

#include "samples/Illustrations.h"
#include "samples/OleObjects.h"
#include "samples/Random.h"

#include <array>
#include <cmath>
#include <limits>

namespace vellumo::samples {
namespace {

using Rows = std::vector<std::vector<Value>>;

constexpr auto longMin = std::numeric_limits<std::int32_t>::min();
constexpr auto longMax = std::numeric_limits<std::int32_t>::max();
constexpr auto currencyMin = std::numeric_limits<std::int64_t>::min();
constexpr auto currencyMax = std::numeric_limits<std::int64_t>::max();

ColumnDescription column(std::string name, ColumnType type, int size = 0)
{
    return {.name = std::move(name), .type = type, .size = size};
}

// Writes over the text that is there, so that no memory is asked for a row.
std::string& textOf(Value& value)
{
    if (!std::holds_alternative<std::string>(value)) value.emplace<std::string>();
    return std::get<std::string>(value);
}

bool fillMillionRow(std::size_t index, std::size_t rowCount, Row& row)
{
    constexpr std::array<const char*, 8> cities = {
        "Aberdeen", "Bordeaux", "Köln", "Dunedin", "Évora", "Faro", "Gdańsk", "Hobart"};
    if (index >= rowCount) return false;
    Random random(index);
    row.values.resize(9);
    auto& name = textOf(row.values[0]);
    name = "Item No. ";
    name += std::to_string(random.below(1'000'000));
    textOf(row.values[1]) = cities[static_cast<std::size_t>(random.below(8))];
    row.values[2] = random.below(256);
    row.values[3] = random.below(65536) - 32768;
    row.values[4] = static_cast<std::int64_t>(index + 1);
    row.values[5] = random.below(100'000'000) / 1000.0;
    row.values[6] = Date{36526.0 + random.below(9000) + random.below(86400) / 86400.0};
    row.values[7] = Currency{std::int64_t{random.below(2'000'000)} * 100};
    row.values[8] = random.below(2) == 1;
    return true;
}

// Columns of the types in turn.
TableDescription wideTable()
{
    using enum ColumnType;
    constexpr std::array types = {
        Text, Long, Double, DateTime, Boolean, ColumnType::Currency, Integer, Byte, Single, Memo};
    TableDescription table{.name = "Wide"};
    for (std::size_t i = 0; i < 255; ++i)
        table.columns.push_back(column("Column " + std::to_string(i + 1), types[i % types.size()], 20));
    table.rows = [](std::size_t index, Row& row) {
        if (index >= 200) return false;
        Random random(index);
        row.values.assign(255, {});
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            const int number = random.below(250);
            if (number % 5 == 0 && i % 10 != 4) continue; // null
            switch (i % 10) {
            case 0: row.values[i] = "r" + std::to_string(number); break;
            case 1:
            case 6:
            case 7: row.values[i] = number; break;
            case 2: row.values[i] = number / 8.0; break;
            case 3: row.values[i] = Date{40000.0 + number}; break;
            case 4: row.values[i] = number % 2 == 0; break;
            case 5: row.values[i] = samples::Currency{2500L * number}; break;
            case 8: row.values[i] = static_cast<float>(number) / 4; break;
            default: row.values[i] = LongValue{"memo", LongStorage::Single}; break;
            }
        }
        return true;
    };
    return table;
}

Bytes patternBytes(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 251);
    return bytes;
}

TableDescription objectsTable()
{
    TableDescription table{.name = "Objects"};
    table.columns = {
        column("ID", ColumnType::Long), column("Kind", ColumnType::Text, 80), column("Content", ColumnType::Ole)};
    table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true}};
    Rows rows;
    const auto add = [&](std::string kind, Value content) {
        rows.push_back({static_cast<std::int64_t>(rows.size() + 1), std::move(kind), std::move(content)});
    };
    const auto picture = encodeBmp(drawProduct(Motif::Candle, {226, 190, 116}));
    for (const auto& oleClass : oleClasses()) {
        add(oleClass.className, documentObject(oleClass, patternBytes(700)));
        add(oleClass.className, documentObject(oleClass, patternBytes(20000)));
    }
    add("PBrush", pictureObject(picture));
    add("Package", packageObject("notes.txt", asBytes("A few notes.\n")));
    add("Attachment", attachmentRecord("bin", patternBytes(3000), AttachmentStorage::Stored));
    add("Attachment", attachmentRecord("bin", patternBytes(30000), AttachmentStorage::Deflated));
    add("unknown class", oleObject("Invented.Thing.1", "Thing", patternBytes(100)));
    add("no object", Bytes{1, 2, 3});
    add("null", {});
    for (int i = 0; i < 200; ++i)
        add("PBrush", pictureObject(picture));
    table.rows = rowsOf(std::move(rows));
    return table;
}

std::vector<ColumnDescription> typeColumns()
{
    using enum ColumnType;
    std::vector<ColumnDescription> columns = {column("ID", Long), column("Boolean", Boolean), column("Byte", Byte),
        column("Integer", Integer), column("Long", Long), column("Currency", ColumnType::Currency),
        column("Single", Single), column("Double", Double), column("DateTime", DateTime), column("Binary", Binary, 50),
        column("Text", Text, 100), column("Memo", Memo), column("OLE", Ole), column("GUID", ColumnType::Guid),
        column("Numeric", ColumnType::Numeric), column("Hyperlink", Memo), column("FixedText", Text, 8)};
    columns[0].autonumber = true;
    columns[14].precision = 28;
    columns[14].scale = 4;
    columns[15].hyperlink = true;
    columns[16].placement = Placement::Fixed;
    for (auto& made : columns)
        made.compressed = made.type == Text || made.type == Memo;
    return columns;
}

// No characters outside code page 1252, so that both versions can hold them.
Rows typeRows()
{
    constexpr Numeric largest{true, {0, 0x204FCE5E, 0x3E250261, 0x0FFFFFFF}}; // 10^28 - 1
    const Guid ascending{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}};
    Guid highest;
    highest.bytes.fill(0xFF);
    return {
        {1, true, 255, 32767, longMax, Currency{currencyMax}, std::numeric_limits<float>::max(),
            std::numeric_limits<double>::max(), dateOf(9999, 12, 31, 23, 59, 59), Bytes{0, 0xFF, 0}, "Grüße", "memo",
            Bytes{0, 1, 2}, highest, largest, "Home#http://home.example/#", "fixed"},
        {2, false, 0, -32768, longMin, Currency{currencyMin}, std::numeric_limits<float>::lowest(),
            std::numeric_limits<double>::lowest(), Date{-657434}, Bytes(50), std::string(100, 'x'),
            std::string(9000, 'm'), patternBytes(10000), Guid{}, numericOf(-10000), "#http://only.example/#",
            "12345678"},
        {3, false, 0, 0, 0, Currency{0}, 0.0F, 0.0, Date{0}, Bytes{}, "", "", Bytes{}, Guid{}, numericOf(0), "", ""},
        {4, true, 1, -1, -1, Currency{-1}, 0.1F, 0.1, Date{-1.25}, Bytes{'a', 'b'}, "€ ‘quoted’", "two\r\nlines",
            patternBytes(60), ascending, numericOf(123456789), "a#b#c", "é"},
        {5, true, 2, 7, 7, Currency{12345}, -1e-30F, 1e-300, Date{45000.999999}, Bytes{' '}, " blanks ", " ",
            patternBytes(3000), ascending, numericOf(-1), {}, " x "},
        {6},
    };
}

TableDescription typesTable()
{
    TableDescription table{.name = "Types"};
    table.columns = typeColumns();
    table.rows = rowsOf(typeRows());
    table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true},
        {.name = "ByText", .columns = {{"Text", false}, {"Long"}}},
        {.name = "Key", .columns = {{"GUID"}}, .unique = true, .ignoreNulls = true}};
    table.properties = {textProperty("Description", "Every type")};
    table.columns[10].properties = {textProperty("Description", "Up to 100 characters"),
        booleanProperty("Required", false), booleanProperty("AllowZeroLength", true),
        memoProperty("DefaultValue", "\"none\"")};
    table.columns[5].properties = {byteProperty("DecimalPlaces", 255)};
    return table;
}

// Stored in another order than numbered, with a deleted column in between.
TableDescription rowStatesTable()
{
    TableDescription table{.name = "Rows"};
    table.columns = {column("Added later", ColumnType::Text, 20), column("Name", ColumnType::Text, 20),
        column("Dropped", ColumnType::Double), column("ID", ColumnType::Long), column("Flag", ColumnType::Boolean)};
    const int numbers[] = {4, 1, 2, 0, 3};
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        table.columns[i].number = numbers[i];
    table.columns[2].deleted = true;
    const auto row = [](int id, RowState state, int columnCount = 0, int slack = 0) {
        return Row{{"new " + std::to_string(id), "name " + std::to_string(id), {}, id, id % 2 == 1}, state, columnCount,
            slack};
    };
    table.rows = rowsOf(std::vector<Row>{row(1, RowState::Live, 4), row(2, RowState::Deleted), row(3, RowState::Moved),
        row(4, RowState::Live, 2), row(5, RowState::DeletedEmpty), row(6, RowState::Live, 0, 9),
        row(7, RowState::Live)});
    return table;
}

TableDescription memosTable()
{
    TableDescription table{.name = "Memos"};
    table.columns = {column("ID", ColumnType::Long), column("Note", ColumnType::Memo), column("Blob", ColumnType::Ole)};
    const auto text = [](int count) {
        std::string lines;
        for (int i = 0; i < count; ++i)
            lines += "line " + std::to_string(i) + "\n";
        return lines;
    };
    table.rows = rowsOf(Rows{
        {1, LongValue{text(3), LongStorage::Inline}, LongValue{patternBytes(40), LongStorage::Inline}},
        {2, LongValue{text(30), LongStorage::Single}, LongValue{patternBytes(900), LongStorage::Single}},
        {3, LongValue{text(2000), LongStorage::Chain}, LongValue{patternBytes(70000), LongStorage::Chain}},
        {4, LongValue{text(8), LongStorage::Chain, 10}, LongValue{patternBytes(21), LongStorage::Chain, 7}},
        {5, LongValue{"", LongStorage::Inline}, LongValue{Bytes{}, LongStorage::Single}},
        {6},
    });
    return table;
}

constexpr std::size_t parentCount = 900;

TableDescription parentsTable()
{
    TableDescription table{.name = "Parents"};
    table.columns = {column("ID", ColumnType::Long), column("Name", ColumnType::Text, 40),
        column("Since", ColumnType::DateTime), column("Weight", ColumnType::Double),
        column("Active", ColumnType::Boolean)};
    table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true},
        {.name = "ByName", .columns = {{"Name"}, {"Weight", false}}},
        {.name = "BySince", .columns = {{"Since", false}, {"Active"}}, .ignoreNulls = true}};
    table.rows = [](std::size_t index, Row& row) {
        Random random(index);
        const auto id = static_cast<std::int64_t>(index + 1);
        row.values = {
            id, "Parent" + std::to_string(random.below(300)), {}, random.below(1000) / 4.0 - 100, id % 3 == 0};
        if (index % 7 != 0) row.values[2] = Date{30000.25 + random.below(9000)};
        if (index % 50 == 49) row.state = RowState::Moved;
        if (index % 90 == 89) row.state = RowState::Deleted;
        return index < parentCount;
    };
    return table;
}

// A column was deleted and two were added, past a multiple of 8, while rows were written.
TableDescription childrenTable()
{
    TableDescription table{.name = "Children"};
    table.columns = {column("ID", ColumnType::Long), column("ParentID", ColumnType::Long)};
    for (const char* const name : {"A", "B", "C", "D", "E"})
        table.columns.push_back(column(name, ColumnType::Integer));
    table.columns.push_back(column("Flag", ColumnType::Boolean));
    table.columns.push_back(column("Note", ColumnType::Memo));
    table.columns.push_back(column("Picture", ColumnType::Ole));
    table.columns[3].deleted = true;
    table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true}};
    table.rows = [](std::size_t index, Row& row) {
        const auto id = static_cast<std::int64_t>(index + 1);
        row.values = {id, id, id % 100, id % 10, -id, 7, 300 + id, id % 2 == 0, {}, {}};
        row.columnCount = index < 60 ? 7 : index < 120 ? 8 : 0;
        if (row.columnCount == 0) row.values[3] = {};
        if (row.columnCount == 0) row.values[8] = std::string(30 + 97 * (index % 60), 'n');
        if (index % 20 == 19)
            row.values[9] = packageObject("notes.txt", asBytes(std::string(400 * (index % 23) + 1, 'p')));
        return index < 200;
    };
    return table;
}

// A page of rows holds one large deleted row and a small one.
TableDescription spreadTable(JetVersion version)
{
    const auto pages = version == JetVersion::Jet3 ? std::size_t{1050} : std::size_t{530};
    TableDescription table{.name = "Spread"};
    table.columns = {column("ID", ColumnType::Long), column("Text", ColumnType::Text)};
    table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true}};
    table.rows = [pages, version](std::size_t index, Row& row) {
        const bool isLarge = index % 2 == 0;
        row.values = {static_cast<std::int64_t>(index / 2), Bytes{'x', '\r', '\n', 'x'}};
        if (isLarge) row.values[1] = Bytes(pageSize(version) - 90, 'x');
        row.state = isLarge ? RowState::Deleted : RowState::Live;
        return index < 2 * pages;
    };
    return table;
}

ColumnDescription calculatedColumn(std::string name, ColumnType type, ColumnType entryType, std::string expression)
{
    auto made = column(std::move(name), type);
    made.calculated = true;
    made.entryType = entryType;
    made.properties = {
        byteProperty("ResultType", static_cast<std::uint8_t>(type)), memoProperty("Expression", std::move(expression))};
    return made;
}

// The types that only newer files have; the definition states other ones for most calculated columns.
std::vector<ColumnDescription> newerColumns()
{
    using enum ColumnType;
    std::vector<ColumnDescription> columns = {column("ID", Long), column("BigInt", BigInt),
        column("Extended", DateTimeExtended), calculatedColumn("Sum", Long, Long, "[ID]*2"),
        calculatedColumn("Is", Boolean, Integer, "[ID]>1"),
        calculatedColumn("Share", ColumnType::Numeric, Single, "[ID]/3"),
        calculatedColumn("Label", Text, Text, "[Note] & \"!\""), calculatedColumn("Long label", Memo, Text, "[Note]"),
        column("Files", Complex), column("Colours", Complex), column("Sizes", Complex), column("Note", Memo),
        column("VersionHistory_071D71EDD53D45A1", Complex)};
    columns[0].autonumber = true;
    columns[5].scale = 4;
    columns[6].compressed = true;
    columns[8].complex = samples::Complex::Files;
    columns[9].complex = samples::Complex::Texts;
    columns[10].complex = samples::Complex::Numbers;
    columns[10].properties = {textProperty("RowSourceType", "Value List"),
        memoProperty("RowSource", "1;\"small\";2;\"large; or so\""), integerProperty("BoundColumn", 1),
        integerProperty("ColumnCount", 2), memoProperty("ColumnWidths", "0;1440")};
    columns[11].properties = {booleanProperty("AppendOnly", true)};
    columns[12].complex = samples::Complex::Versions;
    columns[12].historyOf = "Note";
    return columns;
}

Rows newerRows()
{
    const auto days = std::uint64_t{737954}; // 2021-06-14
    constexpr auto first = std::numeric_limits<std::int64_t>::min();
    constexpr auto last = std::numeric_limits<std::int64_t>::max();
    const auto notes = asBytes("A few notes.\n");
    const FileValues two = {
        {"notes.txt", "txt", Bytes(notes.begin(), notes.end())}, {"plain.bin", "bin", patternBytes(3000), false}};
    return {
        {1, last, ExtendedDate{days, 819123456789}, 2, false, numericOf(3333), "now!", std::string(3000, 'l'), two,
            TextValues{"red", "green; blue"}, NumberValues{2, 1, 3}, "now",
            VersionValues{{"before", Date{44000.25}}, {"now", Date{44001.5}}}},
        {2, first, ExtendedDate{0, 0}, 4, true, numericOf(-6667), "", "",
            FileValues{{"large.bin", "bin", patternBytes(30000)}}, TextValues{}, NumberValues{2},
            std::string(5000, 'n')},
        {3, 0, ExtendedDate{3652058, 863999999999}, {}, {}, {}, {}, {}, FileValues{}, TextValues{"one"}, {}, {}},
        {4},
    };
}

} // namespace

DatabaseDescription millionDatabase(std::size_t rowCount)
{
    using enum ColumnType;
    TableDescription table{.name = "Rows"};
    table.columns = {column("Name", Text, 50), column("City", Text, 50), column("Level", Byte),
        column("Offset", Integer), column("Number", Long), column("Measure", Double), column("Date", DateTime),
        column("Price", ColumnType::Currency), column("Active", Boolean)};
    table.rows = [rowCount](std::size_t index, Row& row) { return fillMillionRow(index, rowCount, row); };
    DatabaseDescription database;
    database.tables.push_back(std::move(table));
    return database;
}

DatabaseDescription wideDatabase()
{
    DatabaseDescription database;
    database.tables = {wideTable(), objectsTable()};
    return database;
}

DatabaseDescription manyTablesDatabase(std::size_t tableCount)
{
    DatabaseDescription database;
    for (std::size_t i = 1; i <= tableCount; ++i) {
        TableDescription table{.name = "Table " + std::to_string(i)};
        table.columns = {column("ID", ColumnType::Long), column("Text", ColumnType::Text, 40),
            column("Amount", ColumnType::Currency)};
        table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true}};
        const auto first = static_cast<std::int64_t>(i);
        table.rows =
            rowsOf(Rows{{1, "first of " + table.name, Currency{first}}, {2, "second", {}}, {3, {}, Currency{0}}});
        database.tables.push_back(std::move(table));
    }
    return database;
}

DatabaseDescription typesDatabase(JetVersion version)
{
    DatabaseDescription database;
    database.version = version;
    database.tables = {typesTable(), rowStatesTable(), memosTable()};
    return database;
}

DatabaseDescription newerDatabase()
{
    auto database = typesDatabase(JetVersion::Jet4);
    database.newerVersion = 6;
    TableDescription table{.name = "Newer"};
    table.columns = newerColumns();
    table.rows = rowsOf(newerRows());
    table.indexes = {{.name = "PrimaryKey", .columns = {{"ID"}}, .primary = true}};
    database.tables.push_back(std::move(table));
    return database;
}

DatabaseDescription evolvedDatabase(JetVersion version)
{
    auto database = typesDatabase(version);
    database.tables.push_back(parentsTable());
    database.tables.push_back(childrenTable());
    database.relations = {{.name = "ParentsChildren",
        .table = "Children",
        .columns = {"ParentID"},
        .referencedTable = "Parents",
        .referencedColumns = {"ID"},
        .cascadeDeletes = true}};
    return database;
}

DatabaseDescription spreadDatabase(JetVersion version)
{
    DatabaseDescription database;
    database.version = version;
    database.tables = {rowStatesTable(), spreadTable(version), memosTable()};
    return database;
}

} // namespace vellumo::samples
