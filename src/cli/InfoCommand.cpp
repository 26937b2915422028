// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/InfoJson.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace vellumo {

namespace {

struct InfoOptions {
    FileArguments file;
    std::string table; // empty: the file itself
    bool isJson = false;
};

// The lists of a table that have the same shape.
struct InfoSection {
    std::string title;
    std::vector<const TAdmMDBObject*> objects;
};

std::vector<InfoSection> sections(const TAdmMDBTable& table)
{
    std::vector<InfoSection> list = {
        {localized("Columns"), {}}, {localized("Indexes"), {}}, {localized("Relations"), {}}};
    for (const auto& column : table.columns())
        list[0].objects.push_back(column.get());
    for (const auto& index : table.indices())
        list[1].objects.push_back(index.get());
    for (const auto* relation : table.foreignKeys())
        list[2].objects.push_back(relation);
    return list;
}

std::string objectText(const TAdmMDBObject& object, std::string_view indent)
{
    std::string text;
    for (const auto& [id, value] : object.information())
        text += format("%@%@: %@\n", {indent, infoLabel(id), infoText(value)});
    return text;
}

std::string fileText(const TAdmMDBFile& file)
{
    auto text = objectText(file, "");
    if (!file.tables().empty()) text += format("\n%@:\n", {localized("Tables")});
    for (const auto& table : file.tables()) {
        const auto count = table->rows().rowCount();
        text += format("    %@\n",
            {count == 1 ? localizedFormat("%@ (%ld row)", {table->name(), count})
                        : localizedFormat("%@ (%ld rows)", {table->name(), count})});
    }
    return text;
}

std::string indented(std::string_view text, std::string_view indent)
{
    std::string lines;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        lines.append(indent).append(line).append("\n");
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return lines;
}

std::string contentsText(const FileContents& contents)
{
    std::string text;
    if (!contents.queries.empty()) text += format("\n%@:\n", {localized("Queries")});
    for (const auto& query : contents.queries) {
        text += format("    %@ (%@)\n", {query.name, queryKindText(query.kind)});
        text += indented(query.sql, "        ");
    }
    if (!contents.links.empty()) text += format("\n%@:\n", {localized("Linked Tables")});
    for (const auto& link : contents.links) {
        text += format("    %@ (%@): %@, %@\n", {link.name, link.kind, link.source, link.connect});
        for (const auto& column : link.columns)
            text += format("        %@ (%@)\n", {column.name, factsOf(column.type).accessName});
    }
    if (!contents.objects.empty()) text += format("\n%@:\n", {localized("Other Objects")});
    for (const auto& object : contents.objects)
        text += format("    %@ (%@)%@%@\n",
            {object.name, objectKindText(object.kind), object.modified.empty() ? "" : " ", object.modified});
    return text;
}

std::string tableText(const TAdmMDBTable& table)
{
    auto text = objectText(table, "");
    for (const auto& section : sections(table)) {
        if (!section.objects.empty()) text += format("\n%@:\n", {section.title});
        for (const auto* object : section.objects) {
            if (object != section.objects.front()) text += '\n';
            text += objectText(*object, "    ");
        }
    }
    return text;
}

void printFile(const TAdmMDBFile& file, bool isJson)
{
    writeOutput(
        isJson ? jsonText(infoJson(file)) : fileText(file) + contentsText(file.contents()) + damageSection(file));
}

void printTable(const TAdmMDBFile& file, const TAdmMDBTable& table, bool isJson)
{
    const std::span<const std::string> name(&table.name(), 1);
    writeOutput(isJson ? jsonText(infoJson(table)) : tableText(table) + damageSection(file, name));
    // The list in the object says nothing of other tables; the status does.
    if (isJson && damageJson(file, name).empty()) printDamage(file, name);
}

ExitStatus showInfo(const InfoOptions& options)
{
    const auto file = openDatabase(options.file);
    if (!file) return ExitStatus::Failed;
    if (options.table.empty()) {
        printFile(*file, options.isJson);
    } else {
        const auto* table = findTableOrComplain(*file, options.table);
        if (table == nullptr) return ExitStatus::Failed;
        printTable(*file, *table, options.isJson);
    }
    return doneWith(*file);
}

} // namespace

void addInfoCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<InfoOptions>();
    auto* sub = app.add_subcommand("info", localized("Show what is known of a file, or of one of its tables"));
    addFileArguments(*sub, options->file);
    sub->add_option("TABLE", options->table, localized("A table: its columns, indexes and relations"));
    sub->add_flag("--json", options->isJson, localized("Print one JSON object"));
    sub->callback([options, &command] { command = [options] { return showInfo(*options); }; });
}

} // namespace vellumo
