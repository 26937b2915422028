// SPDX-License-Identifier: MIT
#include "browser/GridValue.h"
#include "browser/TextMatcher.h"
#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/RowChoice.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace vellumo {

namespace {

struct FindOptions {
    FileArguments file;
    RowChoice what; // its search and how it matches
    bool isJson = false;
};

struct Hit {
    const TAdmMDBTable& table;
    std::size_t column;
    std::size_t row; // counts from 1
    std::string_view text;
};

// Tells of every cell that agrees, row by row. False when the user stopped it.
class CellSearch {
public:
    CellSearch(const SearchSettings& settings, std::function<void(const Hit&)> found)
        : m_matcher(settings)
        , m_found(std::move(found))
    {
    }

    [[nodiscard]] bool searchTable(const TAdmMDBTable& table)
    {
        for (std::size_t i = 0; i < table.rows().groups().size(); ++i) {
            if (interrupted()) return false;
            searchGroup(table, table.rows().groups()[i], table.rows().firstRow(i) + 1);
        }
        return true;
    }

private:
    void searchGroup(const TAdmMDBTable& table, const RowGroup& group, std::size_t firstRow);

    TextMatcher m_matcher;
    std::function<void(const Hit&)> m_found;
    std::vector<std::uint8_t> m_marks; // column by column
};

void CellSearch::searchGroup(const TAdmMDBTable& table, const RowGroup& group, std::size_t firstRow)
{
    const std::size_t rows = group.rowCount;
    m_marks.assign(rows * group.texts.size(), 0);
    for (std::size_t c = 0; c < group.texts.size(); ++c)
        if (group.texts[c].rowCount() != 0)
            m_matcher.match(group.texts[c], 0, group.rowCount, std::span(m_marks).subspan(c * rows, rows));
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::size_t c = 0; c < group.texts.size(); ++c)
            if (m_marks[c * rows + row] != 0) m_found({table, c, firstRow + row, group.texts[c].text(row)});
}

bool findIn(const TAdmMDBFile& file, const FindOptions& options, std::function<void(const Hit&)> found)
{
    CellSearch search(searchOf(options.what), std::move(found));
    return std::ranges::all_of(file.tables(), [&](const auto& table) { return search.searchTable(*table); });
}

// One line a cell: table, column, row and text, parted by tabs.
bool printHits(const TAdmMDBFile& file, const FindOptions& options)
{
    std::string buffer;
    return findIn(file, options, [&](const Hit& hit) {
        std::string line;
        appendCopiedValue(GridValue(std::string_view(hit.table.name())), buffer, line);
        appendCopiedValue(GridValue(std::string_view(hit.table.columns()[hit.column]->name())), buffer, line);
        appendCopiedValue(GridValue(std::string_view(std::to_string(hit.row))), buffer, line);
        appendCopiedValue(GridValue(hit.text), buffer, line);
        endCopiedRow(line);
        writeOutput(line);
    });
}

bool printHitsAsJson(const TAdmMDBFile& file, const FindOptions& options)
{
    auto hits = nlohmann::ordered_json::array();
    const bool isComplete = findIn(file, options, [&](const Hit& hit) {
        hits.push_back({{"table", hit.table.name()}, {"column", hit.table.columns()[hit.column]->name()},
            {"row", hit.row}, {"text", hit.text}});
    });
    if (isComplete) writeOutput(jsonText({{"hits", std::move(hits)}, {"damage", damageJson(file)}}));
    return isComplete;
}

ExitStatus find(const FindOptions& options)
{
    if (options.what.search.empty()) return wrongUsage(localized("The text to find must not be empty."));
    const auto file = openDatabase(options.file);
    if (!file) return ExitStatus::Failed;
    if (!(options.isJson ? printHitsAsJson : printHits)(*file, options)) return failed(localized("Interrupted."));
    if (!options.isJson) printDamage(*file);
    return doneWith(*file);
}

} // namespace

void addFindCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<FindOptions>();
    auto* sub = app.add_subcommand("find", localized("Find the cells of all tables in which a text stands"));
    addFileArguments(*sub, options->file);
    sub->add_option("TEXT", options->what.search, localized("The text to find"))->required();
    addMatchOptions(*sub, options->what);
    sub->add_flag("--json", options->isJson, localized("Print one JSON object"));
    sub->callback([options, &command] { command = [options] { return find(*options); }; });
}

} // namespace vellumo
