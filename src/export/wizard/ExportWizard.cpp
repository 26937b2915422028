// SPDX-License-Identifier: MIT
#include "export/wizard/ExportWizard.h"

#include "export/ChosenTable.h"
#include "export/ClassicFindings.h"
#include "export/RunExport.h"
#include "export/sql/SQLDialectFacts.h"
#include "export/wizard/RememberedOptions.h"
#include "model/TAdmMDBFile.h"
#include "platform/Alerts.h"
#include "platform/Defaults.h"
#include "platform/FilePanels.h"
#include "platform/MainThread.h"
#include "platform/SystemLog.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <system_error>

namespace vellumo {

namespace {

constexpr std::string_view exportFilePathKey = "exportFilePath";

std::string parentFolder(std::string_view path)
{
    const auto slash = path.rfind('/');
    if (slash == 0) return "/";
    return std::string(slash == std::string_view::npos ? std::string_view() : path.substr(0, slash));
}

bool hasExtension(std::string_view path, std::string_view extension)
{
    if (path.size() <= extension.size() || path[path.size() - extension.size() - 1] != '.') return false;
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::ranges::equal(path.substr(path.size() - extension.size()), extension, {}, lower, lower);
}

} // namespace

ExportWizard::ExportWizard(
    TAdmMDBFile& file, const TAdmMDBTable* selectedTable, ExportFileType exportFileType, const ExportPorts& ports)
    : m_exportFile(file)
    , m_exportFileType(exportFileType)
    , m_ports(ports)
    , m_controls(controlsForFormat(exportFormat(exportFileType), selectedTable == nullptr))
    , m_selectedTable(selectedTable == nullptr)
{
    // A file that does not open is left without tables, and the OK button stays disabled.
    if (!file.active()) static_cast<void>(file.open());
    m_tableEntries.reserve(file.tables().size());
    for (const auto& table : file.tables()) {
        auto& entry = m_tableEntries.emplace_back(ExportEntry::exportEntryWithTableName(table->name(), exportFileType));
        entry.selected = m_selectedTable || table->name() == selectedTable->name();
        if (entry.selected) ++m_selectedTableCount;
    }
    if (selectedTable != nullptr) m_shownTableName = selectedTable->name();
    recallOptions(ports.defaults, formatInfo(), m_controls);
    layOutControls();
}

ExportWizard::~ExportWizard()
{
    if (m_worker.joinable()) m_worker.join();
}

void ExportWizard::setView(ExportWizardView* view) { m_view = view == nullptr ? &m_noView : view; }

void ExportWizard::layOutControls()
{
    m_bookmarkedFolder = m_ports.defaults.string(exportFilePathKey).value_or("");
    m_controls.exportPathTextField.value = m_bookmarkedFolder;
    updateExportSingleFileLabels();
    changeSQLFormat();
    enableForStyle(formatInfo(), m_controls);
    exportTableStructure();
}

void ExportWizard::offerShownTable(ShownTable shown)
{
    if (m_shownTableName.empty()) return;
    offerShownRows(!shown.selectedRows.empty(), m_controls);
    m_shown = std::move(shown);
    m_view->controlsChanged();
}

TableChoice ExportWizard::chosenOfShownTable() const
{
    TableChoice choice;
    if (!m_shown) return choice;
    const auto rows = static_cast<RowsToExport>(m_controls.rowsPopup.selectedTag);
    if (rows == RowsToExport::Shown) choice.rows = m_shown->rows;
    if (rows == RowsToExport::Selected) choice.rows = m_shown->selectedRows;
    if (static_cast<ColumnsToExport>(m_controls.columnsPopup.selectedTag) == ColumnsToExport::Shown)
        choice.columns = m_shown->columns;
    return choice;
}

void ExportWizard::applyChoice()
{
    for (auto& entry : m_tableEntries)
        if (entry.tableName == m_shownTableName) entry.choice = chosenOfShownTable();
}

void ExportWizard::changeRows()
{
    applyChoice();
    m_scans.reset(); // other rows, other findings
    m_view->controlsChanged();
}

void ExportWizard::lookAtTables()
{
    std::vector<TableScans::Wanted> wanted;
    const auto want = [&](bool isSelected) {
        for (const auto& entry : m_tableEntries)
            if (const auto* table = m_exportFile.findTable(entry.tableName); table && entry.selected == isSelected)
                wanted.push_back({table, entry.choice});
    };
    want(true); // what is shown first
    want(false);
    const auto* relationsOf = formatInfo().has(ExportOption::ForeignKeys) ? &m_exportFile : nullptr;
    m_scans = std::make_unique<TableScans>(
        std::move(wanted), relationsOf, m_ports.mainThread, [this] { m_view->findingsChanged(); });
}

std::vector<std::string> ExportWizard::findings()
{
    const auto chosen = options();
    if (chosen.isExact && !formatInfo().has(ExportOption::ForeignKeys)) return {};
    if (!m_scans) lookAtTables();
    ExportFindings found;
    if (!chosen.isExact) addClassicFindings(chosen, found);
    addBrokenRelations(chosen, found);
    auto lines = findingLines(found.all());
    if (chosen.isExact || !formatInfo().has(ExportOption::Exact)) return lines;
    const auto avoided = avoidedByExact(found.all());
    if (avoided == Avoided::All) lines.push_back(localized("“Exact values” avoids this."));
    if (avoided == Avoided::Some) lines.push_back(localized("“Exact values” avoids some of this."));
    return lines;
}

void ExportWizard::addClassicFindings(const ExportOptions& chosen, ExportFindings& found) const
{
    std::vector<std::string> names;
    for (const auto& entry : m_tableEntries) {
        const auto* scan = entry.selected ? m_scans->find(entry.tableName) : nullptr;
        const auto* table = scan == nullptr ? nullptr : m_exportFile.findTable(entry.tableName);
        if (entry.selected) names.push_back(entry.tableName);
        if (table == nullptr) continue;
        const auto part =
            entry.choice.columns ? chosenTable(*table, {entry.choice.columns, std::vector<std::uint32_t>()}) : nullptr;
        vellumo::addClassicFindings(part ? *part : *table, *scan, chosen, found);
    }
    vellumo::addClassicFindings(m_exportFile, names, chosen, found);
}

// Not of a table of which only some rows are wanted: others may break the relation then.
void ExportWizard::addBrokenRelations(const ExportOptions& chosen, ExportFindings& found) const
{
    std::vector<std::string> names;
    for (const auto& entry : m_tableEntries)
        if (entry.selected && !entry.choice.rows) names.push_back(entry.tableName);
    const auto scanOf = [this](const TAdmMDBForeignKey& relation) { return m_scans->find(relation); };
    vellumo::addBrokenRelations(m_exportFile, names, chosen, scanOf, found);
}

ExportPreview ExportWizard::preview() const
{
    const auto first = std::ranges::find(m_tableEntries, true, &ExportEntry::selected);
    return first == m_tableEntries.end() ? ExportPreview() : exportPreview(m_exportFile, *first, options());
}

std::vector<TableListColumn> ExportWizard::tableListColumns() const
{
    return {{"selected", "", true}, {"tablename", localized("Table Name"), true},
        {"filename", localized("File Name"), m_controls.isFileNameColumnVisible}};
}

std::size_t ExportWizard::numberOfRowsInTableView() const { return m_isTableListDetached ? 0 : m_tableEntries.size(); }

TableListValue ExportWizard::objectValueForTableColumn(std::string_view column, std::size_t row) const
{
    if (row >= m_tableEntries.size()) return {};
    const auto& entry = m_tableEntries[row];
    if (column == "selected") return entry.selected;
    if (column == "tablename") return entry.tableName;
    if (column == "filename") return entry.exportFileName;
    return {};
}

bool ExportWizard::shouldEditTableColumn(std::string_view column, std::size_t row) const
{
    return row < m_tableEntries.size() && (column == "selected" || column == "filename");
}

void ExportWizard::setObjectValueForTableColumn(const TableListValue& value, std::string_view column, std::size_t row)
{
    if (!shouldEditTableColumn(column, row)) return;
    auto& entry = m_tableEntries[row];
    const auto* selected = std::get_if<bool>(&value);
    const auto* fileName = std::get_if<std::string>(&value);
    if (column == "filename" && fileName != nullptr) entry.exportFileName = *fileName;
    if (column != "selected" || selected == nullptr || *selected == entry.selected) return;
    entry.selected = *selected;
    m_selectedTableCount += *selected ? 1 : -1;
    // Only the count: neither path nor contents are looked at here.
    m_controls.isOkButtonEnabled = m_selectedTableCount > 0;
    m_view->controlsChanged();
}

void ExportWizard::markAllTableEntriesAsSelected(bool selected)
{
    for (auto& entry : m_tableEntries)
        entry.selected = selected;
    m_selectedTableCount = selected ? m_tableEntries.size() : 0;
    enableOkButtonCheck();
    m_view->reloadTableList();
}

void ExportWizard::selectExportPath()
{
    if (m_controls.exportSingleFileCheckBox.value && formatInfo().hasSingleFileMode()) {
        if (auto path = m_ports.filePanels.saveFile(extension(), m_exportFile.name())) takeExportPath(std::move(*path));
    } else {
        static_cast<void>(chooseExportFolder()); // cancelled: everything stays
    }
    enableOkButtonCheck();
}

void ExportWizard::selectObjectsFolder()
{
    const auto& folder = m_controls.objectsFolderTextField.value;
    auto path = m_ports.filePanels.chooseFolder(folder.empty() ? outputFolder() : folder);
    if (!path) return;
    m_controls.objectsFolderTextField.value = std::move(*path);
    m_view->controlsChanged();
}

bool ExportWizard::chooseExportFolder()
{
    auto path = m_ports.filePanels.chooseFolder(m_controls.exportPathTextField.value);
    if (!path) return false;
    takeExportPath(std::move(*path));
    return true;
}

void ExportWizard::takeExportPath(std::string path)
{
    m_bookmarkedFolder.clear();
    m_controls.exportPathTextField.value = std::move(path);
}

void ExportWizard::exportSingleFile()
{
    auto& isSingleFile = m_controls.exportSingleFileCheckBox.value;
    const auto& path = m_controls.exportPathTextField.value;
    const bool needsFolder = !isSingleFile && !path.empty() && parentFolder(path) != m_bookmarkedFolder;
    if (needsFolder && !chooseExportFolder())
        isSingleFile = true;
    else
        updateExportSingleFileLabels();
    enableOkButtonCheck();
}

void ExportWizard::updateExportSingleFileLabels()
{
    const bool isSingleFile = m_controls.exportSingleFileCheckBox.value;
    m_controls.exportPathLabel = format("%@:", {isSingleFile ? localized("Export file") : localized("Export path")});
    m_controls.isFileNameColumnVisible = !isSingleFile;
    auto& path = m_controls.exportPathTextField.value;
    if (path.empty()) return;
    if (isSingleFile)
        path = format("%@%@%@.%@", {path, path.ends_with('/') ? "" : "/", m_exportFile.name(), extension()});
    else if (hasExtension(path, extension()))
        path = parentFolder(path);
}

// Each style has its own ends of lines, and the exact one a decimal point.
void ExportWizard::changeExact()
{
    const bool isExact = m_controls.exactCheckBox.value;
    const auto options = defaultOptions(formatInfo(), isExact);
    m_controls.recordDelimiterPopup.selectedTag = static_cast<std::uint32_t>(options.recordDelimiter);
    enableForStyle(formatInfo(), m_controls);
    if (isExact) m_controls.decimalSymbolTextField.value = options.decimalSymbol;
    if (!isExact) changeFieldDelimiter();
    m_view->controlsChanged();
}

void ExportWizard::changeFieldDelimiter()
{
    if (m_controls.exactCheckBox.value) return m_view->controlsChanged();
    const auto delimiter = static_cast<FieldDelimiter>(m_controls.fieldDelimiterPopup.selectedTag);
    const auto symbol = formatInfo().decimalSymbolFor(delimiter);
    if (symbol) m_controls.decimalSymbolTextField.value = *symbol;
    m_view->controlsChanged();
}

void ExportWizard::changeSQLFormat()
{
    const auto dialect = static_cast<SQLDialect>(m_controls.sqlFormatPopup.selectedTag);
    m_controls.schemaNameTextField.isEnabled = sqlDialectFacts(dialect).takesSchemaName;
    m_view->controlsChanged();
}

void ExportWizard::exportTableStructure()
{
    const bool isOn = m_controls.exportStructureCheckBox.value;
    m_controls.includeDropTableCheckBox.isEnabled = isOn;
    m_controls.includeForeignKeyCheckBox.isEnabled = isOn;
    m_controls.includeIndexCheckBox.isEnabled = isOn;
    enableOkButtonCheck();
}

void ExportWizard::enableOkButtonCheck()
{
    const auto chosen = options();
    m_controls.isOkButtonEnabled = !chosen.path.empty() && m_selectedTableCount > 0 && chosen.hasContents();
    m_view->controlsChanged();
}

void ExportWizard::ok()
{
    rememberOptions(m_controls, formatInfo(), m_ports.defaults);
    if (!m_controls.exportSingleFileCheckBox.value)
        m_ports.defaults.setString(exportFilePathKey, m_controls.exportPathTextField.value);
    if (!m_ports.defaults.synchronize()) m_ports.systemLog.log("The options of the export could not be stored.");
    m_view->endSheet(1);
}

void ExportWizard::cancel() { m_view->endSheet(0); }

std::string ExportWizard::extension() const { return std::string(formatInfo().extension); }

std::vector<ExportHint> ExportWizard::hints() const { return exportHints(m_exportFile, m_tableEntries, options()); }

bool ExportWizard::startExport()
{
    m_isTableListDetached = true;
    m_scans.reset(); // the export looks for itself
    std::erase_if(m_tableEntries, [](const ExportEntry& entry) { return !entry.selected; });
    m_progress.maximum = m_tableEntries.size();
    if (formatInfo().writer == nullptr) return false;
    try {
        m_worker = std::thread([this, chosen = options()] {
            auto report = exportTables(chosen);
            m_ports.mainThread.performAndWait([&] { exportThreadFinished(std::move(report)); });
        });
    } catch (const std::system_error&) { // too many threads already
        exportThreadFinished(reportWithoutMemory(m_exportFile, m_tableEntries));
    }
    return true;
}

ExportReport ExportWizard::exportTables(const ExportOptions& options)
{
    const auto progress = [this](std::size_t index) {
        m_ports.mainThread.performAndWait([&] { updateProgressPanel(index); });
    };
    const auto rows = [this](std::size_t done, std::size_t total) {
        m_ports.mainThread.performAndWait([&] { updateRowProgress(done, total); });
    };
    return runExport(m_exportFile, m_tableEntries, options, m_terminate,
        {progress, m_ports.systemLog, m_ports.loadErrorWindow, rows});
}

void ExportWizard::updateProgressPanel(std::size_t index)
{
    const auto count = m_tableEntries.size();
    if (index >= count) return;
    m_progress.label = exportProgressText(m_tableEntries[index].tableName, index, count);
    m_progress.value = index;
    m_view->progressChanged();
}

// The label stays.
void ExportWizard::updateRowProgress(std::size_t done, std::size_t total)
{
    m_progress.value = done;
    m_progress.maximum = total;
    m_view->progressChanged();
}

std::string ExportWizard::outputFolder() const
{
    const auto chosen = options();
    return chosen.isSingleFile ? parentFolder(chosen.path) : chosen.path;
}

void ExportWizard::exportThreadFinished(ExportReport report)
{
    m_view->endProgressSheet();
    m_report = std::move(report);
    auto texts = exportReportTexts(*m_report);
    Alert alert{std::move(texts.title), std::move(texts.body), Alert::Style::Sheet};
    if (m_report->isDone() && m_report->isSourceWhole()) alert.kind = Alert::Kind::Notice;
    if (m_report->doneCount() > 0) alert.folder = outputFolder();
    m_ports.alerts.show(alert);
    m_view->exportFinished();
}

} // namespace vellumo
