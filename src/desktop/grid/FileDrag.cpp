#include "desktop/grid/FileDrag.h"

#include "desktop/QtText.h"

#include <QDrag>
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

} // namespace vellumo
