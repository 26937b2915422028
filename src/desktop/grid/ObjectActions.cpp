#include "desktop/grid/ObjectActions.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"

#include <QMenu>

namespace vellumo {

void addObjectActions(QMenu& menu, DataView& dataView)
{
    if (!dataView.detail().object) return;
    menu.addSeparator();
    auto* open = menu.addAction(localizedText("Open Object"), [&dataView] { dataView.openObject(); });
    open->setEnabled(dataView.canOpenObject());
    menu.addAction(localizedText("Save Object As…"), [&dataView] { dataView.saveObjectAs(); });
}

} // namespace vellumo
