// SPDX-License-Identifier: MIT
#include "desktop/grid/DataViewWidget.h"

#include "browser/DataView.h"
#include "desktop/QtText.h"
#include "desktop/grid/JumpToRowSheet.h"
#include "ui_DataView.h"

#include <QHeaderView>

namespace vellumo {

DataViewWidget::DataViewWidget(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DataView>())
{
    m_ui->setupUi(this);
    m_ui->splitView->setStretchFactor(0, 3);
    m_ui->splitView->setStretchFactor(1, 1);
    m_ui->splitView->setSizes({300, 140});
    m_ui->jumpBar->hide();
}

DataViewWidget::~DataViewWidget() = default;

void DataViewWidget::setDataView(DataView& dataView)
{
    m_dataView = &dataView;
    m_ui->dataTableView->setDataView(dataView);
    m_ui->bottomTextView->setDataView(dataView);
    gridColumnsDidChange();
}

void DataViewWidget::setClearSearch(std::function<void()> clear)
{
    connect(m_ui->dataTableView, &GridView::clearSearchRequested, this, std::move(clear));
}

void DataViewWidget::fitColumns() { m_ui->dataTableView->fitColumns(); }

JumpBar& DataViewWidget::jumpBar() { return *m_ui->jumpBar; }

std::string DataViewWidget::layoutState() const { return m_ui->splitView->saveState().toBase64().toStdString(); }

void DataViewWidget::restoreLayout(const std::string& state)
{
    // A text that is no layout leaves it as it is.
    m_ui->splitView->restoreState(QByteArray::fromBase64(QByteArray::fromStdString(state)));
}

void DataViewWidget::setLayoutListener(std::function<void()> listener)
{
    connect(m_ui->splitView, &QSplitter::splitterMoved, this, listener);
    connect(m_ui->dataTableView->horizontalHeader(), &QHeaderView::sectionResized, this, listener);
    connect(m_ui->dataTableView->horizontalHeader(), &QHeaderView::sectionMoved, this, listener);
}

void DataViewWidget::gridColumnsDidChange() { m_ui->dataTableView->columnsDidChange(); }

void DataViewWidget::gridRowsDidChange() { m_ui->dataTableView->rowsDidChange(); }

void DataViewWidget::sortIndicatorsDidChange() { m_ui->dataTableView->sortIndicatorsDidChange(); }

void DataViewWidget::selectedRowsDidChange() { m_ui->dataTableView->selectedRowsDidChange(); }

void DataViewWidget::scrollToRow(std::size_t row) { m_ui->dataTableView->scrollToRow(row); }

void DataViewWidget::focusGrid() { m_ui->dataTableView->setFocus(Qt::OtherFocusReason); }

void DataViewWidget::focusCell(std::size_t column, std::size_t row) { m_ui->dataTableView->focusCell(column, row); }

void DataViewWidget::detailDidChange() { m_ui->bottomTextView->detailDidChange(); }

void DataViewWidget::setTextViewShown(bool isShown) { m_ui->bottomTextView->setVisible(isShown); }

void DataViewWidget::setJumpBarShown(bool isShown) { m_ui->jumpBar->setVisible(isShown); }

void DataViewWidget::askForRow(const std::string& title, const std::string& prompt)
{
    auto* sheet = new JumpToRowSheet(toQString(title), toQString(prompt), window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::accepted, this, [this, sheet] { m_dataView->jumpToRowConfirmed(sheet->number()); });
    sheet->open();
}

} // namespace vellumo
