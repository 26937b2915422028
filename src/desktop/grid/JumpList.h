// SPDX-License-Identifier: MIT
#pragma once

#include "browser/TreeItem.h"

#include <QFrame>

#include <functional>
#include <vector>

class QLineEdit;
class QListView;
class QModelIndex;
class QSortFilterProxyModel;

namespace vellumo {

// A menu of very many items: a list below a field that narrows it. Typing narrows, the arrow keys move, Enter chooses,
// Escape closes. Destroys itself.
class JumpList : public QFrame {
public:
    struct Entry {
        QString title;
        ItemId item;
        bool isCurrent = false;
    };
    using Choose = std::function<void(const ItemId&)>;

    JumpList(std::vector<Entry> entries, Choose choose, QWidget* parent);

    // Below the widget, or where the screen has room.
    void popUpBelow(const QWidget& widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void narrow(const QString& text);
    void chooseEntry(const QModelIndex& index);

    std::vector<Entry> m_entries;
    Choose m_choose;
    QLineEdit* m_filter;
    QListView* m_list;
    QSortFilterProxyModel* m_narrowed;
};

} // namespace vellumo
