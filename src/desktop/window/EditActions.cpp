// SPDX-License-Identifier: MIT
#include "desktop/window/EditActions.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"
#include "desktop/information/InformationPage.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace vellumo {

namespace {

void copy(QWidget* focus, DataView& dataView)
{
    if (auto* field = dynamic_cast<QLineEdit*>(focus))
        field->copy();
    else if (auto* text = dynamic_cast<QPlainTextEdit*>(focus))
        text->copy();
    else if (auto* properties = dynamic_cast<PropertyList*>(focus))
        QGuiApplication::clipboard()->setText(toQString(properties->selectedText()));
    else
        dataView.copy();
}

void selectAll(QWidget* focus, DataView& dataView)
{
    if (auto* field = dynamic_cast<QLineEdit*>(focus))
        field->selectAll();
    else if (auto* text = dynamic_cast<QPlainTextEdit*>(focus))
        text->selectAll();
    else if (auto* properties = dynamic_cast<PropertyList*>(focus))
        properties->selectAll();
    else if (const auto count = dataView.numberOfRows(); count > 0)
        dataView.selectRows(RowSelection({{0, count - 1}}));
}

} // namespace

EditActions makeEditActions(QWidget& window, DataView& dataView)
{
    const auto make = [&](const char* key, const QList<QKeySequence>& shortcuts, auto run) {
        auto* action = new QAction(localizedText(key), &window);
        action->setShortcuts(shortcuts);
        QObject::connect(action, &QAction::triggered, &window, run);
        window.addAction(action);
        return action;
    };
    return {
        make(messageKey("&Copy"), {QKeySequence::Copy}, [&window, &dataView] { copy(window.focusWidget(), dataView); }),
        make(messageKey("Select &All"), {QKeySequence::SelectAll},
            [&window, &dataView] { selectAll(window.focusWidget(), dataView); }),
        make(messageKey("&Deselect All"), {Qt::CTRL | Qt::SHIFT | Qt::Key_A}, [&dataView] { dataView.selectRows({}); }),
        make(messageKey("&Jump to Row…"), {Qt::CTRL | Qt::Key_G, Qt::CTRL | Qt::Key_L},
            [&dataView] { dataView.JumpToRow(); }),
    };
}

void EditActions::update(DataView& dataView) const
{
    deselectAll->setEnabled(dataView.validateMenuItem(GridCommand::DeselectAll));
    jumpToRow->setEnabled(dataView.validateMenuItem(GridCommand::JumpToRow));
}

} // namespace vellumo
