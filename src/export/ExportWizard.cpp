#include "export/ExportWizard.h"

#include "export/DamageLines.h"
#include "export/ObjectCells.h"
#include "model/TAdmMDBFile.h"
#include "platform/Alerts.h"
#include "platform/Defaults.h"
#include "platform/FilePanels.h"
#include "platform/MainThread.h"
#include "platform/SystemLog.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <new>
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

// A name with a line break in it must not look like a line of the report.
void addLine(std::string line, std::string& body)
{
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    if (!body.empty()) body += '\n';
    body += line;
}

// The count sentence, then the first lines of the log.
std::string resultText(const ExportJob& job)
{
    constexpr std::size_t shownLines = 10;
    const auto count = job.successTableCount();
    std::string body;
    if (count == 1)
        body = localizedFormat("%d table exported successfully.", {count});
    else if (count > 1)
        body = localizedFormat("%d tables exported successfully.", {count});
    const auto& lines = job.msgLog();
    for (std::size_t i = 0; i < std::min(lines.size(), shownLines); ++i)
        addLine(lines[i], body);
    if (lines.size() > shownLines) body += localizedFormat("\n…and %d more.", {lines.size() - shownLines});
    return body;
}

// What the tables of the job have lost before they came to be exported, and with them.
std::vector<std::string> lossLines(const ExportJob& job)
{
    std::vector<std::string> lines;
    std::vector<std::string> tables;
    for (const auto& entry : job.entries()) {
        tables.push_back(entry.tableName);
        const auto* table = job.file().findTable(entry.tableName);
        if (table != nullptr && job.options().exportData)
            std::ranges::move(leftOutObjects(*table), std::back_inserter(lines));
    }
    const bool isWholeFile = tables.size() == job.file().tables().size();
    const auto damage = damageLines(job.file().damage(), isWholeFile ? std::span<const std::string>() : tables);
    if (!damage.empty()) lines.push_back(localized("Damage:"));
    lines.insert(lines.end(), damage.begin(), damage.end());
    return lines;
}

} // namespace

ExportWizard::ExportWizard(
    TAdmMDBFile& file, const TAdmMDBTable* selectedTable, ExportFileType exportFileType, const ExportPorts& ports)
    : m_exportFile(file)
    , m_exportFileType(exportFileType)
    , m_ports(ports)
    , m_controls(controlsForType(exportFileType, selectedTable == nullptr))
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
    enableOkButtonCheck();
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
    if (m_controls.exportSingleFileCheckBox.value && hasSingleFileMode(m_exportFileType)) {
        if (auto path = m_ports.filePanels.saveFile(extension(), m_exportFile.name())) takeExportPath(std::move(*path));
    } else {
        static_cast<void>(chooseExportFolder()); // cancelled: everything stays
    }
    enableOkButtonCheck();
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

void ExportWizard::changeFieldDelimiter()
{
    if (m_exportFileType != ExportFileType::CSV) return;
    const auto delimiter = static_cast<FieldDelimiter>(m_controls.fieldDelimiterPopup.selectedTag);
    auto& symbol = m_controls.decimalSymbolTextField.value;
    if (delimiter == FieldDelimiter::Comma) symbol = '.';
    if (delimiter == FieldDelimiter::Semicolon) symbol = ',';
    m_view->controlsChanged();
}

void ExportWizard::changeSQLFormat()
{
    m_controls.schemaNameTextField.isEnabled =
        takesSchemaName(static_cast<SQLDialect>(m_controls.sqlFormatPopup.selectedTag));
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
    m_controls.isOkButtonEnabled = !m_controls.exportPathTextField.value.empty() && m_selectedTableCount > 0
        && (m_controls.exportStructureCheckBox.value || m_controls.exportDataCheckBox.value);
    m_view->controlsChanged();
}

void ExportWizard::ok()
{
    if (!m_controls.exportSingleFileCheckBox.value) storeExportPath();
    m_view->endSheet(1);
}

void ExportWizard::cancel() { m_view->endSheet(0); }

void ExportWizard::storeExportPath()
{
    m_ports.defaults.setString(exportFilePathKey, m_controls.exportPathTextField.value);
    if (!m_ports.defaults.synchronize()) m_ports.systemLog.log("The export folder could not be stored.");
}

std::string ExportWizard::extension() const
{
    return std::string(fileExtensionByExportFileType(m_exportFileType).value_or(""));
}

bool ExportWizard::startExport()
{
    m_isTableListDetached = true;
    std::erase_if(m_tableEntries, [](const ExportEntry& entry) { return !entry.selected; });
    m_progress.maximum = m_tableEntries.size();
    const auto writer = exportWriterForType(m_exportFileType);
    if (writer == nullptr) return false;
    m_job = std::make_unique<ExportJob>(m_exportFile, m_tableEntries, optionsFromControls(m_exportFileType, m_controls),
        m_terminate, m_ports.mainThread, m_ports.systemLog, [this](std::size_t index) { updateProgressPanel(index); });
    if (m_ports.loadErrorWindow != nullptr) m_job->setLoadErrorWindow(*m_ports.loadErrorWindow);
    try {
        m_worker = std::thread([this, writer] { runWriter(writer); });
    } catch (const std::system_error&) { // too many threads already
        logOutOfMemory();
        exportThreadFinished();
    }
    return true;
}

void ExportWizard::runWriter(ExportWriter writer)
{
    try {
        writer(*m_job);
    } catch (const std::bad_alloc&) {
        logOutOfMemory();
    }
    m_ports.mainThread.performAndWait([this] { exportThreadFinished(); });
}

void ExportWizard::logOutOfMemory()
{
    m_job->log(format("%@: %@", {localized("Failed"), localized("Not enough memory.")}));
}

void ExportWizard::updateProgressPanel(std::size_t index)
{
    const auto count = m_tableEntries.size();
    if (index >= count) return;
    // The counter starts at 0: it tells how many tables are done.
    m_progress.label = format("%@... <%@>",
        {localizedFormat("Exporting %@", {m_tableEntries[index].tableName}),
            localizedFormat("%ld of %ld", {index, count})});
    m_progress.value = index;
    m_view->progressChanged();
}

void ExportWizard::exportThreadFinished()
{
    m_view->endProgressSheet();
    auto body = resultText(*m_job);
    const auto losses = lossLines(*m_job);
    for (const auto& line : losses)
        addLine(line, body);
    m_report = {
        m_terminate ? localized("Export terminated.") : localized("Export finished."), std::move(body), losses.empty()};
    m_ports.alerts.show({m_report->title, m_report->body, Alert::Style::Sheet});
    m_view->exportFinished();
}

bool ExportWizard::succeeded() const { return m_report && !m_terminate && m_job->msgLog().empty(); }

} // namespace vellumo
