// SPDX-License-Identifier: MIT
#include "desktop/dialogs/ExportDialog.h"

#include "desktop/QtText.h"
#include "desktop/dialogs/ExportTableModel.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "ui_ExportWizard.h"

#include <QFontDatabase>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

namespace vellumo {

namespace {

constexpr double largestPart = 0.9; // of the screen

// A widget that has a row of the form goes with its label, and leaves no gap. None of these wraps its text: the form
// (of Qt 6.4) writes behind its memory where such a row is hidden.
void setShown(QFormLayout& form, QWidget* widget, bool isShown)
{
    if (form.indexOf(widget) >= 0)
        form.setRowVisible(widget, isShown);
    else
        widget->setVisible(isShown);
}

// The options: as high as they are where the screen has the room, and scrolled where it has not.
class OptionsArea : public QScrollArea {
public:
    OptionsArea()
    {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const auto hint = widget()->sizeHint();
        const auto width = std::max(hint.width(), viewport()->width());
        return {
            hint.width() + barWidth(), widget()->hasHeightForWidth() ? widget()->heightForWidth(width) : hint.height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        constexpr int leastHeight = 160;
        return {widget()->minimumSizeHint().width() + barWidth(), leastHeight};
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool isFiltered = QScrollArea::eventFilter(watched, event);
        if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
        return isFiltered;
    }

private:
    [[nodiscard]] int barWidth() const { return verticalScrollBar()->sizeHint().width(); }
};

} // namespace

ExportDialog::ExportDialog(std::shared_ptr<ExportWizard> wizard, QWidget* parent)
    : QDialog(parent)
    , m_wizard(std::move(wizard))
    , m_ui(std::make_unique<Ui::ExportWizard>())
    , m_tables(new ExportTableModel(*m_wizard, this))
{
    m_ui->setupUi(this);
    setUpOptions();
    const auto& file = m_wizard->exportFile();
    setWindowTitle(toQString(format("%@ – %@.%@",
        {localized(exportFormat(m_wizard->exportFileType()).commandKey), file.name(), file.fileExtension()})));
    setUpTableList();
    setUpHints();
    connectCheckBoxes();
    connectFields();
    connectButtons();
    setUpPreview();
    m_wizard->setView(this);
    showControls();
    resize(size().boundedTo(parent == nullptr ? size() : parent->screen()->availableSize() * largestPart));
    growToOptions();
    m_ui->tableSelectionTableView->setFocus();
}

ExportDialog::~ExportDialog()
{
    if (!m_hasEnded) m_wizard->setView(nullptr);
}

void ExportDialog::setUpOptions()
{
    auto* group = m_ui->optionsGroup;
    const auto place = m_ui->columnsLayout->indexOf(group);
    auto* area = new OptionsArea;
    area->setWidget(group); // out of the layout
    m_ui->columnsLayout->insertWidget(place, area);
}

// What comes to be said of the options makes room for itself.
void ExportDialog::growToOptions()
{
    const auto most = screen()->availableSize() * largestPart;
    const auto wanted = std::min(sizeHint().height(), most.height());
    if (wanted > height()) resize(width(), wanted);
}

void ExportDialog::setUpTableList()
{
    auto* view = m_ui->tableSelectionTableView;
    view->setModel(m_tables);
    auto* header = view->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter); // as what stands below
    header->setSectionResizeMode(ExportTableModel::Selected, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(ExportTableModel::TableName, QHeaderView::Stretch);
    header->setSectionResizeMode(ExportTableModel::FileName, QHeaderView::Stretch);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    const auto ticked =
        m_tables->match(m_tables->index(0, ExportTableModel::Selected), Qt::CheckStateRole, Qt::Checked);
    const auto current = ticked.isEmpty() ? m_tables->index(0, ExportTableModel::TableName) : ticked.first();
    if (current.isValid()) view->setCurrentIndex(current.siblingAtColumn(ExportTableModel::TableName));
    // The space bar works on whole rows, whichever cell has the frame.
    auto* space = new QShortcut(QKeySequence(Qt::Key_Space), view, nullptr, nullptr, Qt::WidgetShortcut);
    connect(space, &QShortcut::activated, this, &ExportDialog::toggleSelectedRows);
}

void ExportDialog::setUpPreview()
{
    constexpr int delayMs = 150;
    m_ui->previewText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    constexpr int longestColumn = 240;
    m_ui->previewTable->setVisible(false);
    m_ui->previewTable->horizontalHeader()->setMaximumSectionSize(longestColumn);
    m_ui->previewTable->horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    m_ui->previewTable->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_previewTimer.setSingleShot(true);
    m_previewTimer.setInterval(delayMs);
    connect(&m_previewTimer, &QTimer::timeout, this, &ExportDialog::showPreview);
}

void ExportDialog::showPreview()
{
    const auto preview = m_wizard->preview();
    const bool isTable = !preview.columns.empty();
    m_ui->previewText->setPlainText(toQString(preview.text));
    showPreviewTable(preview);
    m_ui->previewText->setVisible(!isTable);
    m_ui->previewTable->setVisible(isTable);
    m_ui->previewLabel->setBuddy(isTable ? static_cast<QWidget*>(m_ui->previewTable) : m_ui->previewText);
    QStringList remarks;
    for (const auto& remark : preview.remarks)
        remarks << toQString(remark);
    m_ui->previewHint->setContent("information", remarks.join('\n'));
    m_ui->previewHint->setVisible(!remarks.isEmpty());
}

// The names of the columns above their kinds; a null of a database as a word that is no value.
void ExportDialog::showPreviewTable(const ExportPreview& preview)
{
    auto& table = *m_ui->previewTable;
    table.clear();
    table.setColumnCount(static_cast<int>(preview.columns.size()));
    table.setRowCount(static_cast<int>(preview.rows.size()));
    QStringList titles;
    for (const auto& column : preview.columns)
        titles << toQString(column.name + '\n' + column.kind);
    table.setHorizontalHeaderLabels(titles);
    for (int r = 0; r < table.rowCount(); ++r)
        for (int c = 0; c < table.columnCount(); ++c) {
            const auto& value = preview.rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
            auto* item = new QTableWidgetItem(toQString(value.value_or("NULL")));
            if (!value) item->setForeground(palette().color(QPalette::PlaceholderText));
            table.setItem(r, c, item);
        }
    table.resizeColumnsToContents();
}

void ExportDialog::findingsChanged()
{
    showFindings();
    QTimer::singleShot(0, this, &ExportDialog::growToOptions);
}

void ExportDialog::showFindings()
{
    QStringList lines;
    for (const auto& line : m_wizard->findings())
        lines << toQString(line);
    m_ui->findingsLabel->setContent("warning", lines.join('\n'));
    m_ui->findingsLabel->setVisible(!lines.isEmpty());
}

void ExportDialog::setUpHints()
{
    m_hintLabels = {{m_ui->tablesHint, ExportHint::Place::Tables}, {m_ui->contentsHint, ExportHint::Place::Contents},
        {m_ui->objectsHint, ExportHint::Place::Objects}, {m_ui->pathHint, ExportHint::Place::Path}};
}

void ExportDialog::connectCheckBox(QCheckBox* box, CheckBox ExportControls::*control, Action action)
{
    connect(box, &QCheckBox::clicked, this, [=, this](bool isChecked) {
        (m_wizard->controls().*control).value = isChecked;
        perform(action);
    });
    m_refreshers.emplace_back([=, this] {
        const auto& state = m_wizard->controls().*control;
        box->setChecked(state.value);
        box->setEnabled(state.isEnabled);
        setShown(*m_ui->optionsLayout, box, state.isVisible);
    });
}

void ExportDialog::connectPopup(QComboBox* box, Popup ExportControls::*control, Action action)
{
    for (const auto& item : (m_wizard->controls().*control).items)
        box->addItem(toQString(item.title), item.tag);
    connect(box, &QComboBox::activated, this, [=, this](int index) {
        (m_wizard->controls().*control).selectedTag = box->itemData(index).toUInt();
        perform(action);
    });
    m_refreshers.emplace_back([=, this] {
        const auto& state = m_wizard->controls().*control;
        box->setCurrentIndex(box->findData(state.selectedTag));
        box->setEnabled(state.isEnabled);
        setShown(*m_ui->optionsLayout, box, state.isVisible);
    });
}

void ExportDialog::connectTextField(QLineEdit* field, TextField ExportControls::*control, Action action)
{
    connect(field, &QLineEdit::textEdited, this, [=, this](const QString& text) {
        (m_wizard->controls().*control).value = fromQString(text);
        perform(action);
    });
    m_refreshers.emplace_back([=, this] {
        const auto& state = m_wizard->controls().*control;
        // Setting the same text would move the cursor while the user types.
        if (const auto text = toQString(state.value); field->text() != text) field->setText(text);
        field->setEnabled(state.isEnabled);
        setShown(*m_ui->optionsLayout, field, state.isVisible);
    });
}

void ExportDialog::perform(Action action)
{
    if (action == nullptr)
        showHints();
    else
        (*m_wizard.*action)();
}

void ExportDialog::connectCheckBoxes()
{
    using Controls = ExportControls;
    connectCheckBox(
        m_ui->exportSingleFileCheckBox, &Controls::exportSingleFileCheckBox, &ExportWizard::exportSingleFile);
    connectCheckBox(m_ui->exactCheckBox, &Controls::exactCheckBox, &ExportWizard::changeExact);
    connectCheckBox(m_ui->includeColumnHeaderCheckBox, &Controls::includeColumnHeaderCheckBox, nullptr);
    connectCheckBox(m_ui->byteOrderMarkCheckBox, &Controls::byteOrderMarkCheckBox, nullptr);
    connectCheckBox(m_ui->guardFormulasCheckBox, &Controls::guardFormulasCheckBox, nullptr);
    connectCheckBox(
        m_ui->exportStructureCheckBox, &Controls::exportStructureCheckBox, &ExportWizard::exportTableStructure);
    connectCheckBox(m_ui->includeDropTableCheckBox, &Controls::includeDropTableCheckBox, nullptr);
    connectCheckBox(m_ui->includeForeignKeyCheckBox, &Controls::includeForeignKeyCheckBox, nullptr);
    connectCheckBox(m_ui->includeIndexCheckBox, &Controls::includeIndexCheckBox, nullptr);
    connectCheckBox(m_ui->exportDataCheckBox, &Controls::exportDataCheckBox, &ExportWizard::exportTableData);
}

void ExportDialog::connectFields()
{
    using Controls = ExportControls;
    connectPopup(m_ui->rowsPopup, &Controls::rowsPopup, &ExportWizard::changeRows);
    connectPopup(m_ui->columnsPopup, &Controls::columnsPopup, &ExportWizard::changeRows);
    connectPopup(m_ui->fieldDelimiterPopup, &Controls::fieldDelimiterPopup, &ExportWizard::changeFieldDelimiter);
    connectPopup(m_ui->recordDelimiterPopup, &Controls::recordDelimiterPopup, nullptr);
    connectPopup(m_ui->encodingPopup, &Controls::encodingPopup, nullptr);
    connectPopup(m_ui->sqlFormatPopup, &Controls::sqlFormatPopup, &ExportWizard::changeSQLFormat);
    connectTextField(m_ui->decimalSymbolTextField, &Controls::decimalSymbolTextField, nullptr);
    connectTextField(m_ui->schemaNameTextField, &Controls::schemaNameTextField, nullptr);
    connectTextField(m_ui->objectsFolderTextField, &Controls::objectsFolderTextField, nullptr);
    connectTextField(m_ui->exportPathTextField, &Controls::exportPathTextField, &ExportWizard::enableOkButtonCheck);
}

void ExportDialog::connectButtons()
{
    const auto forward = [this](QPushButton* button, Action action) {
        connect(button, &QPushButton::clicked, this, [=, this] { perform(action); });
    };
    forward(m_ui->selectAllButton, &ExportWizard::selectAll);
    forward(m_ui->deselectAllButton, &ExportWizard::deselectAll);
    forward(m_ui->exportPathButton, &ExportWizard::selectExportPath);
    m_ui->objectsFolderButton->setIcon(icon("open_folder"));
    forward(m_ui->objectsFolderButton, &ExportWizard::selectObjectsFolder);
    auto* ok = m_ui->buttonBox->button(QDialogButtonBox::Ok);
    ok->setText(localizedText("Exp&ort"));
    ok->setDefault(true);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &ExportDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
    // A new file name may be one that exists.
    connect(m_tables, &ExportTableModel::dataChanged, this, &ExportDialog::showHints);
}

void ExportDialog::toggleSelectedRows()
{
    auto* view = m_ui->tableSelectionTableView;
    const auto current = view->currentIndex();
    if (!current.isValid()) return;
    const auto currentBox = current.siblingAtColumn(ExportTableModel::Selected);
    const auto state = currentBox.data(Qt::CheckStateRole) == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    m_tables->setData(currentBox, state, Qt::CheckStateRole);
    for (const auto& row : view->selectionModel()->selectedRows(ExportTableModel::Selected))
        m_tables->setData(row, state, Qt::CheckStateRole);
}

void ExportDialog::controlsChanged() { showControls(); }

void ExportDialog::showControls()
{
    for (const auto& refresh : m_refreshers)
        refresh();
    showRows();
    showHints();
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(m_wizard->controls().isOkButtonEnabled);
}

void ExportDialog::showRows()
{
    const auto& controls = m_wizard->controls();
    m_ui->exportPathLabel->setText("&" + toQString(controls.exportPathLabel));
    // The options of the structure stand below its check box, or alone where that is hidden.
    const int indent = style()->pixelMetric(QStyle::PM_IndicatorWidth) + fontMetrics().averageCharWidth();
    m_ui->structureLayout->setContentsMargins(controls.exportStructureCheckBox.isVisible ? indent : 0, 0, 0, 0);
    m_ui->optionsLayout->setRowVisible(m_ui->structureOptions,
        controls.includeDropTableCheckBox.isVisible || controls.includeForeignKeyCheckBox.isVisible
            || controls.includeIndexCheckBox.isVisible);
    m_ui->optionsLayout->setRowVisible(m_ui->objectsRow, controls.objectsFolderTextField.isVisible);
    m_ui->objectsFolderButton->setEnabled(controls.objectsFolderTextField.isEnabled);
    m_ui->tableSelectionTableView->setColumnHidden(ExportTableModel::FileName, !controls.isFileNameColumnVisible);
}

void ExportDialog::showHints()
{
    const auto hints = m_wizard->hints();
    for (const auto& [label, place] : m_hintLabels)
        label->show(hints, place);
    m_ui->exportPathTextField->setAccessibleDescription(m_ui->pathHint->text());
    QStringList missing;
    for (const auto& hint : hints)
        if (hint.kind == ExportHint::Kind::Missing) missing << toQString(hint.text);
    auto* ok = m_ui->buttonBox->button(QDialogButtonBox::Ok);
    ok->setToolTip(missing.join('\n'));
    ok->setAccessibleDescription(missing.join(' '));
    showFindings();
    m_previewTimer.start();
    QTimer::singleShot(0, this, &ExportDialog::growToOptions);
}

void ExportDialog::reloadTableList() { m_tables->reload(); }

void ExportDialog::accept()
{
    if (m_wizard->controls().isOkButtonEnabled) m_wizard->ok();
}

void ExportDialog::reject() { m_wizard->cancel(); }

void ExportDialog::endSheet(int returnCode)
{
    done(returnCode);
    QMetaObject::invokeMethod(
        this,
        [this, returnCode] {
            m_hasEnded = true;
            m_wizard->setView(nullptr);
            emit sheetEnded(returnCode);
            deleteLater();
        },
        Qt::QueuedConnection);
}

} // namespace vellumo
