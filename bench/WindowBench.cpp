// SPDX-License-Identifier: MIT
// What the main window's logic costs on a file with 2,000 tables, all of them visited: each step has to fit into one
// frame of 16 ms. The window itself is a stand-in that draws nothing.
#include "Measure.h"
#include "browser/FakeWindow.h"
#include "browser/VellumoAppDelegate.h"
#include "support/FakeDesktop.h"
#include "support/ModelBuilder.h"

#include <fmt/format.h>
#include <random>

namespace vellumo {
namespace {

using namespace test;

constexpr std::size_t tableCount = 2000;
constexpr int runs = 21;

struct Program : FakeDesktop<> {
    FakeWindow window;
    VellumoAppDelegate app{window, ports};
};

// Fills the one listed file as if it had been opened.
void fill(TAdmMDBFile& file)
{
    TAdmMDBFile::Tables tables;
    std::vector<RelationSpec> relations;
    std::vector<ColumnSpec> columns(20, ColumnSpec{"", "Text"});
    for (std::size_t c = 0; c < columns.size(); ++c)
        columns[c].name = fmt::format("Column {}", c);
    for (std::size_t i = 0; i < tableCount; ++i) {
        tables.push_back(makeTable(fmt::format("Table {:04}", i), columns));
        relations.push_back({fmt::format("R{}", i), tables.back()->name(), "Table 0000", {{"Column 1", "Column 0"}}});
    }
    file.setTables(std::move(tables));
    setRelations(file, relations);
    file.setActive(true);
}

void visit(VellumoAppDelegate& app, std::size_t table)
{
    const auto item = TreeItem::of(*app.recentFiles().front()->tables()[table]);
    app.outlineViewSelectionDidChange(item);
    app.OnSingleClickfileTree(item);
}

void report(const char* name, double seconds)
{
    fmt::print("{:<40}{:>10.3f} ms  (at most 16)\n", name, seconds * 1000);
}

void measure()
{
    Program program;
    auto& app = program.app;
    program.recent.listed = {"/data/Big.mdb"};
    app.applicationDidFinishLaunching();
    auto& file = *app.recentFiles().front();
    fill(file);
    app.refreshRecentFiles();

    std::mt19937 random(1);
    report("select another table", bench::medianSeconds(runs, [&] { visit(app, random() % tableCount); }));
    bool isLong = false;
    report("type into the file search", bench::medianSeconds(runs, [&] {
        app.controlTextDidChange(VellumoAppDelegate::SearchField::File, (isLong = !isLong) ? "e 1" : "e 19");
    }));
    app.controlTextDidChange(VellumoAppDelegate::SearchField::File, "");

    std::vector<double> closing;
    for (int run = 0; run < 5; ++run) {
        if (!file.active()) fill(file);
        app.refreshRecentFiles();
        for (std::size_t i = 0; i < tableCount; ++i)
            visit(app, i * 7 % tableCount);
        closing.push_back(bench::seconds([&] { app.CloseSelectedFile(VellumoAppDelegate::Sender::Other); }));
    }
    report("close the file, every table visited", bench::median(closing));
}

} // namespace
} // namespace vellumo

int main() { vellumo::measure(); }
