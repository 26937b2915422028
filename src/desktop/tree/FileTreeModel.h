// SPDX-License-Identifier: MIT
#pragma once

#include "browser/TreeItem.h"

#include <QAbstractItemModel>
#include <QIcon>
#include <QStyledItemDelegate>
#include <vector>

namespace vellumo {

class VellumoAppDelegate;

// The file list for Qt's views: files, and below them the tables of those that are open. Keeps what was listed at the
// last reload, so that nothing in the views changes before they are told.
class FileTreeModel : public QAbstractItemModel {
public:
    // The grey text behind a name: the number of rows.
    static constexpr int RowCountRole = Qt::UserRole;
    // True for what is damaged.
    static constexpr int DamageRole = Qt::UserRole + 1;

    FileTreeModel(VellumoAppDelegate& app, QObject* parent);

    // Lists everything anew.
    void reload();
    // Takes away the tables of a file, which are about to go.
    void removeTablesOf(const TAdmMDBFile& file);

    [[nodiscard]] TreeItem item(const QModelIndex& index) const;
    // Invalid for an item that is not listed.
    [[nodiscard]] QModelIndex indexOf(const TreeItem& item) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    struct FileRow {
        TAdmMDBFile* file;
        std::vector<TAdmMDBTable*> tables;
    };
    // A table's index carries the number of its file's row + 1, a file's index carries 0.
    [[nodiscard]] const FileRow* fileRowOf(const QModelIndex& index) const;
    [[nodiscard]] QString spokenText(const TreeItem& item) const;
    [[nodiscard]] bool isMissing(const TreeItem& item) const;
    [[nodiscard]] QVariant toolTip(const TreeItem& item) const;
    [[nodiscard]] QVariant picture(const TreeItem& item) const;

    VellumoAppDelegate& m_app;
    QIcon m_tableIcon;
    QIcon m_openFileIcon;
    QIcon m_closedFileIcon;
    std::vector<FileRow> m_rows;
};

// Draws a row of the file list: the name, elided where there is no room, behind it the grey number of
// rows, and a warning where something is damaged.
class FileTreeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace vellumo
