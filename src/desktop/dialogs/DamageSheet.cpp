// SPDX-License-Identifier: MIT
#include "desktop/dialogs/DamageSheet.h"

#include "browser/DamageDetails.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>

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

namespace {

QTableView* makeList(const std::shared_ptr<DamageDetails>& details, QWidget* parent)
{
    auto* list = new QTableView(parent);
    list->setObjectName("damageList");
    list->setAccessibleName(toQString(details->title()));
    list->setModel(new DamageModel(details, list));
    list->setSelectionBehavior(QTableView::SelectRows);
    list->setWordWrap(false);
    list->setShowGrid(false);
    list->setAlternatingRowColors(true);
    list->setTabKeyNavigation(false);
    list->verticalHeader()->hide();
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 6);
    list->horizontalHeader()->setResizeContentsPrecision(200); // rows looked at for the widths: there may be thousands
    list->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    return list;
}

// As wide as its contents, but a name from the file must not push everything else out of sight.
void fitColumns(QTableView& list)
{
    list.resizeColumnsToContents();
    const auto most = list.fontMetrics().averageCharWidth() * 20;
    for (int column = 0; column < list.model()->columnCount(); ++column)
        list.setColumnWidth(column, std::min(list.columnWidth(column), most));
}

} // namespace

DamageSheet::DamageSheet(const std::shared_ptr<DamageDetails>& details, QWidget* window)
    : QDialog(window, Qt::Sheet)
{
    setObjectName("damageSheet");
    setWindowTitle(toQString(details->title()));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* summary = new IconLabel(this);
    summary->setContent("warning", toQString(details->summary()));
    auto* list = makeList(details, this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* copy = buttons->addButton(localizedText("Copy"), QDialogButtonBox::ActionRole);
    auto* save = buttons->addButton(localizedText("Save…"), QDialogButtonBox::ActionRole);
    copy->setObjectName("copyDamage");
    copy->setShortcut(QKeySequence::Copy);
    save->setObjectName("saveDamage");
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    connect(copy, &QPushButton::clicked, this, [details] { details->copy(); });
    connect(save, &QPushButton::clicked, this, [details] { details->save(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(summary);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    resize(QSize(760, 420).boundedTo(window->screen()->availableSize() * 0.9));
    fitColumns(*list);
    list->setFocus();
}

SalvageSheet::SalvageSheet(QWidget* window)
    : QDialog(window, Qt::Sheet)
    , m_withDeleted(new QCheckBox(localizedText("Also deleted rows"), this))
{
    const auto title = localizedText("Look for lost rows");
    setObjectName("salvageSheet");
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_withDeleted->setObjectName("withDeletedRows");
    auto* text =
        new QLabel(localizedText("The file is read again, and searched for tables and rows that it holds but no "
                                 "longer lists. What is found is shown as tables of their own. The file itself "
                                 "stays as it is."),
            this);
    text->setWordWrap(true);
    text->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(title, QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_withDeleted);
    layout->addWidget(buttons);
}

Salvage SalvageSheet::salvage() const
{
    return m_withDeleted->isChecked() ? Salvage::LostAndDeletedRows : Salvage::LostRows;
}

} // namespace vellumo
