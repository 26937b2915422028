#include "desktop/window/ExportMenu.h"

#include "browser/ToolbarDescription.h"
#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QMenu>

namespace vellumo {

void addExportCommands(QMenu& menu, VellumoAppDelegate& app)
{
    for (const auto& item : toolbarItems()) {
        if (item.command != ToolbarCommand::Export) continue;
        auto* action = menu.addAction(icon(toQString(item.iconName)), toQString(item.label()) + QStringLiteral("…"),
            [&app, tag = item.exportTag] { app.Export(tag); });
        action->setObjectName(toQString(item.identifier));
    }
}

} // namespace vellumo
