// SPDX-License-Identifier: MIT
#include "export/ClassicFindings.h"
#include "export/RelationFindings.h"

#include "export/ExportFormat.h"
#include "support/ModelBuilder.h"
#include "text/TextEncoding.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using enum ExportFileType;
constexpr auto MySQL = SQLDialect::MySQL;
constexpr auto PostgreSQL = SQLDialect::PostgreSQL;
constexpr auto Oracle = SQLDialect::Oracle;
constexpr auto SQLServer = SQLDialect::SQLServer;
using testing::ElementsAre;
using testing::IsEmpty;

ExportOptions to(ExportFileType type, SQLDialect dialect = MySQL)
{
    auto options = defaultOptions(exportFormat(type));
    options.sqlDialect = dialect;
    return options;
}

template <typename Change> ExportOptions with(ExportOptions options, Change change)
{
    change(options);
    return options;
}

// What is found of the tables of a file; each counts only the traits that its target asks for.
std::vector<std::string> found(const TAdmMDBFile& file, const ExportOptions& options)
{
    ExportFindings findings;
    std::vector<std::string> names;
    for (const auto& table : file.tables()) {
        names.push_back(table->name());
        addClassicFindings(*table, scanTable(*table, false, classicTraits(options)), options, findings);
    }
    addClassicFindings(file, names, options, findings);
    const auto scan = [&](const TAdmMDBForeignKey& relation) { return scanRelation(file, relation, false); };
    addBrokenRelations(file, names, options, scan, findings);
    return findingLines(findings.all());
}

TEST(ClassicFindings, TellWhatIsLostAndNothingElse)
{
    const auto symbol = [](const char* text) { return [=](ExportOptions& options) { options.decimalSymbol = text; }; };
    const auto encoding = [](std::uint32_t id) { return [=](ExportOptions& options) { options.encoding = id; }; };
    const auto noStructure = [](ExportOptions& options) { options.exportStructure = false; };
    const auto jpeg = makeBlob("\xFF\xD8", "jpg");
    const auto plain = makeBlob("plain", "txt");
    const auto files = makeBlob("plain", "txt");
    files->addFurtherFile(plain);
    const std::string objectRefused = "T.C: 1 object has a form that % does not take.";
    const std::string rounded = "T.C: 1 number is rounded by %.";
    const std::string numberRefused = "T.C: 1 number has a size or form that % does not take.";
    const std::string noType = "T.C: % has no type for this column, so the table is not created.";
    const std::string digits = "T.C: 1 value comes as hexadecimal digits instead of bytes.";
    const std::string asText = "T.C: 1 value comes as a text.";
    const std::string valueRefused = "T.C: 1 value has a form that % does not take.";
    const std::string backslash = "T.C: In 1 text every backslash comes twice.";
    const struct {
        const char* target; // as the line names it
        ExportOptions options;
        const char* type;
        Cell lost;
        Cell kept;
        std::string line; // % stands for the target
    } cases[] = {
        {"PostgreSQL", to(SQL, PostgreSQL), "OLE", plain, null, objectRefused},
        {"Oracle", to(SQL, Oracle), "OLE", plain, null, objectRefused},
        {"SQL Server", to(SQL, SQLServer), "OLE", plain, null, objectRefused},
        {"MySQL", to(SQL), "OLE", jpeg, plain, objectRefused},
        {"MySQL", to(SQL), "OLE", makeBlob(std::string(65'536, 'x'), "txt"), makeBlob(std::string(65'535, 'x'), "txt"),
            objectRefused},
        {"CSV", to(CSV), "OLE", plain, null, "T.C: 1 object is left out."},
        {"XML", to(XML), "OLE", plain, makeBlob("x", "jpg", {ObjectState::Damaged, "", ""}),
            "T.C: 1 object is left out."},
        {"XLS", to(XLS), "OLE", plain, null, "T.C: 1 object is left out."},
        {"PostgreSQL", to(SQL, PostgreSQL), "Text", "a\\b", "a/b", backslash},
        {"Oracle", to(SQL, Oracle), "Memo/Hyperlink", "\\", "/", backslash},
        {"SQL Server", to(SQL, SQLServer), "Text", "a\\b", "a/b", backslash},
        {"SQLite", to(SQL, ServerType::SQLite), "Text", "a\\b", "a/b", backslash},
        {"SQLite", to(ExportFileType::SQLite), "Text", "a\\b", "a/b", backslash},
        {"MySQL", to(SQL), "Text", "a\r\nb", "a\n\\b", "T.C: In 1 text, line breaks CR LF became LF."},
        {"XML", to(XML), "Text", "a\rb", "a\nb", "T.C: In 1 text, line breaks CR LF became LF."},
        {"MySQL", to(SQL), "Memo/Hyperlink", std::string(65'536, 'x'), std::string(65'535, 'x'),
            "T.C: 1 text is longer than MySQL takes it."},
        {"XLS", to(XLS), "Memo/Hyperlink", std::string(32'741, 'x'), std::string(32'740, 'x'),
            "T.C: 1 text is too long for a cell, so the table fails."},
        {"PostgreSQL", to(SQL, PostgreSQL), "Binary", "00ff", null, digits},
        {"SQLite", to(ExportFileType::SQLite), "Binary", "00ff", null, digits},
        {"MySQL", with(to(SQL), noStructure), "Replication ID", "{A}", null, valueRefused},
        {"SQLite", to(SQL, ServerType::SQLite), "Replication ID", "{A}", null, valueRefused},
        {"MySQL", to(SQL), "Currency", "1234567.8912", "-123.4500", rounded},
        {"MySQL", to(SQL), "Double", "0.1234567", "123456000", rounded},
        {"MySQL", to(SQL), "Double", "1e+39", "1e+38", numberRefused},
        {"MySQL", to(SQL), "Numeric", "2.7183", "3.00", rounded},
        {"SQL Server", to(SQL, SQLServer), "Numeric", "0.5", "5", rounded},
        {"MySQL", to(SQL), "Numeric", "10000000000", "9999999999", numberRefused},
        {"PostgreSQL", to(SQL, PostgreSQL), "Currency", "1.2340", "1.2300", rounded},
        {"PostgreSQL", to(SQL, PostgreSQL), "Numeric", "10000000000000", "9999999999999", numberRefused},
        {"Oracle", to(SQL, Oracle), "Currency", "1.0001", "1.0100", rounded},
        {"XLS", to(XLS), "Numeric", "1234567890123456", "123456789012345000", rounded},
        {"SQLite", to(ExportFileType::SQLite), "Double", "-inf", "0.5", numberRefused},
        {"SQL Server", to(SQL, SQLServer), "DateTime", "12/31/1899 00:00:00", "01/01/1900 00:00:00",
            "T.C: 1 date is outside of the years that SQL Server holds."},
        {"SQL Server", to(SQL, SQLServer), "DateTime", "06/07/2079 00:00:00", "06/06/2079 23:59:00",
            "T.C: 1 date is outside of the years that SQL Server holds."},
        {"SQL Server", to(SQL, SQLServer), "DateTime", "01/01/2000 10:00:30", "01/01/2000 10:30:00",
            "T.C: 1 date loses its seconds."},
        {"XLS", to(XLS), "DateTime", "01/01/2000 10:00:30", null, asText},
        {"XLS", to(XLS), "Boolean", "1", null, asText},
        {"CSV", to(CSV), "DateTime", noted("01/01/2000 10:00:30", 250), "01/01/2000 10:00:30",
            "T.C: 1 date loses its fraction of a second."},
        {"XLS", to(XLS), "BigInt", "9007199254740993", null, asText},
        {"MySQL", to(SQL), "Attachment", files, plain,
            "T.C: Of a cell with several files the first is written, 1 is left out."},
        {"SQLite", to(ExportFileType::SQLite), "DateTime", "01/01/2000 10:00:30", null, asText},
        {"XML", to(XML), "Text", "a&b", "a>b'\"", "T.C: 1 text makes the XML not well-formed."},
        {"XML", to(XML), "Text", "a\x01", "a\tb\n", "T.C: 1 text makes the XML not well-formed."},
        {"XML", with(to(XML), encoding(encodingISOLatin1)), "Text", "\u00E9", "e",
            "T: The XML does not say which encoding its letters are in."},
        {"CSV", with(to(CSV), encoding(encodingISOLatin1)), "Text", "\u0416\u0416\U0001F600", "\u00E9",
            "T: 2 letters are not in the encoding, so the table fails."},
        {"CSV", with(to(CSV), symbol(",")), "Single", "1.5", "2", "T.C: 1 number is parted by its decimal symbol."},
        {"CSV", with(to(CSV), symbol(",")), "Currency", "2.0000", null,
            "T.C: 1 number is parted by its decimal symbol."},
        {"PostgreSQL", with(to(SQL, PostgreSQL), symbol(",")), "Double", "1.5", "2", numberRefused},
    };
    for (const auto& c : cases) {
        auto line = c.line;
        if (const auto at = line.find('%'); at != std::string::npos) line.replace(at, 1, c.target);
        const auto name = std::string(c.target) + ": " + line;
        const auto lost = makeFile("/Shop.mdb", makeTable("T", {{"C", c.type}}, {{c.lost}, {null}}));
        EXPECT_THAT(found(*lost, c.options), ElementsAre(line)) << name;
        const auto kept = makeFile("/Shop.mdb", makeTable("T", {{"C", c.type}}, {{c.kept}, {null}}));
        EXPECT_THAT(found(*kept, c.options), IsEmpty()) << name;
    }
    const auto table = [](const char* type) { return makeFile("/Shop.mdb", makeTable("T", {{"C", type}})); };
    EXPECT_THAT(found(*table("Binary"), to(SQL)),
        ElementsAre("T.C: MySQL has no type for this column, so the table is not created."));
    EXPECT_THAT(found(*table("Replication ID"), to(SQL, SQLServer)),
        ElementsAre("T.C: SQL Server has no type for this column, so the table is not created."));
    EXPECT_THAT(found(*table("Binary"), with(to(SQL), noStructure)), IsEmpty());
}

TEST(ClassicFindings, TellOfNullsNamesAndWidths)
{
    const auto inColumn = [](std::optional<bool> allowsEmpty, const Cell& cell) {
        return makeFile("/Shop.mdb", makeTable("T", {{"C", "Text", false, allowsEmpty}}, {{cell}, {"x"}}));
    };
    EXPECT_THAT(found(*inColumn(false, null), to(SQL)), ElementsAre("T.C: 1 null becomes an empty text."));
    EXPECT_THAT(found(*inColumn(true, null), to(SQL)), IsEmpty());
    EXPECT_THAT(found(*inColumn(false, "y"), to(SQL)), IsEmpty());
    EXPECT_THAT(found(*inColumn(false, null), to(CSV)), IsEmpty());

    const auto named = [](const std::string& name, const ExportOptions& options) {
        return found(*makeFile("/Shop.mdb", makeTable("T", {{name, "Long Integer"}})), options);
    };
    const std::string umlauts = "\u00E4\u00E4\u00E4\u00E4\u00E4\u00E4\u00E4\u00E4"; // 8 letters, 16 bytes
    const auto long64 = umlauts + umlauts + umlauts + umlauts;                      // 32 letters, 64 bytes
    EXPECT_THAT(named(long64, to(SQL, PostgreSQL)), ElementsAre("T." + long64 + ": PostgreSQL cuts this name."));
    EXPECT_THAT(named(long64.substr(2) + "x", to(SQL, PostgreSQL)), IsEmpty());
    EXPECT_THAT(named(long64 + long64 + "x", to(SQL)),
        ElementsAre(testing::HasSubstr(": MySQL does not take this name, so the table is not created.")));
    EXPECT_THAT(named(long64 + long64, to(SQL)), IsEmpty());
    for (const auto* refused : {"C ", "\U0001F600"})
        EXPECT_THAT(named(refused, to(SQL)).size(), 1U) << refused;
    EXPECT_THAT(named("Unit Price", to(XML)), ElementsAre("T.Unit Price: The name makes the XML not well-formed."));
    EXPECT_THAT(named("Unit_Price-2.\u00C4", to(XML)), IsEmpty());

    // The widths of texts, in characters.
    const auto wide = [](std::size_t count, std::int32_t size, const ExportOptions& options) {
        std::vector<ColumnSpec> columns;
        for (std::size_t i = 0; i < count; ++i)
            columns.push_back({"C" + std::to_string(i), "Text", false, {}, size});
        return found(*makeFile("/Shop.mdb", makeTable("T", columns)), options);
    };
    EXPECT_THAT(wide(48, 50, to(SQL)), ElementsAre("T: The rows are too wide for MySQL, so the table is not created."));
    EXPECT_THAT(wide(40, 50, to(SQL)), IsEmpty());
    EXPECT_THAT(wide(64, 255, to(SQL)), IsEmpty());
    EXPECT_THAT(wide(65, 255, to(SQL)).size(), 1U);
    EXPECT_THAT(wide(48, 50, to(SQL, PostgreSQL)), IsEmpty());
}

TEST(ClassicFindings, TellOfRelationsAndOfTheEncoding)
{
    const auto relation = [](bool isEnforced, bool isCascade, const char* to = "A") {
        auto file = makeFile("/Shop.mdb", makeTable("A", {{"Id", "Text"}}), makeTable("B", {{"A", "Text"}}));
        setRelations(*file, {{"R", "B", to, {{"A", "Id"}}, isCascade, isCascade}});
        file->allForeignKeys()[0]->setIsEnforced(isEnforced);
        return file;
    };
    EXPECT_THAT(found(*relation(true, true), to(SQL)), IsEmpty());
    EXPECT_THAT(found(*relation(true, false), to(ExportFileType::SQLite)),
        ElementsAre("B.R: The relation will empty what refers to a changed record, where the database refuses the "
                    "change."));
    EXPECT_THAT(found(*relation(false, false), to(SQL, Oracle)),
        ElementsAre("B.R: The relation will be enforced, which the database does not do."));
    // What only letter case tells apart, MySQL does not.
    auto broken = makeFile("/Shop.mdb", makeTable("A", {{"Id", "Text"}}, {{"x"}}),
        makeTable("B", {{"A", "Text"}}, {{"x"}, {"X"}, {"y"}, {null}}));
    setRelations(*broken, {{"R", "B", "A", {{"A", "Id"}}, true, true}});
    EXPECT_THAT(
        found(*broken, to(SQL)), ElementsAre("B.R: 1 record refers to one that is not there, so the relation fails."));
    EXPECT_THAT(found(*broken, to(SQL, PostgreSQL)),
        ElementsAre("B.R: 2 records refer to ones that are not there, so the relation fails."));
    EXPECT_THAT(found(*broken, to(ExportFileType::SQLite)), IsEmpty());
    EXPECT_THAT(found(*relation(true, true, "C"), to(SQL)),
        ElementsAre("B.R: The relation refers to a table that is not exported."));
    const auto noKeys = with(to(SQL), [](ExportOptions& options) { options.includeForeignKeys = false; });
    EXPECT_THAT(found(*relation(false, false), noKeys), IsEmpty());
    EXPECT_THAT(found(*relation(false, false), to(CSV)), IsEmpty());

    const auto file = makeFile("/Shop.mdb", makeTable("A", {{"T", "Text"}}), makeTable("B", {{"T", "Text"}}));
    for (const auto& [encoding, isCut] : {std::pair{"UTF-16LE", true}, {"UTF-32", true}, {"windows-1252", false}}) {
        const auto options = with(
            to(CSV), [name = encoding](ExportOptions& changed) { changed.encoding = findTextEncoding(name).value(); });
        EXPECT_EQ(found(*file, options),
            isCut ? std::vector<std::string>{"Each text is written up to its first zero byte. This encoding has zero "
                                             "bytes in common letters, so the output will be cut."}
                  : std::vector<std::string>{})
            << encoding;
    }
}

TEST(ClassicFindings, SomeStayInTheExactStyle)
{
    const ExportFinding avoided{FindingKind::EmptyText, "T", "A", "", 1};
    const ExportFinding files{FindingKind::FilesLeftOut, "T", "F", "", 2};
    EXPECT_EQ(avoidedByExact({}), Avoided::None);
    EXPECT_EQ(avoidedByExact({avoided}), Avoided::All);
    EXPECT_EQ(avoidedByExact({avoided, files}), Avoided::Some);
    EXPECT_EQ(avoidedByExact({files}), Avoided::None);
}

} // namespace
} // namespace vellumo
