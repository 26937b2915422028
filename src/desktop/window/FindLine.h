// SPDX-License-Identifier: MIT
#pragma once

#include <QStatusBar>

class QLabel;
class QLineEdit;

namespace vellumo {

class DataView;

// The line at the bottom of a table window: which records are selected, and a field that finds records without hiding
// others. Enter leads to the next one, Shift+Enter to the one before, Escape back to the grid.
class FindLine : public QStatusBar {
public:
    explicit FindLine(QWidget* parent);

    // Once; it outlives the line's use.
    void setDataView(DataView& dataView);
    // Other records are selected or shown.
    void recordsDidChange();
    void focusField();
    // `step` 1 or -1. Beeps when nothing is found.
    void findNext(int step);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    DataView* m_dataView = nullptr;
    QLabel* m_status;
    QLineEdit* m_field;
    QLabel* m_found;
};

} // namespace vellumo
