// SPDX-License-Identifier: MIT
#include "Session.h"

#include "samples/DatabaseWriter.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>

namespace vellumo::test {

namespace {

samples::TableDescription describeTable(const std::string& name, int rowCount)
{
    std::vector<std::vector<samples::Value>> rows;
    for (int i = 1; i <= rowCount; ++i)
        rows.push_back({samples::Value("r" + std::to_string(i))});
    return {.name = name, .columns = {{.name = "Name"}}, .rows = samples::rowsOf(rows)};
}

void append(std::string& line, const std::string& word, const char* separator = " ")
{
    if (!line.empty()) line += separator;
    line += word;
}

} // namespace

void PrintTo(const Sight& sight, std::ostream* out)
{
    *out << "\n  tree    " << sight.tree << "\n  status  " << sight.status << "\n  history " << sight.history
         << "\n  recent  " << sight.recent << "\n  alerts  " << sight.alerts << "\n";
}

std::string Session::makeDatabase(const std::string& fileName, const std::vector<std::pair<std::string, int>>& tables)
{
    samples::DatabaseDescription description;
    for (const auto& [name, rowCount] : tables)
        description.tables.push_back(describeTable(name, rowCount));
    auto path = folder.path(fileName);
    EXPECT_EQ(samples::writeDatabase(description, path).error, "");
    return path;
}

std::string Session::makeBrokenFile(const std::string& fileName)
{
    folder.write(fileName, "no database");
    return folder.path(fileName);
}

void Session::start()
{
    m_app.reset();
    ports.loadErrorWindow = &loadErrorWindow;
    m_app = std::make_unique<VellumoAppDelegate>(window, ports);
    m_app->applicationDidFinishLaunching();
}

void Session::quit()
{
    m_app->applicationWillTerminate();
    m_app.reset();
}

TreeItem Session::item(const std::string& name) const
{
    const auto slash = name.find('/');
    for (const auto& file : m_app->recentFiles()) {
        if (file->name() != name.substr(0, slash)) continue;
        if (slash == std::string::npos) return TreeItem::of(*file);
        if (auto* table = file->findTable(name.substr(slash + 1))) return TreeItem::of(*table);
    }
    ADD_FAILURE() << "there is no " << name;
    return {};
}

void Session::click(const std::string& name)
{
    const auto clicked = item(name);
    m_app->outlineViewSelectionDidChange(clicked);
    m_app->OnSingleClickfileTree(clicked);
}

void Session::openByPanel(const std::vector<std::string>& paths)
{
    filePanels.files = paths;
    m_app->OpenFile();
    filePanels.files = {};
    finishOpening();
}

void Session::finishOpening()
{
    mainThread.runUntil([this] { return !m_app->isOpening(); });
}

void Session::clickMenu(const std::string& name, void (VellumoAppDelegate::*command)(VellumoAppDelegate::Sender))
{
    m_app->setClickedTreeItem(item(name));
    (*m_app.*command)(VellumoAppDelegate::Sender::TreeMenu);
    m_app->setClickedTreeItem({});
    finishOpening();
}

std::string Session::tableNames(const SelectionHistory::Tables& tables) const
{
    std::string names;
    for (const auto& table : tables)
        append(names, table.tableName);
    return names;
}

Sight Session::sight()
{
    Sight sight;
    const auto selected = m_app->treeSelection();
    const auto name = [&](const TreeItem& shown) {
        return m_app->objectValueByItem(shown).name + (shown == selected ? "*" : "");
    };
    for (std::size_t f = 0; f < m_app->tree().numberOfChildrenOfItem({}); ++f) {
        const auto file = m_app->tree().child(f, {});
        std::string tables;
        for (std::size_t t = 0; t < m_app->tree().numberOfChildrenOfItem(file); ++t)
            append(tables, name(m_app->tree().child(t, file)));
        append(sight.tree, name(file) + (m_app->tree().isItemExpandable(file) ? "[" + tables + "]" : ""));
    }
    sight.status = m_app->statusText();
    const auto& history = m_app->history();
    sight.history = tableNames(history.previousTables()) + " | " + tableNames(history.nextTables())
        + (history.isBackEnabled() ? " <" : "") + (history.isNextEnabled() ? " >" : "");
    for (const auto& path : recent.listed)
        append(sight.recent, std::filesystem::path(path).filename().string());
    for (const auto& alert : std::exchange(alerts.shown, {}))
        append(sight.alerts,
            (alert.style == Alert::Style::Modal ? "modal " : "sheet ") + alert.title + ": " + alert.message, "; ");
    return sight;
}

} // namespace vellumo::test
