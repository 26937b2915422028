// SPDX-License-Identifier: MIT
#include "desktop/dialogs/ExportTableModel.h"

#include "desktop/QtText.h"
#include "export/wizard/ExportWizard.h"

namespace vellumo {

namespace {

constexpr std::string_view identifiers[] = {"selected", "tablename", "filename"};

} // namespace

ExportTableModel::ExportTableModel(ExportWizard& wizard, QObject* parent)
    : QAbstractTableModel(parent)
    , m_wizard(wizard)
{
}

int ExportTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_wizard.numberOfRowsInTableView());
}

int ExportTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(std::size(identifiers));
}

QString ExportTableModel::text(int row, int column) const
{
    const auto value = m_wizard.objectValueForTableColumn(identifiers[column], static_cast<std::size_t>(row));
    const auto* found = std::get_if<std::string>(&value);
    return found == nullptr ? QString() : toQString(*found);
}

QVariant ExportTableModel::checkData(int row, int role) const
{
    // The cell shows no text, so it is spoken by the table's name.
    if (role == Qt::AccessibleTextRole) return text(row, TableName);
    if (role != Qt::CheckStateRole) return {};
    const auto value = m_wizard.objectValueForTableColumn(identifiers[Selected], static_cast<std::size_t>(row));
    return value == TableListValue(true) ? Qt::Checked : Qt::Unchecked;
}

QVariant ExportTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    if (index.column() == Selected) return checkData(index.row(), role);
    // The tool tip is for names that are longer than their column.
    if (role == Qt::DisplayRole || role == Qt::EditRole) return text(index.row(), index.column());
    return role == Qt::ToolTipRole ? plainToolTip(text(index.row(), index.column())) : QVariant();
}

QVariant ExportTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) return {};
    if (section == Selected && role == Qt::AccessibleTextRole) return localizedText("Selected");
    if (role != Qt::DisplayRole) return {};
    return toQString(m_wizard.tableListColumns().at(static_cast<std::size_t>(section)).header);
}

Qt::ItemFlags ExportTableModel::flags(const QModelIndex& index) const
{
    auto flags = QAbstractTableModel::flags(index);
    if (!index.isValid()) return flags;
    if (!m_wizard.shouldEditTableColumn(identifiers[index.column()], static_cast<std::size_t>(index.row())))
        return flags;
    return flags | (index.column() == Selected ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool ExportTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid()) return false;
    TableListValue entered;
    if (index.column() == Selected && role == Qt::CheckStateRole)
        entered = value.toInt() == Qt::Checked;
    else if (index.column() == FileName && role == Qt::EditRole)
        entered = fromQString(value.toString());
    else
        return false;
    m_wizard.setObjectValueForTableColumn(entered, identifiers[index.column()], static_cast<std::size_t>(index.row()));
    emit dataChanged(index, index);
    return true;
}

void ExportTableModel::reload()
{
    if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

} // namespace vellumo
