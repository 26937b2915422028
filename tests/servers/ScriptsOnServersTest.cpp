// SPDX-License-Identifier: MIT
#include "servers/Server.h"
#include "support/DemoFile.h"
#include "support/ExportRun.h"
#include "support/ModelBuilder.h"

#include <algorithm>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <set>

// Scripts of whole databases are run by the servers that they are made for; afterwards those hold the same rows.
namespace vellumo::test {
namespace {

bool isFraction(std::string_view type)
{
    static const std::set<std::string_view> types = {"Currency", "Single", "Double", "Numeric"};
    return types.contains(type);
}

// The text in a form that does not depend on how a server writes a value: servers round fractions to their types.
std::string canonical(std::string_view type, std::string text)
{
    if (type == "Boolean") return text == "true" || text == "1" ? "1" : "0";
    if (isFraction(type)) return fmt::format("{:.5g}", std::strtod(text.c_str(), nullptr));
    if (type != "Replication ID") return text;
    std::erase_if(text, [](char c) { return c == '{' || c == '}' || c == '-'; });
    for (auto& c : text)
        if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

std::string unhex(std::string_view hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    return bytes;
}

std::vector<std::string> split(std::string_view text, char end)
{
    std::vector<std::string> pieces;
    for (std::size_t start = 0; start <= text.size();) {
        const auto found = std::min(text.find(end, start), text.size());
        pieces.emplace_back(text.substr(start, found - start));
        start = found + 1;
    }
    return pieces;
}

constexpr const char* nullText = "(null)";

// What a server holds: each row as its values in canonical form, sorted.
std::vector<std::string> rowsOnServer(Server& server, const TAdmMDBTable& table)
{
    std::vector<std::string> expressions;
    for (const auto& column : table.columns())
        expressions.push_back(server.hexOf(server.quoted(column->name()), column->dataType()));
    const auto result =
        server.query("SELECT " + server.concatenation(expressions) + " FROM " + server.quoted(table.name()));
    EXPECT_EQ(result.status, 0) << result.err;
    std::vector<std::string> rows;
    auto lines = split(result.out, '\n');
    lines.pop_back(); // behind the last line end
    for (const auto& line : lines) {
        const auto values = split(line, ',');
        std::string row;
        for (std::size_t c = 0; c < values.size(); ++c)
            row += (values[c] == "-" ? nullText : canonical(table.columns().at(c)->dataType(), unhex(values[c]))) + "|";
        rows.push_back(std::move(row));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

// What arrives for a text: only MySQL undoes the doubling of backslashes.
std::string asStored(ServerType server, std::string_view type, std::string_view cell)
{
    std::string text;
    const bool isLiteral =
        type == "Text" || type == "Memo/Hyperlink" || (type == "Binary" && server == ServerType::SQLite);
    for (std::size_t i = 0; i < cell.size(); ++i) {
        // The shell reads a script line by line and takes both line ends for the same.
        if (server == ServerType::SQLite && cell.substr(i, 2) == "\r\n") continue;
        if (cell[i] == '\\' && isLiteral && server != ServerType::MySQL) text += cell[i];
        text += cell[i];
    }
    if (type != "DateTime" || server == ServerType::SQLite) return text;
    return text.substr(6, 4) + '-' + text.substr(0, 2) + '-' + text.substr(3, 2) + text.substr(10);
}

std::string expectedValue(ServerType server, const TAdmMDBColumn& column, const CellValue& value)
{
    if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) {
        const auto data = (*blob)->data();
        return {reinterpret_cast<const char*>(data.data()), data.size()};
    }
    if (isNull(value)) return column.allowZeroLength() == false ? "" : nullText;
    const auto type = column.dataType();
    return canonical(type, asStored(server, type, std::get<std::string_view>(value)));
}

std::vector<std::string> rowsInModel(ServerType server, const TAdmMDBTable& table)
{
    std::vector<std::string> rows;
    for (std::size_t r = 0; r < table.rows().rowCount(); ++r) {
        std::string row;
        for (std::size_t c = 0; c < table.columns().size(); ++c)
            row += expectedValue(server, *table.columns()[c], table.rows().value(r, c)) + "|";
        rows.push_back(std::move(row));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

// What a server does not take.
struct Refused {
    std::set<std::string_view> types;
    bool foreignKeys = false;
    bool beyondBasicPlane = false; // characters there
};

// The text without characters beyond the basic plane, which are those of four bytes.
std::string onBasicPlane(std::string_view text)
{
    std::string kept;
    for (std::size_t i = 0; i < text.size();)
        if (static_cast<unsigned char>(text[i]) >= 0xF0)
            i += 4;
        else
            kept += text[i++];
    return kept;
}

Cell cellOf(const CellValue& value, const Refused& refused)
{
    if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) return *blob;
    if (const auto* text = std::get_if<std::string_view>(&value))
        return refused.beyondBasicPlane ? onBasicPlane(*text) : std::string(*text);
    return null;
}

// The table without the columns and characters that are refused.
std::unique_ptr<TAdmMDBTable> tableWithout(const TAdmMDBTable& table, const Refused& refused)
{
    std::vector<ColumnSpec> wantedColumns;
    std::vector<std::size_t> kept;
    for (std::size_t c = 0; c < table.columns().size(); ++c) {
        const auto& column = *table.columns()[c];
        if (refused.types.contains(column.dataType())) continue;
        kept.push_back(c);
        wantedColumns.push_back({column.name(), std::string(column.dataType()), column.isPrimaryKey(),
            column.allowZeroLength(), column.fieldSize(), column.description()});
    }
    std::vector<Row> rows(table.rows().rowCount());
    for (std::size_t r = 0; r < rows.size(); ++r)
        for (const auto c : kept)
            rows[r].push_back(cellOf(table.rows().value(r, c), refused));
    auto copy = makeTable(table.name(), wantedColumns, rows);
    std::vector<IndexSpec> indexes;
    for (const auto& index : table.indices()) {
        IndexSpec wanted{index->name(), {}, index->isUnique(), index->isPrimaryKey()};
        for (const auto& key : index->keys())
            if (copy->findColumn(key.name) != nullptr) wanted.keys.push_back((key.isAscending ? "" : "-") + key.name);
        if (!wanted.keys.empty()) indexes.push_back(std::move(wanted));
    }
    setIndices(*copy, indexes);
    return copy;
}

std::unique_ptr<TAdmMDBFile> fileWithout(const TAdmMDBFile& file, const Refused& refused)
{
    auto copy = makeFile("/nowhere/copy.mdb");
    TAdmMDBFile::Tables tables;
    for (const auto& table : file.tables())
        tables.push_back(tableWithout(*table, refused));
    copy->setTables(std::move(tables));
    std::vector<RelationSpec> relations;
    for (const auto& relation : file.allForeignKeys()) {
        RelationSpec wanted{relation->name(), relation->referencingTable(), relation->referencedTable(), {},
            relation->onUpdateCascade(), relation->onDeleteCascade()};
        for (std::size_t i = 0; i < relation->referencingColumns().size(); ++i)
            wanted.columns.emplace_back(relation->referencingColumns()[i], relation->referencedColumns()[i]);
        relations.push_back(std::move(wanted));
    }
    setRelations(*copy, relations);
    return copy;
}

std::unique_ptr<TAdmMDBFile> makeAllTypes()
{
    auto types = makeTable("All types",
        {{"ID", "Long Integer", true}, {"Flag", "Boolean"}, {"Small", "Byte"}, {"Short", "Integer"},
            {"Money", "Currency"}, {"Single", "Single"}, {"Double", "Double"}, {"When", "DateTime"},
            {"Bytes", "Binary"}, {"Name", "Text", false, false, 60, "It's a \\ name"}, {"Object", "OLE"},
            {"Memo", "Memo/Hyperlink"}, {"Guid", "Replication ID"}, {"Decimal", "Numeric"},
            {"Complex", "Complex Value auto number"}},
        {{"1", "1", "255", "-32768", "1234.5600", "0.125", "-3.25", "05/03/2014 21:07:09", "ab'c\\",
             "O'Hara \\ \"q\" `b`", makeBlob("text", "txt"), "two\nlines\tand é 😀",
             "{01234567-89AB-CDEF-0123-456789ABCDEF}", "12", "7"},
            {"2", "0", null, null, null, null, null, null, null, null, null, null, null, null, null},
            {"-3", "0", "0", "32767", "-0.0100", "1e-20", "123456789", "12/31/9999 23:59:59", "x", "--; DROP TABLE x;",
                makeBlob(std::string_view("\0\xFF'", 3), "bin"), "%s $1 ?", "{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}",
                "0", "0"}});
    setIndices(*types, {{"PrimaryKey", {"ID"}, true, true}, {"When", {"-When", "Name"}}, {"Names", {"Name"}, true}});
    auto children = makeTable(
        "Children", {{"Nr", "Long Integer", true}, {"Of", "Long Integer"}}, {{"1", "1"}, {"2", "-3"}, {"3", null}});
    setIndices(*children, {{"When", {"Of"}}, {"PrimaryKey", {"Nr"}, true, true}});
    auto file = makeFile("/nowhere/types.mdb", std::move(children), std::move(types));
    setRelations(*file, {{"Parents", "Children", "All types", {{"Of", "ID"}}, true, false}});
    return file;
}

void expectSameRows(
    const std::string& table, const std::vector<std::string>& actual, const std::vector<std::string>& expected)
{
    EXPECT_EQ(actual.size(), expected.size()) << table;
    for (std::size_t r = 0; r < std::min(actual.size(), expected.size()); ++r)
        ASSERT_EQ(actual[r], expected[r]) << table;
}

using Start = std::unique_ptr<Server> (*)();

void check(Start start, const TAdmMDBFile& source, const Refused& refused)
{
    const auto server = start();
    if (!server) GTEST_SKIP() << "not installed";
    const auto file = fileWithout(source, refused);
    const TempFolder folder;
    ExportOptions options;
    options.fileType = ExportFileType::SQL;
    options.sqlDialect = server->type();
    options.isSingleFile = true;
    options.path = folder.path("script.sql");
    options.includeForeignKeys = !refused.foreignKeys;
    const auto outcome = runWriter(exportSQLThread, *file, options);
    ASSERT_EQ(outcome.successTableCount, static_cast<int>(file->tables().size()));
    for (int run = 1; run <= 2; ++run) { // the second time the tables exist
        const auto result = server->runScript(options.path);
        ASSERT_EQ(result.status, 0) << "run " << run << ": " << result.out << result.err;
    }
    for (const auto& table : file->tables())
        expectSameRows(table->name(), rowsOnServer(*server, *table), rowsInModel(server->type(), *table));
}

void checkCorpus(Start start, const Refused& refused)
{
    TAdmMDBFile file;
    file.setFullPath(VELLUMO_SOURCE_DIR "/../shared/corpus/nwind-jet3.mdb");
    if (!file.open()) GTEST_SKIP() << "no corpus here";
    check(start, file, refused);
}

TEST(ScriptsOnSQLite, AllTypes) { check(startSQLite, *makeAllTypes(), {{"Replication ID"}}); }
TEST(ScriptsOnSQLite, SampleDatabase) { check(startSQLite, DemoFile().file(), {{"Replication ID"}}); }
TEST(ScriptsOnSQLite, RealDatabase) { checkCorpus(startSQLite, {}); }

TEST(ScriptsOnMariaDB, AllTypes)
{
    check(startMariaDB, *makeAllTypes(), {.types = {"OLE", "Binary", "Replication ID"}, .beyondBasicPlane = true});
}
TEST(ScriptsOnMariaDB, SampleDatabase)
{
    check(startMariaDB, DemoFile().file(),
        {.types = {"OLE", "Replication ID"}, .foreignKeys = true, .beyondBasicPlane = true});
}
TEST(ScriptsOnMariaDB, RealDatabase) { checkCorpus(startMariaDB, {.types = {"OLE"}, .foreignKeys = true}); }

TEST(ScriptsOnPostgreSQL, AllTypes) { check(startPostgreSQL, *makeAllTypes(), {{"OLE"}}); }
TEST(ScriptsOnPostgreSQL, SampleDatabase) { check(startPostgreSQL, DemoFile().file(), {{"OLE"}}); }
TEST(ScriptsOnPostgreSQL, RealDatabase) { checkCorpus(startPostgreSQL, {{"OLE"}}); }

} // namespace
} // namespace vellumo::test
