#include "desktop/dialogs/DamageSheet.h"

#include "browser/DamageDetails.h"
#include "desktop/QtText.h"
#include "desktop/dialogs/DamageModel.h"
#include "desktop/icons/IconLabel.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>

namespace vellumo {

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

} // namespace vellumo
