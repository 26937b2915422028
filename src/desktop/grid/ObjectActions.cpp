// SPDX-License-Identifier: MIT
#include "desktop/grid/ObjectActions.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"

#include <QDrag>
#include <QMenu>
#include <QMimeData>
#include <QPixmap>
#include <QUrl>
#include <QWidget>

namespace vellumo {

void dragFile(QWidget& source, const std::string& path, const QPixmap& picture)
{
    if (path.empty()) return;
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(toQString(path))});
    auto* drag = new QDrag(&source); // Qt destroys it after the drop
    drag->setMimeData(data);
    if (!picture.isNull()) drag->setPixmap(picture);
    drag->exec(Qt::CopyAction);
}

void addObjectActions(QMenu& menu, DataView& dataView)
{
    if (!dataView.detail().object) return;
    menu.addSeparator();
    auto* open = menu.addAction(localizedText("Open Object"), [&dataView] { dataView.openObject(); });
    open->setEnabled(dataView.canOpenObject());
    menu.addAction(localizedText("Save Object As…"), [&dataView] { dataView.saveObjectAs(); });
}

} // namespace vellumo
