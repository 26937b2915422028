#pragma once

#include <QAbstractTableModel>

#include <memory>

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

} // namespace vellumo
