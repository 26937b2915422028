// SPDX-License-Identifier: MIT
#pragma once

class QAction;
class QWidget;

namespace vellumo {

class DataView;

// The editing commands of a window with a grid. Copy and Select All mean the field or list that has the keyboard, and
// the grid otherwise.
struct EditActions {
    QAction* copy;
    QAction* selectAll;
    QAction* deselectAll;
    QAction* jumpToRow;

    // Which of them can be used now.
    void update(DataView& dataView) const;
};

// Makes them with their shortcuts and adds them to `window`. The DataView outlives their use.
[[nodiscard]] EditActions makeEditActions(QWidget& window, DataView& dataView);

} // namespace vellumo
