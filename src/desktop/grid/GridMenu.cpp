// SPDX-License-Identifier: MIT
#include "desktop/grid/GridMenu.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"
#include "desktop/grid/GridView.h"
#include "desktop/grid/ObjectActions.h"

#include <QMenu>

namespace vellumo {

namespace {

void addCommands(QMenu& menu, GridView& grid, DataView& dataView)
{
    const auto add = [&](const char* key, GridCommand command, std::function<void()> run) {
        auto* action = menu.addAction(localizedText(key), &grid, std::move(run));
        action->setEnabled(dataView.validateMenuItem(command));
    };
    add(messageKey("Copy"), GridCommand::Copy, [&dataView] { dataView.copy(); });
    menu.addSeparator();
    auto* view = &grid;
    add(messageKey("Select All"), GridCommand::SelectAll, [view] { view->selectAll(); });
    add(messageKey("Deselect All"), GridCommand::DeselectAll, [view] { view->clearSelection(); });
    add(messageKey("Jump to Row…"), GridCommand::JumpToRow, [&dataView] { dataView.JumpToRow(); });
    menu.addAction(localizedText("Fit Columns"), view, [view] { view->fitColumns(); })
        ->setEnabled(!dataView.columns().empty());
}

} // namespace

void popUpGridMenu(GridView& grid, DataView& dataView, const QModelIndex& index, const QPoint& globalPosition)
{
    auto* menu = new QMenu(&grid);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (index.isValid()) {
        const auto column = static_cast<std::size_t>(index.column());
        dataView.setClickedRow(static_cast<std::size_t>(index.row()));
        addCommands(*menu, grid, dataView);
        menu->addSeparator();
        menu->addAction(
            localizedText("Sort by This Column"), &grid, [&dataView, column] { dataView.didClickTableColumn(column); });
        dataView.displayCell(column, static_cast<std::size_t>(index.row()));
        addObjectActions(*menu, dataView);
    } else {
        addCommands(*menu, grid, dataView);
    }
    // The menu closes before the chosen action runs, which asks for the clicked row.
    QObject::connect(
        menu, &QMenu::aboutToHide, &grid, [&dataView] { dataView.setClickedRow({}); }, Qt::QueuedConnection);
    menu->popup(globalPosition);
}

} // namespace vellumo
