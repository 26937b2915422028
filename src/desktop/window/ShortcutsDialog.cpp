// SPDX-License-Identifier: MIT
#include "desktop/window/ShortcutsDialog.h"

#include "desktop/QtText.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

namespace vellumo {

namespace {

struct Key {
    const char* placeKey;
    const char* keys; // as Qt names them
    const char* effectKey;
};

// What no menu tells.
constexpr Key keysOfParts[] = {
    {messageKey("File list"), "Return", messageKey("Open the file, or the table in a window of its own")},
    {messageKey("Filter files and tables"), "Esc", messageKey("Clear the filter")},
    {messageKey("Search"), "Esc", messageKey("Clear the search")},
    {messageKey("Search"), "Down", messageKey("Search options")},
    {messageKey("Search"), "Return", messageKey("Go to the records")},
    {messageKey("Records"), "Left; Right", messageKey("Show the last column, show the first column")},
    {messageKey("Records"), "Ctrl+Left; Ctrl+Right", messageKey("Show the cell before, show the next cell")},
    {messageKey("Records"), "Ctrl+Home; Ctrl+End", messageKey("Show the first cell, show the last cell")},
    {messageKey("Records"), "Shift+F10", messageKey("Menu of the cell")},
    {messageKey("Table window"), "Ctrl+F", messageKey("Find records without hiding others")},
    {messageKey("Table window"), "F3; Shift+F3", messageKey("Go to the next hit, go to the previous hit")},
};

QString keyText(const QString& keys)
{
    QStringList texts;
    for (const auto& sequence : QKeySequence::listFromString(keys))
        texts << sequence.toString(QKeySequence::NativeText);
    return texts.join(", ");
}

QString withoutMnemonic(QString title)
{
    return title.replace("&&", "\1").remove('&').replace('\1', '&').remove(QChar(0x2026));
}

void addRow(QTableWidget& table, const QStringList& texts)
{
    const int row = table.rowCount();
    table.insertRow(row);
    for (int column = 0; column < texts.size(); ++column)
        table.setItem(row, column, new QTableWidgetItem(texts[column])); // the table owns it
}

void addKeysOf(QTableWidget& table, const QMenu& menu, const QString& place)
{
    for (const auto* action : menu.actions()) {
        if (action->menu() != nullptr) addKeysOf(table, *action->menu(), place);
        if (action->shortcut().isEmpty()) continue; // a desktop need not have a key for each
        addRow(
            table, {place, withoutMnemonic(action->text()), keyText(QKeySequence::listToString(action->shortcuts()))});
    }
}

QTableWidget* makeTable(const QMenuBar& menus, QWidget* parent)
{
    auto* table = new QTableWidget(0, 3, parent);
    table->setObjectName("shortcuts");
    table->setAccessibleName(localizedText("Keyboard Shortcuts"));
    table->setHorizontalHeaderLabels({localizedText("Where"), localizedText("What"), localizedText("Keys")});
    table->setEditTriggers(QTableWidget::NoEditTriggers);
    table->setSelectionBehavior(QTableWidget::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    for (const auto* action : menus.actions())
        if (action->menu() != nullptr) addKeysOf(*table, *action->menu(), withoutMnemonic(action->text()));
    for (const auto& [placeKey, keys, effectKey] : keysOfParts)
        addRow(*table, {localizedText(placeKey), localizedText(effectKey), keyText(keys)});
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return table;
}

} // namespace

void showShortcutsDialog(QWidget& window, const QMenuBar& menus)
{
    auto* dialog = new QDialog(&window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName("shortcutsDialog");
    dialog->setWindowTitle(localizedText("Keyboard Shortcuts"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(makeTable(menus, dialog));
    layout->addWidget(buttons);
    dialog->resize(QSize(720, 560).boundedTo(window.screen()->availableSize() * 0.9));
    dialog->open();
}

} // namespace vellumo
