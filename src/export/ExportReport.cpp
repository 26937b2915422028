// SPDX-License-Identifier: MIT
#include "export/ExportReport.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <system_error>

namespace vellumo {

namespace {

// A name with a line break in it must not look like a line of the report.
void addLine(std::string line, std::string& body)
{
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    if (!body.empty()) body += '\n';
    body += line;
}

std::string countSentence(std::size_t count)
{
    if (count == 0) return {};
    return count == 1 ? localizedFormat("%d table exported successfully.", {count})
                      : localizedFormat("%d tables exported successfully.", {count});
}

std::string objectSentence(const ExportReport& report)
{
    return report.objectFileCount == 1
        ? localizedFormat("1 object file written to %@.", {report.objectFolder})
        : localizedFormat("%ld object files written to %@.", {report.objectFileCount, report.objectFolder});
}

void addFailures(const std::vector<ExportFailure>& failures, std::string& body)
{
    constexpr std::size_t shownLines = 10;
    for (std::size_t i = 0; i < std::min(failures.size(), shownLines); ++i)
        addLine(failureText(failures[i]), body);
    if (failures.size() > shownLines) body += localizedFormat("\n…and %d more.", {failures.size() - shownLines});
}

void addLosses(const ExportReport& report, std::string& body)
{
    for (const auto& line : report.leftOutObjects)
        addLine(line, body);
    if (!report.damage.empty()) addLine(localized("Damage:"), body);
    for (const auto& line : report.damage)
        addLine(line, body);
}

} // namespace

std::string ExportCause::text() const
{
    auto place = path;
    if (row != 0 && !column.empty())
        place = localizedFormat("Row %ld, column %@", {row, column});
    else if (row != 0)
        place = localizedFormat("Row %ld", {row});
    else if (!column.empty())
        place = localizedFormat("Column %@", {column});
    const bool isOfSystem = reason.empty() && systemError != 0;
    const auto why = isOfSystem ? std::generic_category().message(systemError) : reason;
    return place.empty() || why.empty() ? place + why : place + ": " + why;
}

std::string ExportReason::text() const
{
    const auto sentence = localizedFormat(key, {arguments[0], arguments[1]});
    const auto why = cause.text();
    return why.empty() ? sentence : sentence + ' ' + why;
}

std::size_t ExportReport::doneCount() const
{
    return static_cast<std::size_t>(std::ranges::count(tables, true, &Table::isDone));
}

std::string failureText(const ExportFailure& failure)
{
    auto reason = failure.reason.text();
    switch (failure.kind) {
    case ExportFailure::Kind::Table: return format("<%@> %@: %@", {failure.table, localized("Failed"), reason});
    case ExportFailure::Kind::Step: return format("%@: %@", {localized("Failed"), reason});
    case ExportFailure::Kind::Output: break;
    }
    return reason;
}

ExportReportTexts exportReportTexts(const ExportReport& report)
{
    auto body = countSentence(report.doneCount());
    if (!report.objectFolder.empty()) addLine(objectSentence(report), body);
    addFailures(report.failures, body);
    for (const auto& line : findingLines(report.findings.all()))
        addLine(line, body);
    addLosses(report, body);
    return {report.isStopped ? localized("Export terminated.") : localized("Export finished."), std::move(body)};
}

// The counter starts at 0: it tells how many tables are done.
std::string exportProgressText(std::string_view tableName, std::size_t index, std::size_t count)
{
    return format(
        "%@... <%@>", {localizedFormat("Exporting %@", {tableName}), localizedFormat("%ld of %ld", {index, count})});
}

bool concerns(const DamageRecord& record, std::span<const std::string> tables)
{
    return tables.empty() || record.table.empty() || std::ranges::find(tables, record.table) != tables.end();
}

std::vector<std::string> damageLines(const DamageReport& report, std::span<const std::string> tables)
{
    constexpr std::size_t shownLines = 20;
    std::vector<std::string> lines;
    std::size_t count = 0;
    for (const auto& record : report.records())
        if (concerns(record, tables) && ++count <= shownLines) lines.push_back(damageText(record));
    if (count > shownLines) lines.push_back(localizedFormat("... and %ld more", {count - shownLines}));
    if (count == 0 && !report.empty()) lines.push_back(localized("Other parts of the file are damaged."));
    return lines;
}

} // namespace vellumo
