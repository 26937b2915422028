// SPDX-License-Identifier: MIT
#pragma once

class QTableView;

namespace vellumo {

// Makes every column as wide as its title and a sample of its cells need, within limits. The cost does not depend on
// the number of rows.
void fitColumnWidths(QTableView& view);

} // namespace vellumo
