// SPDX-License-Identifier: MIT
// What a person waits for in the main window with a large table: how long from the double click to the painted grid, as
// a ratio to `open` alone in the same process, and how long the main thread is away while the grid is scrolled,
// searched and sorted. The window is the program's own; without a display it is painted into memory. Usage:
// bench_desktop FILE [runs]. The file's first table is used.
#include "Measure.h"
#include "desktop/grid/GridView.h"
#include "desktop/ports/QtImageDecoder.h"
#include "desktop/ports/QtMainThread.h"
#include "desktop/window/MainWindow.h"
#include "desktop/window/SearchField.h"
#include "model/TAdmMDBFile.h"
#include "samples/DatabaseWriter.h"
#include "support/FakeDesktop.h"
#include "support/TempFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <functional>
#include <random>

namespace vellumo {
namespace {

using namespace test;

constexpr double allowedStallMs = 100;

// Beats as often as the main thread lets it, and remembers the longest pause.
class Heartbeat : public QObject {
public:
    Heartbeat()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        connect(&m_timer, &QTimer::timeout, this, [this] { beat(); });
    }

    // The longest pause, in milliseconds, in which `work` and all that it leaves to the event loop are done.
    double longestPause(const std::function<void()>& work)
    {
        m_longest = 0;
        m_sinceBeat.start();
        m_timer.start();
        QTest::qWait(5);
        work();
        QTest::qWait(30);
        beat();
        m_timer.stop();
        return m_longest;
    }

private:
    void beat()
    {
        m_longest = std::max(m_longest, static_cast<double>(m_sinceBeat.nsecsElapsed()) / 1e6);
        m_sinceBeat.start();
    }

    QTimer m_timer;
    QElapsedTimer m_sinceBeat;
    double m_longest = 0;
};

// Tells whether a widget was painted.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    void forget() { m_hasPainted = false; }
    [[nodiscard]] bool hasPainted() const { return m_hasPainted; }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        m_hasPainted = m_hasPainted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_hasPainted = false;
};

void waitUntil(const std::function<bool()>& isSo)
{
    while (!isSo())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

struct Program {
    explicit Program(const std::string& path)
    {
        desktop.recent.listed = {path};
        window.start();
        QTest::qWait(100); // until all is laid out
    }

    void click(const QModelIndex& index, bool isDouble)
    {
        tree.scrollTo(index);
        const auto point = tree.visualRect(index).center();
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, point);
        if (isDouble) QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, point);
    }
    // Until it is open and the tree shows its tables; the event loop turns meanwhile.
    void openFile()
    {
        click(tree.model()->index(0, 0), true);
        waitUntil([this] { return window.app().recentFiles().front()->active(); });
    }
    // What a search or a sort begins, until its rows are shown.
    void awaitRows()
    {
        waitUntil([this] { return !window.app().dataView().areRowsToCome(); });
    }
    void showTable() { click(tree.model()->index(0, 0, tree.model()->index(0, 0)), false); }

    test::FakeDesktop<SystemFileFacts, QtImageDecoder, QtMainThread> desktop;
    MainWindow window{desktop.ports};
    QTreeView& tree{*window.findChild<QTreeView*>("fileTree")};
    GridView& grid{*window.findChild<GridView*>("dataTableView")};
    QLineEdit& search{*window.findChild<QLineEdit*>("dataSearchField")};
};

double openAlone(const std::string& path)
{
    TAdmMDBFile file;
    file.setFullPath(path);
    return bench::seconds([&] {
        if (!file.open()) std::exit(1);
    });
}

double openInWindow(const std::string& path)
{
    Program program(path);
    PaintWatch watch(*program.grid.viewport());
    const auto time = bench::seconds([&] {
        program.openFile();
        program.showTable();
        watch.forget();
        waitUntil([&] { return watch.hasPainted() && program.grid.model()->rowCount() > 0; });
    });
    program.window.shutDown();
    return time;
}

void benchOpening(const std::string& path, int runs)
{
    // Side by side: what else the machine does then tells on both.
    std::vector<double> alone;
    std::vector<double> shown;
    for (int run = 0; run < runs; ++run) {
        alone.push_back(openAlone(path));
        shown.push_back(openInWindow(path));
    }
    const auto aloneMs = 1000 * bench::median(alone);
    const auto shownMs = 1000 * bench::median(shown);
    fmt::print("{:<52}{:>10.1f} ms\n", "open alone", aloneMs);
    fmt::print("{:<52}{:>10.1f} ms{:>10.2f} x\n", "double click, click on the table, grid painted", shownMs,
        shownMs / aloneMs);
}

void report(const std::string& name, double pauseMs)
{
    fmt::print("{:<52}{:>10.1f} ms{}\n", name, pauseMs, pauseMs > allowedStallMs ? "  TOO LONG" : "");
}

// The pauses of one program with the table on the screen.
class Stalls {
public:
    explicit Stalls(Program& program)
        : m_program(program)
    {
    }

    void show();
    void scroll();
    void select();
    void fitColumns();
    void type(const std::string& text);
    void sort(int column);

private:
    Program& m_program;
    Heartbeat m_heartbeat;
};

void Stalls::show()
{
    report("opening", m_heartbeat.longestPause([&] { m_program.openFile(); }));
    report("showing the table", m_heartbeat.longestPause([&] { m_program.showTable(); }));
}

void Stalls::scroll()
{
    auto& grid = m_program.grid;
    auto& bar = *grid.verticalScrollBar();
    std::mt19937 random(1);
    const struct {
        const char* name;
        std::function<void()> step;
    } ways[] = {
        {"a page down", [&] { QTest::keyClick(&grid, Qt::Key_PageDown); }},
        {"to the end", [&] { QTest::keyClick(&grid, Qt::Key_End, Qt::ControlModifier); }},
        {"to the beginning", [&] { QTest::keyClick(&grid, Qt::Key_Home, Qt::ControlModifier); }},
        {"bar dragged", [&] { bar.setValue(static_cast<int>(random() % static_cast<unsigned>(bar.maximum()))); }},
    };
    for (const auto& way : ways) {
        double longest = 0;
        for (int i = 0; i < 50; ++i)
            longest = std::max(longest, m_heartbeat.longestPause(way.step));
        report(fmt::format("scrolling, {}, the longest of 50", way.name), longest);
    }
}

void Stalls::select()
{
    report("all rows selected", m_heartbeat.longestPause([&] { m_program.grid.selectAll(); }));
    report("one row selected instead", m_heartbeat.longestPause([&] {
        QTest::mouseClick(m_program.grid.viewport(), Qt::LeftButton, Qt::NoModifier, {20, 10});
    }));
}

void Stalls::fitColumns()
{
    report("fitting the columns to all rows", m_heartbeat.longestPause([&] { m_program.grid.fitColumns(); }));
}

void Stalls::type(const std::string& text)
{
    auto& search = m_program.search;
    for (std::size_t i = 0; i < 2 * text.size(); ++i) {
        const auto pause = m_heartbeat.longestPause([&] {
            if (i < text.size())
                QTest::keyClicks(&search, QString(QLatin1Char(text[i])));
            else
                QTest::keyClick(&search, Qt::Key_Backspace);
            m_program.awaitRows();
        });
        const auto rows = m_program.grid.model()->rowCount();
        report(fmt::format("typing, \"{}\" [{} rows]", search.text().toStdString(), rows), pause);
    }
}

void Stalls::sort(int column)
{
    auto& header = *m_program.grid.horizontalHeader();
    m_program.grid.scrollTo(m_program.grid.model()->index(0, column));
    for (const auto* direction : {"ascending", "descending", "not at all"}) {
        const QPoint title(
            header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2);
        const auto pause = m_heartbeat.longestPause([&] {
            QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, title);
            m_program.awaitRows();
        });
        report(fmt::format("sorting by column {}, {}", column + 1, direction), pause);
    }
}

void benchStalls(const std::string& path)
{
    fmt::print("\nlongest pause of the main thread (at most {} ms):\n", allowedStallMs);
    Program program(path);
    Stalls stalls(program);
    stalls.show();
    stalls.scroll();
    stalls.select();
    stalls.fitColumns();
    stalls.type("ann");
    stalls.type("12");
    for (const int column : {0, 4, 6})
        stalls.sort(column);
    program.window.shutDown();
}

// A value without a line end, and one of short lines: shown, and then all of it.
void benchLongValues()
{
    constexpr std::size_t bytes = 5'000'000;
    std::string lines;
    while (lines.size() < bytes)
        lines += "a line of words\n";
    const TempFolder folder;
    samples::DatabaseDescription description;
    description.tables.push_back({.name = "Long",
        .columns = {{.name = "Memo", .type = samples::ColumnType::Memo}},
        .rows = samples::rowsOf(
            {std::vector<samples::Value>{samples::Value(std::string(bytes, 'x'))}, {samples::Value(lines)}})});
    if (!samples::writeDatabase(description, folder.path("long.mdb")).ok()) std::exit(1);
    Program program(folder.path("long.mdb"));
    program.openFile();
    program.showTable();
    program.window.app().ToggleTextView();
    QTest::qWait(100);
    auto& showAll = *program.window.findChild<QAbstractButton*>("showAll");
    Heartbeat heartbeat;
    for (const int row : {0, 1}) {
        const auto name = row == 0 ? "a memo of 5 MB in one line" : "a memo of 5 MB in short lines";
        const auto show = [&] {
            QTest::mouseClick(program.grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                program.grid.visualRect(program.grid.model()->index(row, 0)).topLeft() + QPoint(9, 9));
        };
        report(name, heartbeat.longestPause(show));
        const auto showRest = [&] {
            showAll.click();
            while (showAll.isVisible())
                QTest::qWait(1);
        };
        report("all of it", heartbeat.longestPause(showRest));
    }
    program.window.shutDown();
}

} // namespace
} // namespace vellumo

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("usage: bench_desktop FILE [runs]\n", stderr);
        return 2;
    }
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    vellumo::benchOpening(argv[1], argc > 2 ? std::atoi(argv[2]) : 5);
    vellumo::benchStalls(argv[1]);
    vellumo::benchLongValues();
}
