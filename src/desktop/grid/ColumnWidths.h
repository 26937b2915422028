// SPDX-License-Identifier: MIT
#pragma once

class QTableView;

namespace vellumo {

class DataView;

// How wide a column of the grid is, for its title and its texts. What a search hides counts as well.

// Within narrow limits, by a sample of the table: costs the same for any number of rows.
[[nodiscard]] int usualColumnWidth(const QTableView& view, const DataView& dataView, int column);
// Within wide limits, by the longest texts of the table.
[[nodiscard]] int fittedColumnWidth(const QTableView& view, const DataView& dataView, int column);

} // namespace vellumo
