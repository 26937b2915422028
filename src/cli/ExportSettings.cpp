// SPDX-License-Identifier: MIT
#include "cli/ExportSettings.h"

#include "export/files/OutputFile.h"
#include "export/sql/SQLDialectFacts.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/TextEncoding.h"

#include <algorithm>

namespace vellumo {

namespace {

using Complaint = std::optional<std::string>;

constexpr ExportSwitch switches[] = {
    {ExportOption::Exact, "--exact", messageKey("Every value as the file holds it"), &ExportOptions::isExact, true},
    {ExportOption::ByteOrderMark, "--bom", messageKey("A byte-order mark in front"), &ExportOptions::hasByteOrderMark,
        true},
    {ExportOption::GuardFormulas, "--guard-formulas",
        messageKey("With --exact: an apostrophe in front of texts that look like formulas"),
        &ExportOptions::guardsFormulas, true},
    {ExportOption::Header, "--no-header", messageKey("No line of column names"), &ExportOptions::includeColumnHeader,
        false},
    {ExportOption::Structure, "--no-structure", messageKey("No table definitions"), &ExportOptions::exportStructure,
        false},
    {ExportOption::DropTable, "--no-drop-table", messageKey("No DROP TABLE"), &ExportOptions::includeDropTable, false},
    {ExportOption::ForeignKeys, "--no-foreign-keys", messageKey("No foreign keys"), &ExportOptions::includeForeignKeys,
        false},
    {ExportOption::Indexes, "--no-indexes", messageKey("No indexes"), &ExportOptions::includeIndexes, false},
    {ExportOption::Data, "--no-data", messageKey("No rows"), &ExportOptions::exportData, false},
};

// `name` is one of the names.
template <typename Delimiter>
Delimiter delimiterNamed(std::span<const DelimiterInfo<Delimiter>> infos, std::string_view name)
{
    return std::ranges::find(infos, name, &DelimiterInfo<Delimiter>::name)->delimiter;
}

const FormatInfo& formatOf(const ExportSettings& settings) { return *findExportFormat(settings.format); }

const SQLDialectFacts& dialectOf(const ExportSettings& settings)
{
    return settings.dialect ? *findSQLDialect(*settings.dialect) : sqlDialectFacts(ExportOptions().sqlDialect);
}

std::string doesNotApply(std::string_view option, std::string_view to)
{
    return localizedFormat("%@ does not apply to %@.", {option, to});
}

bool isGiven(const ExportSettings& settings, ExportOption option)
{
    const auto found = settings.switched.find(option);
    return found != settings.switched.end() && found->second;
}

std::string onlyWithExact(std::string_view option) { return localizedFormat("%@ needs --exact.", {option}); }

// The arguments that were given, by the option that they are for.
std::map<ExportOption, const char*> givenArguments(const ExportSettings& settings)
{
    std::map<ExportOption, const char*> given;
    const auto add = [&](const std::optional<std::string>& value, ExportOption option, const char* argument) {
        if (value) given[option] = argument;
    };
    add(settings.fieldDelimiter, ExportOption::FieldDelimiter, "--field-delimiter");
    add(settings.recordDelimiter, ExportOption::RecordDelimiter, "--record-delimiter");
    add(settings.decimalSymbol, ExportOption::DecimalSymbol, "--decimal-symbol");
    add(settings.encoding, ExportOption::Encoding, "--encoding");
    add(settings.dialect, ExportOption::Dialect, "--dialect");
    add(settings.schema, ExportOption::Schema, "--schema");
    add(settings.objects, ExportOption::Objects, "--objects");
    for (const auto& choice : switches)
        if (isGiven(settings, choice.option)) given[choice.option] = choice.argument;
    return given;
}

Complaint complaintAboutOptions(const ExportSettings& settings, const FormatInfo& format)
{
    if (settings.isSingleFile && !format.hasSingleFileMode()) return doesNotApply("--single-file", format.name);
    const auto given = givenArguments(settings);
    for (const auto& [option, argument] : given)
        if (!format.has(option)) return doesNotApply(argument, format.name);
    const bool isExact = optionsFrom(settings).isExact;
    for (const auto& [option, argument] : given)
        if (!format.has(option, isExact)) return isExact ? doesNotApply(argument, "--exact") : onlyWithExact(argument);
    return std::nullopt;
}

Complaint complaintAboutValues(const ExportSettings& settings, const FormatInfo& format)
{
    if (settings.to.empty()) return localized("--to must not be empty.");
    const bool isOneTable = settings.tables.size() == 1;
    if (settings.isToStandardOutput() && !isOneTable && !format.hasSingleFileMode())
        return localizedFormat("--to - needs one --table with %@.", {format.name});
    if (!settings.choice.isAll() && !isOneTable) return localized("--columns, --search and --sort need one --table.");
    if (settings.objects && settings.objects->empty()) return localized("--objects must not be empty.");
    if (settings.fieldDelimiter && !format.offers(delimiterNamed(fieldDelimiters(), *settings.fieldDelimiter)))
        return doesNotApply("--field-delimiter " + *settings.fieldDelimiter, format.name);
    if (settings.encoding && !findTextEncoding(*settings.encoding))
        return localizedFormat("Unknown encoding: %@", {*settings.encoding});
    for (const auto& text : {settings.decimalSymbol, settings.schema})
        if (text && !isWellFormedUTF8(*text)) return localized("An argument is not valid UTF-8.");
    const auto& dialect = dialectOf(settings);
    if (settings.schema && !dialect.takesSchemaName) return doesNotApply("--schema", dialect.name);
    if (!optionsFrom(settings).hasContents()) return localized("Neither structure nor data is to be exported.");
    return std::nullopt;
}

} // namespace

std::span<const ExportSwitch> exportSwitches() { return switches; }

Complaint complaintAbout(const ExportSettings& settings)
{
    const auto& format = formatOf(settings);
    auto complaint = complaintAboutOptions(settings, format);
    return complaint ? complaint : complaintAboutValues(settings, format);
}

ExportOptions optionsFrom(const ExportSettings& settings)
{
    const auto& format = formatOf(settings);
    auto options = defaultOptions(format, isGiven(settings, ExportOption::Exact));
    options.isSingleFile = options.isSingleFile || settings.isSingleFile;
    options.path = settings.isToStandardOutput() ? std::string(standardOutputPath) : settings.to;
    options.isSingleFile = options.isSingleFile || settings.isToStandardOutput();
    if (settings.fieldDelimiter) {
        options.fieldDelimiter = delimiterNamed(fieldDelimiters(), *settings.fieldDelimiter);
        if (!options.isExact)
            options.decimalSymbol = format.decimalSymbolFor(options.fieldDelimiter).value_or(options.decimalSymbol);
    }
    if (settings.recordDelimiter)
        options.recordDelimiter = delimiterNamed(recordDelimiters(), *settings.recordDelimiter);
    if (settings.decimalSymbol) options.decimalSymbol = *settings.decimalSymbol;
    if (settings.encoding) options.encoding = findTextEncoding(*settings.encoding).value_or(options.encoding);
    options.sqlDialect = dialectOf(settings).dialect;
    options.schemaName = settings.schema.value_or("");
    options.objectsFolder = settings.objects.value_or("");
    for (const auto& choice : switches)
        if (isGiven(settings, choice.option)) options.*choice.value = choice.isOn;
    return options;
}

} // namespace vellumo
