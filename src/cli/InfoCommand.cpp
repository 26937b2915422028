#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/JsonText.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace vellumo {

namespace {

using Json = nlohmann::ordered_json;

struct InfoOptions {
    FileArguments file;
    std::string table; // empty: the file itself
    bool isJson = false;
};

// The lists of a table that have the same shape, with their names in the two forms of output.
struct InfoSection {
    const char* jsonKey;
    std::string title;
    std::vector<const TAdmMDBObject*> objects;
};

std::vector<InfoSection> sections(const TAdmMDBTable& table)
{
    std::vector<InfoSection> list = {{"columns", localized("Columns"), {}}, {"indexes", localized("Indexes"), {}},
        {"relations", localized("Relations"), {}}};
    for (const auto& column : table.columns())
        list[0].objects.push_back(column.get());
    for (const auto& index : table.indices())
        list[1].objects.push_back(index.get());
    for (const auto* relation : table.foreignKeys())
        list[2].objects.push_back(relation);
    return list;
}

Json infoJson(const TAdmMDBObject& object)
{
    auto json = Json::object();
    const auto values = object.getObjectValues();
    for (const auto& label : object.getObjectLabels())
        if (const auto value = values.find(label); value != values.end())
            std::visit([&](const auto& typed) { json[label] = typed; }, value->second);
    return json;
}

Json fileJson(const TAdmMDBFile& file)
{
    auto tables = Json::array();
    for (const auto& table : file.tables())
        tables.push_back({{"name", table->name()}, {"rows", table->rows().rowCount()}});
    return {{"file", infoJson(file)}, {"tables", tables}, {"damage", damageJson(file)}};
}

Json tableJson(const TAdmMDBTable& table)
{
    Json json = {{"table", infoJson(table)}};
    for (const auto& section : sections(table)) {
        auto& list = json[section.jsonKey] = Json::array();
        for (const auto* object : section.objects)
            list.push_back(infoJson(*object));
    }
    json["damage"] = damageJson(*table.file(), {&table.name(), 1});
    return json;
}

std::string infoText(const TAdmMDBObject& object, std::string_view indent)
{
    std::string text;
    const auto values = object.getObjectValues();
    for (const auto& label : object.getObjectLabels())
        if (const auto value = values.find(label); value != values.end())
            text += format("%@%@: %@\n", {indent, label, vellumo::infoText(value->second)});
    return text;
}

std::string fileText(const TAdmMDBFile& file)
{
    auto text = infoText(file, "");
    if (!file.tables().empty()) text += format("\n%@:\n", {localized("Tables")});
    for (const auto& table : file.tables()) {
        const auto count = table->rows().rowCount();
        text += format("    %@\n",
            {count == 1 ? localizedFormat("%@ (%ld row)", {table->name(), count})
                        : localizedFormat("%@ (%ld rows)", {table->name(), count})});
    }
    return text;
}

std::string tableText(const TAdmMDBTable& table)
{
    auto text = infoText(table, "");
    for (const auto& section : sections(table)) {
        if (!section.objects.empty()) text += format("\n%@:\n", {section.title});
        for (const auto* object : section.objects) {
            if (object != section.objects.front()) text += '\n';
            text += infoText(*object, "    ");
        }
    }
    return text;
}

void printFile(const TAdmMDBFile& file, bool isJson)
{
    writeOutput(isJson ? jsonText(fileJson(file)) : fileText(file) + damageSection(file));
}

void printTable(const TAdmMDBFile& file, const TAdmMDBTable& table, bool isJson)
{
    const std::span<const std::string> name(&table.name(), 1);
    writeOutput(isJson ? jsonText(tableJson(table)) : tableText(table) + damageSection(file, name));
    // The list in the object says nothing of other tables; the status does.
    if (isJson && damageJson(file, name).empty()) printDamage(file, name);
}

ExitStatus showInfo(const InfoOptions& options)
{
    if (options.isJson) leaveTextsUntranslated(); // a script finds the same texts in every language
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
