#pragma once

#include "browser/TreeItem.h"

class QPoint;
class QWidget;

namespace vellumo {

class VellumoAppDelegate;

// Opens the context menu of a row of the file list (no item: nothing happens). While it is open the row counts as
// clicked.
void popUpFileTreeMenu(QWidget& tree, VellumoAppDelegate& app, const TreeItem& item, const QPoint& globalPosition);

} // namespace vellumo
