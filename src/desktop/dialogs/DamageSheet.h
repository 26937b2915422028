// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <QAbstractTableModel>
#include <QDialog>
#include <memory>

class QCheckBox;

namespace vellumo {

class DamageDetails;

// The list of what a file lost for Qt's views. Texts are made when they are asked for.
class DamageModel : public QAbstractTableModel {
public:
    DamageModel(std::shared_ptr<const DamageDetails> details, QObject* parent);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::shared_ptr<const DamageDetails> m_details;
};

class DamageDetails;

// What a damaged file lost, as a list over a window, which can be copied and saved.
class DamageSheet : public QDialog {
public:
    DamageSheet(const std::shared_ptr<DamageDetails>& details, QWidget* window);
};

// Asks, over a window, what of a file to look for beside its sound content.
class SalvageSheet : public QDialog {
public:
    explicit SalvageSheet(QWidget* window);

    [[nodiscard]] Salvage salvage() const;

private:
    QCheckBox* m_withDeleted;
};

} // namespace vellumo
