// SPDX-License-Identifier: MIT
#include "Program.h"

#include "desktop/QtText.h"
#include "desktop/tree/FileTreeModel.h"
#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"

#include <QAbstractButton>
#include <QDropEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

namespace vellumo::test {

std::string readText(QString text) { return fromQString(text.replace("&&", "\1").remove('&').replace('\1', '&')); }

std::string Program::makeDatabase(const std::string& fileName, const samples::DatabaseDescription& description)
{
    auto path = folder.path(fileName);
    EXPECT_EQ(samples::writeDatabase(description, path).error, "");
    return path;
}

std::string Program::makeDemo(const std::string& fileName)
{
    // Written once; it is the same each time.
    static const TempFolder made;
    static const auto result = samples::writeDatabase(samples::demoDatabase(), made.path("demo.mdb"));
    EXPECT_TRUE(result.ok()) << result.error;
    auto path = folder.path(fileName);
    std::filesystem::copy_file(made.path("demo.mdb"), path);
    return path;
}

std::string Program::makeBrokenFile(const std::string& fileName)
{
    folder.write(fileName, "no database");
    return folder.path(fileName);
}

void Program::start()
{
    quit();
    ports.homeFolder = folder.path();
    m_window = std::make_unique<MainWindow>(ports);
    m_window->start();
    m_window->resize(1120, 700);
    QApplication::processEvents();
}

void Program::quit()
{
    if (!m_window) return;
    m_window->close();
    m_window->shutDown();
    m_window.reset();
}

void Program::finishOpening()
{
    QApplication::processEvents();
    EXPECT_TRUE(eventually([this] { return !m_window->app().isOpening(); }));
    QApplication::processEvents();
}

void Program::openFiles(const std::vector<std::string>& paths)
{
    m_window->openFiles(paths);
    finishOpening();
}

void Program::startWithDemo()
{
    recent.listed = {makeDemo()};
    start();
    doubleClickTree("Shop");
}

// What can be seen

std::string Program::treeText()
{
    const auto& view = tree();
    const auto& model = *view.model();
    std::string text;
    const auto add = [&](const QModelIndex& index, const char* indent) {
        text += indent + fromQString(index.data().toString());
        text += fromQString(index.data(FileTreeModel::RowCountRole).toString());
        text += view.selectionModel()->isSelected(index) ? "*\n" : "\n";
    };
    for (int file = 0; file < model.rowCount(); ++file) {
        const auto index = model.index(file, 0);
        add(index, "");
        if (!view.isExpanded(index)) continue;
        for (int table = 0; table < model.rowCount(index); ++table)
            add(model.index(table, 0, index), "  ");
    }
    return text;
}

std::string Program::statusText() { return fromQString(find<QLabel>("statusText").text()); }

QTableView& Program::grid() { return find<QTableView>("dataTableView"); }

std::string Program::cell(int row, int column)
{
    return fromQString(grid().model()->index(row, column).data().toString());
}

std::vector<std::string> Program::columnOfGrid(int column)
{
    std::vector<std::string> texts;
    for (int row = 0; row < grid().model()->rowCount(); ++row)
        texts.push_back(cell(row, column));
    return texts;
}

std::string Program::detailText()
{
    const auto& text = *find<QWidget>("bottomTextView").findChild<QPlainTextEdit*>();
    return text.isVisible() ? fromQString(text.toPlainText()) : "(no text)";
}

std::string Program::selectedRows()
{
    std::string text;
    for (const auto& index : grid().selectionModel()->selectedRows())
        text += (text.empty() ? "" : " ") + std::to_string(index.row());
    return text;
}

// What hands can do

QModelIndex Program::treeIndex(const std::string& name)
{
    const auto& model = *tree().model();
    for (int file = 0; file < model.rowCount(); ++file) {
        const auto index = model.index(file, 0);
        if (index.data().toString() == toQString(name)) return index;
        for (int table = 0; table < model.rowCount(index); ++table)
            if (const auto child = model.index(table, 0, index); child.data().toString() == toQString(name))
                return child;
    }
    ADD_FAILURE() << "the tree has no " << name;
    return {};
}

QPoint Program::treePoint(const std::string& name)
{
    const auto index = treeIndex(name);
    tree().scrollTo(index);
    return tree().visualRect(index).center();
}

void Program::clickTree(const std::string& name)
{
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, treePoint(name));
}

void Program::doubleClickTree(const std::string& name)
{
    clickTree(name);
    QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, treePoint(name));
    finishOpening();
}

void Program::clickCell(int row, int column, Qt::KeyboardModifiers modifiers)
{
    QApplication::processEvents(); // new columns are laid out
    const auto index = grid().model()->index(row, column);
    grid().scrollTo(index);
    const auto visible = grid().visualRect(index) & grid().viewport()->rect();
    ASSERT_FALSE(visible.isEmpty());
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, modifiers, visible.center());
}

void Program::clickHeader(int column)
{
    auto& header = *grid().horizontalHeader();
    const QPoint point(header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, point);
}

void Program::typeInto(const char* fieldName, const std::string& text)
{
    auto& field = find<QLineEdit>(fieldName);
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, toQString(text));
}

void Program::clickButton(const char* name, QWidget* in)
{
    auto* button = (in == nullptr ? m_window.get() : in)->findChild<QAbstractButton*>(name);
    ASSERT_NE(button, nullptr) << name;
    QTest::mouseClick(button, Qt::LeftButton);
}

void Program::choose(const std::string& title)
{
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr) << "no menu is open";
    for (auto* action : menu->actions()) {
        if (readText(action->text()) != title) continue;
        EXPECT_TRUE(action->isEnabled()) << title;
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        QApplication::processEvents();
        return;
    }
    menu->close();
    ADD_FAILURE() << "the menu has no " << title;
}

void Program::clickAndChoose(QWidget& button, const std::string& title)
{
    QTest::mouseClick(&button, Qt::LeftButton);
    choose(title);
}

void Program::chooseForTree(const std::string& name, const std::string& title)
{
    const auto point = treePoint(name);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, tree().viewport()->mapToGlobal(point));
    QApplication::sendEvent(tree().viewport(), &event);
    choose(title);
    finishOpening();
}

void Program::press(int key, Qt::KeyboardModifiers modifiers)
{
    QApplication::processEvents(); // a command takes its new state when nothing else is to be done
    // Without a window manager nobody gives the keyboard back when a dialog has closed.
    if (QApplication::activeWindow() == nullptr) m_window->activateWindow();
    QApplication::processEvents();
    auto* focus = QApplication::focusWidget();
    QTest::keyClick(focus == nullptr ? m_window.get() : focus, static_cast<Qt::Key>(key), modifiers);
    QApplication::processEvents();
}

void Program::dropFiles(const std::vector<std::string>& paths, QWidget* onto)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const auto& path : paths)
        urls << QUrl::fromLocalFile(toQString(path));
    data.setUrls(urls);
    data.setText(urls.isEmpty() ? QString() : urls.first().toString());
    auto* target = onto == nullptr ? m_window.get() : onto;
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) return;
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(target, &drop);
    finishOpening();
}

QAction* Program::menuItem(const std::string& title)
{
    for (auto* menu : m_window->menuBar()->findChildren<QMenu*>())
        for (auto* action : menu->actions())
            if (readText(action->text()) == title) return action;
    ADD_FAILURE() << "the menu bar has no " << title;
    return nullptr;
}

} // namespace vellumo::test
