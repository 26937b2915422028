// SPDX-License-Identifier: MIT
#include "export/ExportFormat.h"
#include "export/ExportJob.h"
#include "export/exact/ExactCells.h"
#include "export/exact/ExactDate.h"
#include "servers/Server.h"
#include "support/DemoFile.h"
#include "support/ExportFakes.h"
#include "support/ModelBuilder.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Exact exports of whole databases are loaded by the servers that they are made for, and every cell is asked for again.
namespace vellumo::test {
namespace {

namespace fs = std::filesystem;

ExportReport exportExact(const TAdmMDBFile& file, ExportFileType type, ServerType dialect, const std::string& path)
{
    ExportOptions options;
    options.fileType = type;
    options.sqlDialect = dialect;
    options.isSingleFile = true;
    options.isExact = true;
    options.path = path;
    std::vector<ExportEntry> entries;
    for (const auto& table : file.tables())
        entries.push_back(ExportEntry::exportEntryWithTableName(table->name(), type));
    FakeSystemLog systemLog;
    const std::atomic<bool> stop = false;
    ExportJob job(file, entries, options, stop, {[](std::size_t) {}, systemLog});
    exportFormat(type).writer(job);
    return job.report();
}

std::string unhex(std::string_view hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    return bytes;
}

// What the server shows of a column, as hexadecimal text: numbers with all their digits.
std::string shown(const Server& server, ExactKind kind, const std::string& column)
{
    const bool isReal = kind == ExactKind::Single || kind == ExactKind::Double;
    const bool areBytes = kind == ExactKind::Binary || kind == ExactKind::Object;
    switch (server.type()) {
    case ServerType::MySQL: return server.hexOf(isReal ? "CAST(" + column + " AS DOUBLE)" : column, "");
    case ServerType::PostgreSQL: return server.hexOf(isReal ? column + "::float8" : column, areBytes ? "Binary" : "");
    default: break;
    }
    // Its bits: as a text the shell shows some numbers a little wrong.
    if (isReal) return "CASE WHEN " + column + " IS NULL THEN '-' ELSE hex(ieee754_to_blob(" + column + ")) END";
    return server.hexOf(column, "");
}

std::string withoutEndZeros(std::string text)
{
    if (text.find('.') == text.npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

// A value in the one form that it has wherever it comes from.
std::string canonical(ExactKind kind, std::string text)
{
    switch (kind) {
    case ExactKind::Boolean: return text == "1" || text == "true" ? "yes" : "no";
    case ExactKind::Single:
    case ExactKind::Double: return fmt::format("{:a}", std::strtod(text.c_str(), nullptr));
    case ExactKind::Decimal:
    case ExactKind::Date: return withoutEndZeros(std::move(text));
    case ExactKind::Guid:
        for (auto& c : text)
            c = static_cast<char>(std::toupper(c));
        return text;
    default: return text;
    }
}

std::string valueOf(const ExactCell& cell)
{
    std::string value;
    switch (cell.kind) {
    case ExactKind::Date: appendISODate(cell, ' ', value); break;
    case ExactKind::Single: value = fmt::format("{}", cell.real()); break;
    case ExactKind::Guid: value = cell.guid(); break;
    case ExactKind::Binary: cell.appendBytes(value); break;
    case ExactKind::Object:
        return {reinterpret_cast<const char*>(cell.object->data().data()), cell.object->data().size()};
    default: value = cell.text;
    }
    return canonical(cell.kind, std::move(value));
}

using Rows = std::vector<std::vector<std::string>>;
constexpr const char* nullText = "(null)";

Rows rowsInModel(const TAdmMDBTable& table)
{
    Rows rows;
    for (const auto& group : table.rows().groups())
        for (std::uint32_t row = 0; row < group.rowCount; ++row) {
            rows.emplace_back();
            for (std::size_t c = 0; c < table.columns().size(); ++c) {
                ExactCells cells(table.columns()[c]->type(), group, c);
                const auto cell = cells.at(row);
                rows.back().push_back(cell.hasValue() ? valueOf(cell) : nullText);
            }
        }
    std::ranges::sort(rows);
    return rows;
}

double ofBits(std::string bytes)
{
    double value = 0;
    std::ranges::reverse(bytes);
    if (bytes.size() == sizeof value) std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

// A value as `shown`.
std::string readBack(const Server& server, ExactKind kind, std::string_view hex)
{
    const bool isReal = kind == ExactKind::Single || kind == ExactKind::Double;
    if (isReal && server.type() == ServerType::SQLite) return fmt::format("{:a}", ofBits(unhex(hex)));
    return canonical(kind, unhex(hex));
}

Rows rowsOnServer(Server& server, const TAdmMDBTable& table)
{
    std::vector<std::string> expressions;
    for (const auto& column : table.columns())
        expressions.push_back(shown(server, exactKind(column->type()), server.quoted(column->name())));
    const auto result =
        server.query("SELECT " + server.concatenation(expressions) + " FROM " + server.quoted(table.name()));
    EXPECT_EQ(result.status, 0) << result.err;
    Rows rows;
    for (std::size_t start = 0; start < result.out.size();) {
        const auto end = result.out.find('\n', start);
        rows.emplace_back();
        for (std::size_t c = 0, at = start; c < table.columns().size(); ++c) {
            const auto stop = std::min(result.out.find(',', at), end);
            const auto text = result.out.substr(at, stop - at);
            rows.back().push_back(
                text == "-" ? nullText : readBack(server, exactKind(table.columns()[c]->type()), text));
            at = stop + 1;
        }
        start = end + 1;
    }
    std::ranges::sort(rows);
    return rows;
}

// Returns how many cells were compared.
std::size_t expectSameCells(Server& server, const TAdmMDBFile& file, const std::string& name)
{
    std::size_t count = 0;
    for (const auto& table : file.tables()) {
        const auto wanted = rowsInModel(*table);
        const auto found = rowsOnServer(server, *table);
        EXPECT_EQ(found.size(), wanted.size()) << name << ": " << table->name();
        for (std::size_t row = 0; row < std::min(found.size(), wanted.size()); ++row) {
            count += wanted[row].size();
            if (found[row] == wanted[row]) continue;
            ADD_FAILURE() << name << ": " << table->name() << ": " << testing::PrintToString(found[row]) << "\nwanted "
                          << testing::PrintToString(wanted[row]);
            break;
        }
    }
    return count;
}

std::vector<std::string> texts(const ExportReport& report)
{
    std::vector<std::string> lines;
    for (const auto& failure : report.failures)
        lines.push_back(failureText(failure));
    for (const auto& finding : report.findings.all())
        lines.push_back(findingText(finding));
    return lines;
}

using Start = std::unique_ptr<Server> (*)();

// Loads the script twice, since tables may be there already. The server itself refuses what breaks a rule.
std::size_t load(Server& server, const TAdmMDBFile& file, const std::string& name)
{
    const TempFolder folder;
    const auto path = folder.path("script.sql");
    const auto report = exportExact(file, ExportFileType::SQL, server.type(), path);
    EXPECT_EQ(report.doneCount(), file.tables().size()) << name << testing::PrintToString(texts(report));
    for (int run = 1; run <= 2; ++run) {
        const auto result = server.runScript(path);
        EXPECT_EQ(result.status, 0) << name << ", run " << run << ": " << result.out << result.err;
        if (result.status != 0) return 0;
    }
    const bool hasCheck = server.type() == ServerType::SQLite;
    EXPECT_EQ(hasCheck ? server.query("PRAGMA foreign_key_check").out : "", "") << name;
    return expectSameCells(server, file, name);
}

struct CorpusFile {
    std::string name;
    std::unique_ptr<TAdmMDBFile> file;
};

std::vector<CorpusFile> corpus()
{
    std::vector<CorpusFile> files;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(VELLUMO_SOURCE_DIR "/../shared/corpus", error)) {
        auto file = std::make_unique<TAdmMDBFile>();
        file->setFullPath(entry.path().string());
        OpenOptions options;
        options.newerFormats = true;
        if (entry.path().filename().string().starts_with("encrypted")) options.password = "Test123";
        if (entry.path().extension() != ".md" && file->open(options) && !file->tables().empty())
            files.push_back({entry.path().filename(), std::move(file)});
    }
    return files;
}

// Values that writers, servers and their tools have trouble with.
std::unique_ptr<TAdmMDBFile> makeTrouble()
{
    auto types = makeTable("All types",
        {{"ID", "Long Integer", true}, {"Flag", "Boolean"}, {"Small", "Byte"}, {"Short", "Integer"},
            {"Money", "Currency"}, {"Single", "Single"}, {"Double", "Double"}, {"When", "DateTime"},
            {"Bytes", "Binary"}, {"Name", "Text", false, {}, 60, "It's a \\ name"}, {"Object", "OLE"},
            {"Memo", "Memo/Hyperlink"}, {"Guid", "Replication ID"}},
        {{"1", "1", "255", "-32768", "922337203685.4775", "3.4028235e+38", "1.7976931348623157e+308",
             "05/03/2014 21:07:09", "00ff27", "O'Hara \\ \"q\" `b`", makeBlob("text", "txt"), "two\r\nlines\tand é 😀\r",
             "{01234567-89AB-CDEF-0123-456789ABCDEF}"},
            {"2", "0", null, null, null, null, null, null, null, null, null, null, null},
            {"-3", "0", "0", "32767", "-0.0100", "1e-20", "0.1428571428571428", "12/31/9999 23:59:59", "00",
                "\\'; DROP TABLE x; --", makeBlob(std::string_view("\0\xFF'", 3), "bin"),
                "GO\n\\.\n.quit\n/\n$(x) &y\x1A", "{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"},
            {"4", "1", "7", "0", "0.0001", "0.1", "4.9406564584124654e-324", "01/01/0100 00:00:00", null, "'a\\'", null,
                std::string(70000, 'x') + "\r\n'", null},
            {"5", "0", "0", "0", "0.0000", "-1e-45", "-1.0552163342331236e-305", null, null, "b", null, null, null}});
    setIndices(*types,
        {{"PrimaryKey", {"ID"}, true, true}, {"When", {"-When", "Name"}}, {"Names", {"Name"}, true},
            {"Memos", {"Memo"}}});
    auto children = makeTable(
        "Children", {{"Nr", "Long Integer", true}, {"Of", "Long Integer"}}, {{"1", "1"}, {"2", "-3"}, {"3", null}});
    setIndices(*children, {{"When", {"Of"}}, {"PrimaryKey", {"Nr"}, true, true}});
    auto file = makeFile("/nowhere/types.mdb", std::move(children), std::move(types));
    setRelations(*file, {{"Parents", "Children", "All types", {{"Of", "ID"}}, true, false}});
    return file;
}

void checkAll(Start start)
{
    const auto server = start();
    if (!server) GTEST_SKIP() << "not installed";
    std::size_t cells = load(*server, *makeTrouble(), "trouble") + load(*server, DemoFile().file(), "demo");
    EXPECT_GT(cells, 0U);
    for (const auto& [name, file] : corpus())
        cells += load(server->type() == ServerType::SQLite ? *start() : *server, *file, name);
    testing::Test::RecordProperty("cells", static_cast<int>(cells));
}

TEST(ExactOnSQLite, EveryCellArrives) { checkAll(startSQLite); }
TEST(ExactOnMariaDB, EveryCellArrives) { checkAll(startMariaDB); }
TEST(ExactOnPostgreSQL, EveryCellArrives) { checkAll(startPostgreSQL); }

// What a database says of its rules: one of these a line, in any order.
//   Table.Column not null
//   Table(Column,Column) unique
//   Child(Column)Parent(Column)UD, with U and D for the changes that are passed on, "-" for those that are not
//   Table next 5
std::vector<std::string> rulesInModel(const TAdmMDBFile& file)
{
    std::vector<std::string> rules;
    for (const auto& table : file.tables()) {
        std::int64_t last = table->lastAutoNumber();
        for (std::size_t c = 0; c < table->columns().size(); ++c) {
            const auto& column = *table->columns()[c];
            const bool isNumbered = column.isAutoNumber() && column.type() == ColumnType::LongInteger;
            if (column.isPrimaryKey() || column.required() == true || isNumbered)
                rules.push_back(table->name() + '.' + column.name() + " not null");
            for (std::size_t row = 0; isNumbered && row < table->rows().rowCount(); ++row)
                last = std::max<std::int64_t>(last, std::stoll(std::string(table->rows().text(row, c))));
            if (isNumbered) rules.push_back(table->name() + " next " + std::to_string(last + 1));
        }
        for (const auto& index : table->indices()) {
            std::vector<std::string> names;
            for (const auto& key : index->keys())
                names.push_back(key.name);
            if (index->isUnique()) rules.push_back(table->name() + '(' + joined(names, ",") + ") unique");
        }
    }
    for (const auto& relation : file.allForeignKeys())
        if (relation->isEnforced() && file.findTable(relation->referencingTable()) != nullptr)
            rules.push_back(relation->referencingTable() + '(' + joined(relation->referencingColumns(), ",") + ')'
                + relation->referencedTable() + '(' + joined(relation->referencedColumns(), ",") + ')'
                + (relation->onUpdateCascade() ? 'U' : '-') + (relation->onDeleteCascade() ? 'D' : '-'));
    std::ranges::sort(rules);
    rules.erase(std::unique(rules.begin(), rules.end()), rules.end());
    return rules;
}

constexpr const char* rulesInMariaDB = R"(
SELECT CONCAT(table_name, '.', column_name, ' not null') FROM information_schema.columns
    WHERE table_schema = DATABASE() AND is_nullable = 'NO'
UNION SELECT CONCAT(table_name, '(', GROUP_CONCAT(column_name ORDER BY seq_in_index), ') unique')
    FROM information_schema.statistics WHERE table_schema = DATABASE() AND non_unique = 0 GROUP BY table_name, index_name
UNION SELECT CONCAT(k.table_name, '(', GROUP_CONCAT(k.column_name ORDER BY ordinal_position), ')',
        k.referenced_table_name, '(', GROUP_CONCAT(k.referenced_column_name ORDER BY ordinal_position), ')',
        IF(r.update_rule = 'CASCADE', 'U', '-'), IF(r.delete_rule = 'CASCADE', 'D', '-'))
    FROM information_schema.key_column_usage k JOIN information_schema.referential_constraints r
        ON r.constraint_name = k.constraint_name AND r.constraint_schema = k.table_schema
    WHERE k.table_schema = DATABASE() GROUP BY k.constraint_name
UNION SELECT CONCAT(table_name, ' next ', auto_increment) FROM information_schema.tables
    WHERE table_schema = DATABASE() AND auto_increment IS NOT NULL)";

constexpr const char* rulesInPostgreSQL = R"(
SELECT table_name || '.' || column_name || ' not null' FROM information_schema.columns
    WHERE table_schema = 'public' AND is_nullable = 'NO'
UNION SELECT t.relname || '(' || string_agg(a.attname, ',' ORDER BY k.place) || ') unique'
    FROM pg_index i JOIN pg_class t ON t.oid = i.indrelid CROSS JOIN unnest(i.indkey) WITH ORDINALITY k(number, place)
        JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = k.number
    WHERE i.indisunique AND t.relnamespace = 'public'::regnamespace GROUP BY i.indexrelid, t.relname
UNION SELECT c.relname || '(' || string_agg(a.attname, ',' ORDER BY k.place) || ')' || p.relname || '('
        || string_agg(b.attname, ',' ORDER BY k.place) || ')' || replace(replace(f.confupdtype::text, 'a', '-'), 'c', 'U')
        || replace(replace(f.confdeltype::text, 'a', '-'), 'c', 'D')
    FROM pg_constraint f JOIN pg_class c ON c.oid = f.conrelid JOIN pg_class p ON p.oid = f.confrelid
        CROSS JOIN unnest(f.conkey, f.confkey) WITH ORDINALITY k(own, other, place)
        JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum = k.own
        JOIN pg_attribute b ON b.attrelid = p.oid AND b.attnum = k.other
    WHERE f.contype = 'f' GROUP BY f.oid, c.relname, p.relname, f.confupdtype, f.confdeltype
UNION SELECT table_name || ' next ' || nextval(pg_get_serial_sequence(quote_ident(table_name), column_name))
    FROM information_schema.columns WHERE table_schema = 'public' AND is_identity = 'YES')";

void expectSameRules(Start start, const char* statement)
{
    for (const auto& name : {"demo", "indexes-jet4.mdb"}) {
        const auto server = start();
        if (!server) GTEST_SKIP() << "not installed";
        const DemoFile demo;
        TAdmMDBFile real;
        real.setFullPath(std::string(VELLUMO_SOURCE_DIR "/../shared/corpus/") + name);
        const bool isDemo = name == std::string_view("demo");
        if (!isDemo && !real.open()) continue; // where the real files are not at hand
        const auto& file = isDemo ? demo.file() : real;
        load(*server, file, name);
        const auto result = server->query(statement);
        EXPECT_EQ(result.status, 0) << result.err;
        std::vector<std::string> rules;
        for (std::size_t begin = 0, end = 0; (end = result.out.find('\n', begin)) != std::string::npos; begin = end + 1)
            rules.push_back(result.out.substr(begin, end - begin));
        std::ranges::sort(rules);
        EXPECT_THAT(rules, testing::ElementsAreArray(rulesInModel(file))) << name;
    }
}

TEST(ExactOnMariaDB, RulesAreThoseOfTheFile) { expectSameRules(startMariaDB, rulesInMariaDB); }
TEST(ExactOnPostgreSQL, RulesAreThoseOfTheFile) { expectSameRules(startPostgreSQL, rulesInPostgreSQL); }

// The file, and not a script that the shell makes one of.
TEST(ExactOnSQLite, FileHoldsEveryCell)
{
    const auto check = [](const TAdmMDBFile& source, const std::string& name) {
        const TempFolder folder;
        const auto report = exportExact(source, ExportFileType::SQLite, ServerType::SQLite, folder.path("out.sqlite"));
        EXPECT_EQ(report.doneCount(), source.tables().size()) << name << testing::PrintToString(texts(report));
        const auto server = openSQLite(folder.path("out.sqlite"));
        if (!server) return;
        EXPECT_EQ(server->query("PRAGMA foreign_key_check; PRAGMA integrity_check").out, "ok\n") << name;
        expectSameCells(*server, source, name);
    };
    check(*makeTrouble(), "trouble");
    check(DemoFile().file(), "demo");
    for (const auto& [name, file] : corpus())
        check(*file, name);
}

} // namespace
} // namespace vellumo::test
