#include "desktop/dialogs/DamageModel.h"

#include "browser/DamageDetails.h"
#include "desktop/QtText.h"

namespace vellumo {

namespace {

using Column = DamageDetails::Column;

int alignment(Column column)
{
    return static_cast<int>((DamageDetails::isNumber(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

DamageModel::DamageModel(std::shared_ptr<const DamageDetails> details, QObject* parent)
    : QAbstractTableModel(parent)
    , m_details(std::move(details))
{
}

int DamageModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_details->rowCount());
}

int DamageModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(DamageDetails::columnCount);
}

QVariant DamageModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const auto column = static_cast<Column>(index.column());
    if (role == Qt::TextAlignmentRole) return alignment(column);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const auto text = toQString(m_details->text(static_cast<std::size_t>(index.row()), column));
    return role == Qt::ToolTipRole ? plainToolTip(text) : text; // for what is longer than its column
}

QVariant DamageModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) return {};
    const auto column = static_cast<Column>(section);
    if (role == Qt::TextAlignmentRole) return alignment(column);
    return role == Qt::DisplayRole ? toQString(DamageDetails::header(column)) : QVariant();
}

} // namespace vellumo
