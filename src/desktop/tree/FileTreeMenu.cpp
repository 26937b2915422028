#include "desktop/tree/FileTreeMenu.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/window/ExportMenu.h"

#include <QMenu>

namespace vellumo {

namespace {

using Sender = VellumoAppDelegate::Sender;

void addFileCommands(QMenu& menu, VellumoAppDelegate& app, bool isOpen)
{
    const auto add = [&](const char* key, void (VellumoAppDelegate::*command)(Sender)) {
        return menu.addAction(localizedText(key), [&app, command] { (app.*command)(Sender::TreeMenu); });
    };
    add(messageKey("Open"), &VellumoAppDelegate::OpenSelectedFile)->setEnabled(!isOpen);
    add(messageKey("Close"), &VellumoAppDelegate::CloseSelectedFile)->setEnabled(isOpen);
    menu.addSeparator();
    add(messageKey("Remove from List"), &VellumoAppDelegate::RemoveSelectedFile);
    add(messageKey("Remove Other Files"), &VellumoAppDelegate::RemoveOtherFiles)
        ->setEnabled(app.recentFiles().size() > 1);
    menu.addSeparator();
    add(messageKey("Show in File Manager"), &VellumoAppDelegate::ShowInFinder);
}

} // namespace

void popUpFileTreeMenu(QWidget& tree, VellumoAppDelegate& app, const TreeItem& item, const QPoint& globalPosition)
{
    if (item.isNone()) return;
    app.setClickedTreeItem(item);
    auto* menu = new QMenu(&tree);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (item.isTable()) {
        menu->addAction(localizedText("Open in New Window"), [&app] { app.OpenSelectedTableInNewWindow(); });
        menu->addSeparator();
    }
    addFileCommands(*menu, app, item.file->active());
    menu->addSeparator();
    addExportCommands(*menu->addMenu(localizedText("Export")), app);
    // The menu closes before the chosen command runs, which asks for the clicked row.
    QObject::connect(
        menu, &QMenu::aboutToHide, &tree, [&app] { app.setClickedTreeItem({}); }, Qt::QueuedConnection);
    menu->popup(globalPosition);
}

} // namespace vellumo
