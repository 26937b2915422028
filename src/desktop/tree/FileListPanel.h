// SPDX-License-Identifier: MIT
#pragma once

#include "browser/TreeItem.h"

#include <QWidget>
#include <set>

class QAction;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTimer;
class QTreeView;

namespace vellumo {

class FileTreeModel;
class VellumoAppDelegate;

// The file list: a filter field above the tree of files and tables, or an invitation to drop files while there are
// none. Remembers which files are expanded.
class FileListPanel : public QWidget {
public:
    // `app` outlives the panel's use.
    FileListPanel(VellumoAppDelegate& app, QWidget* parent);

    // How long a table has to stay selected to count as visited, unless it was clicked.
    static constexpr int visitDelayMs = 800;

    void focusFilter();
    // The command's keys work only while the tree has the keyboard.
    void addCommand(QAction& command);

    // What changed in the controller.
    void reload();
    void fileWillClose(TAdmMDBFile& file);
    void expand(TAdmMDBFile& file);
    void collapse(TAdmMDBFile& file);
    void selectionDidChange();
    void scrollToSelection();
    void placeholderDidChange();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpTree();
    [[nodiscard]] QWidget* makePlaceholder();
    void showDropPicture();
    void restoreExpansion();
    [[nodiscard]] bool beginAtFirstRow(int key);
    void userSelected();
    void openCurrent();
    void popUpMenu(const QPoint& position);

    VellumoAppDelegate& m_app;
    FileTreeModel* m_model;
    QLineEdit* m_filter;
    QTreeView* m_tree;
    QStackedWidget* m_pages;
    QTimer* m_visitLater;
    QLabel* m_dropPicture = nullptr;
    std::set<const TAdmMDBFile*> m_expanded; // of the list; never dereferenced
    bool m_isFollowing = false;              // the tree takes over what the controller has
};

} // namespace vellumo
