// SPDX-License-Identifier: MIT
#pragma once

#include "browser/TreeItem.h"

#include <QWidget>

#include <functional>

class QMenu;
class QToolButton;

namespace vellumo {

class JumpBarMenu;

// Two buttons that say which file and which table are shown. Their menus lead elsewhere: the first offers all files
// with their tables, the second the tables of the same file. The menus are made when they open; one that would be too
// long for a screen is a list to type in.
class JumpBar : public QWidget {
public:
    static constexpr std::size_t mostMenuItems = 30;
    using Select = std::function<void(const TreeItem&)>;

    explicit JumpBar(QWidget* parent = nullptr);

    // Once; the menu outlives the bar's use.
    void setMenu(const JumpBarMenu& menu, Select select);
    // The menu has other items or another selection.
    void selectionDidChange();

private:
    [[nodiscard]] QToolButton* makeButton(const char* nameKey, void (JumpBar::*fill)(QMenu&));
    void open(QToolButton& button, void (JumpBar::*fill)(QMenu&));
    void openList(QToolButton& button);
    void choose(const ItemId& id);
    void fillFiles(QMenu& menu);
    void fillTables(QMenu& menu);
    void addTables(QMenu& menu, TAdmMDBFile* file);
    void addItem(QMenu& menu, const std::string& title, const TreeItem& item);

    const JumpBarMenu* m_menu = nullptr;
    Select m_select;
    QToolButton* m_fileButton;
    QToolButton* m_tableButton;
};

} // namespace vellumo
