// SPDX-License-Identifier: MIT
#include "cli/ExportSettings.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

ExportSettings settingsFor(const char* format, void (*change)(ExportSettings&))
{
    ExportSettings settings;
    settings.format = format;
    settings.to = "/out";
    change(settings);
    return settings;
}

TEST(ExportSettings, ComplainsAboutWhatDoesNotApply)
{
    using S = ExportSettings;
    using enum ExportOption;
    const struct {
        const char* format;
        void (*change)(S&);
        const char* complaint; // "" for none
    } cases[] = {
        {"csv", [](S&) {}, ""},
        {"csv", [](S& s) { s.to.clear(); }, "--to must not be empty."},
        {"csv", [](S& s) { s.to = "-"; }, "--to - needs one --table with csv."},
        {"csv", [](S& s) { s.to = "-", s.tables = {"A"}; }, ""},
        {"sqlite", [](S& s) { s.to = "-"; }, ""},
        {"csv", [](S& s) { s.choice.sort = "A"; }, "--columns, --search and --sort need one --table."},
        {"csv",
            [](S& s) {
                s.choice.columns = {"A"}, s.tables = {"A", "B"};
            },
            "--columns, --search and --sort need one --table."},
        {"csv", [](S& s) { s.choice.search = "a", s.tables = {"A"}; }, ""},
        {"csv", [](S& s) { s.isSingleFile = true; }, "--single-file does not apply to csv."},
        {"xls", [](S& s) { s.isSingleFile = s.switched[Header] = true; }, ""},
        {"sqlite", [](S& s) { s.isSingleFile = true; }, ""},
        {"sql", [](S& s) { s.switched[Header] = true; }, "--no-header does not apply to sql."},
        {"csv", [](S& s) { s.fieldDelimiter = "semicolon"; }, ""},
        {"csv", [](S& s) { s.fieldDelimiter = "tab"; }, "--field-delimiter tab does not apply to csv."},
        {"txt", [](S& s) { s.fieldDelimiter = "space"; }, ""},
        {"xml", [](S& s) { s.fieldDelimiter = "comma"; }, "--field-delimiter does not apply to xml."},
        {"xml", [](S& s) { s.recordDelimiter = "crlf"; }, "--record-delimiter does not apply to xml."},
        {"xml", [](S& s) { s.decimalSymbol = s.encoding = "ascii"; }, ""},
        {"csv", [](S& s) { s.decimalSymbol = "\xFF"; }, "An argument is not valid UTF-8."},
        {"csv", [](S& s) { s.encoding = "klingon"; }, "Unknown encoding: klingon"},
        {"sql", [](S& s) { s.encoding = "UTF-8"; }, "--encoding does not apply to sql."},
        {"sql", [](S& s) { s.schema = "s"; }, "--schema does not apply to mysql."},
        {"sql", [](S& s) { s.schema = "s", s.dialect = "oracle"; }, ""},
        {"sql", [](S& s) { s.schema = "s", s.dialect = "sqlite"; }, "--schema does not apply to sqlite."},
        {"sqlite", [](S& s) { s.dialect = "sqlite"; }, "--dialect does not apply to sqlite."},
        {"sql", [](S& s) { s.switched[Structure] = s.switched[Indexes] = true; }, ""},
        {"sql", [](S& s) { s.switched[Structure] = s.switched[Data] = true; },
            "Neither structure nor data is to be exported."},
        {"sqlite", [](S& s) { s.switched[Structure] = true; }, "--no-structure does not apply to sqlite."},
        {"sqlite", [](S& s) { s.switched[ForeignKeys] = s.switched[Indexes] = s.switched[Data] = true; }, ""},
        {"csv", [](S& s) { s.switched[Data] = true; }, "--no-data does not apply to csv."},
        {"csv", [](S& s) { s.switched[Exact] = s.switched[GuardFormulas] = true, s.objects = "o"; }, ""},
        {"csv", [](S& s) { s.switched[Exact] = true, s.decimalSymbol = ","; },
            "--decimal-symbol does not apply to --exact."},
        {"csv", [](S& s) { s.switched[GuardFormulas] = true; }, "--guard-formulas needs --exact."},
        {"xml", [](S& s) { s.objects = "o"; }, "--objects needs --exact."},
        {"jsonl", [](S& s) { s.objects = "o"; }, ""},
        {"jsonl", [](S& s) { s.objects = ""; }, "--objects must not be empty."},
        {"jsonl", [](S& s) { s.switched[ByteOrderMark] = true; }, "--bom does not apply to jsonl."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(complaintAbout(settingsFor(c.format, c.change)).value_or(""), c.complaint) << c.format;
}

ExportOptions asked(const char* format, void (*change)(ExportSettings&))
{
    return optionsFrom(settingsFor(format, change));
}

TEST(ExportSettings, BecomeOptions)
{
    using S = ExportSettings;
    using enum ExportOption;
    auto options = asked("csv", [](S&) {});
    EXPECT_TRUE(!options.isSingleFile && options.includeColumnHeader && options.encoding == 4);
    EXPECT_EQ(options.path, "/out");

    options = asked("csv", [](S& s) { s.to = "-"; });
    EXPECT_TRUE(options.isSingleFile);
    EXPECT_EQ(options.path, "/dev/stdout");

    options = asked("csv", [](S& s) { s.fieldDelimiter = "semicolon"; });
    EXPECT_EQ(options.decimalSymbol, ",");
    options = asked("csv", [](S& s) { s.fieldDelimiter = "semicolon", s.decimalSymbol = ""; });
    EXPECT_EQ(options.decimalSymbol, "");
    options = asked("txt", [](S& s) {
        s.fieldDelimiter = "space", s.recordDelimiter = "crlf", s.encoding = "cp1252", s.switched[Header] = true;
    });
    EXPECT_EQ(options.fieldDelimiter, FieldDelimiter::Space);
    EXPECT_EQ(options.recordDelimiter, RecordDelimiter::CRLF);
    EXPECT_TRUE(options.encoding == 12 && !options.includeColumnHeader);

    options = asked("sql", [](S& s) { s.dialect = "sqlserver", s.schema = "dbo", s.switched[DropTable] = true; });
    EXPECT_EQ(options.sqlDialect, SQLDialect::SQLServer);
    EXPECT_EQ(options.schemaName, "dbo");
    EXPECT_TRUE(!options.isSingleFile && !options.includeDropTable && options.includeForeignKeys
        && options.includeIndexes && options.exportStructure && options.exportData);
    options = asked("sql", [](S& s) { s.isSingleFile = s.switched[Structure] = true; });
    EXPECT_TRUE(options.isSingleFile && !options.exportStructure && options.exportData);
    options = asked("sqlite", [](S& s) { s.switched[Data] = s.switched[Indexes] = s.switched[ForeignKeys] = true; });
    EXPECT_TRUE(options.isSingleFile && options.exportStructure && !options.exportData && !options.includeIndexes
        && !options.includeForeignKeys);
    EXPECT_EQ(options.path, "/out");
}

} // namespace
} // namespace vellumo
