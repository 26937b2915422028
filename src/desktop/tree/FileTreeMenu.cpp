#include "desktop/tree/FileTreeMenu.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/window/ExportMenu.h"

#include <QMenu>

namespace vellumo {

namespace {

using FileCommand = VellumoAppDelegate::FileCommand;
using Sender = VellumoAppDelegate::Sender;

void addFileCommands(QMenu& menu, VellumoAppDelegate& app)
{
    const auto add = [&](const char* key, FileCommand command, void (VellumoAppDelegate::*run)(Sender)) {
        menu.addAction(localizedText(key), [&app, run] { (app.*run)(Sender::TreeMenu); })
            ->setEnabled(app.canUse(command, Sender::TreeMenu));
    };
    add(messageKey("Open"), FileCommand::Open, &VellumoAppDelegate::OpenSelectedFile);
    add(messageKey("Close"), FileCommand::Close, &VellumoAppDelegate::CloseSelectedFile);
    menu.addSeparator();
    add(messageKey("Remove from List"), FileCommand::Remove, &VellumoAppDelegate::RemoveSelectedFile);
    add(messageKey("Remove Other Files"), FileCommand::RemoveOthers, &VellumoAppDelegate::RemoveOtherFiles);
    menu.addSeparator();
    add(messageKey("Show in File Manager"), FileCommand::ShowInFinder, &VellumoAppDelegate::ShowInFinder);
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
    addFileCommands(*menu, app);
    menu->addSeparator();
    auto* exports = menu->addMenu(localizedText("Export"));
    addExportCommands(*exports, app);
    exports->setEnabled(app.canExport());
    // The menu closes before the chosen command runs, which asks for the clicked row.
    QObject::connect(
        menu, &QMenu::aboutToHide, &tree, [&app] { app.setClickedTreeItem({}); }, Qt::QueuedConnection);
    menu->popup(globalPosition);
}

} // namespace vellumo
