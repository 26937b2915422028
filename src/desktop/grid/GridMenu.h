// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>

class QPoint;
class QWidget;

namespace vellumo {

class DataView;

// Opens the context menu of a grid for the cell at `index` (invalid: beside the rows). While it is open the cell's row
// counts as clicked.
void popUpGridMenu(QWidget& grid, DataView& dataView, const QModelIndex& index, const QPoint& globalPosition);

} // namespace vellumo
