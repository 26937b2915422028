// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>

class QPoint;

namespace vellumo {

class DataView;
class GridView;

// Opens the context menu of a grid for the cell at `index` (invalid: beside the rows). While it is open the cell's row
// counts as clicked.
void popUpGridMenu(GridView& grid, DataView& dataView, const QModelIndex& index, const QPoint& globalPosition);

} // namespace vellumo
