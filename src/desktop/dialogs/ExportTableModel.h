// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>

namespace vellumo {

class ExportWizard;

// The table list of the export dialog: check mark, table name, file name.
class ExportTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Selected, TableName, FileName };

    // The wizard outlives the model, and keeps its entries.
    ExportTableModel(ExportWizard& wizard, QObject* parent);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    // All entries may have changed.
    void reload();

private:
    [[nodiscard]] QVariant checkData(int row, int role) const;
    [[nodiscard]] QString text(int row, int column) const;

    ExportWizard& m_wizard;
};

} // namespace vellumo
