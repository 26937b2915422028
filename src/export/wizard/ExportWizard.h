// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportHints.h"
#include "export/ExportPreview.h"
#include "export/ExportReport.h"
#include "export/wizard/ExportControls.h"
#include "export/wizard/TableScans.h"

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <variant>

namespace vellumo {

class Alerts;
class Defaults;
class FilePanels;
class LoadErrorWindow;
class MainThread;
class SystemLog;
class TAdmMDBFile;
class TAdmMDBTable;

// What the wizard needs of the desktop. All outlive it.
struct ExportPorts {
    MainThread& mainThread;
    Defaults& defaults;
    FilePanels& filePanels;
    Alerts& alerts;
    SystemLog& systemLog;
    LoadErrorWindow* loadErrorWindow = nullptr; // called on the worker; null: standard error
};

// Told what has changed, so that the dialog and the progress sheet can follow. Main thread only.
class ExportWizardView {
public:
    virtual ~ExportWizardView() = default;
    virtual void controlsChanged() { }
    virtual void findingsChanged() { }
    virtual void reloadTableList() { }
    // The dialog closes. 1: the export shall start; 0: cancelled.
    virtual void endSheet(int /*returnCode*/) { }
    virtual void progressChanged() { }
    virtual void endProgressSheet() { }
    // The report was shown. The wizard must not be destroyed inside this call: its worker still waits for it.
    virtual void exportFinished() { }
};

// What the grid shows of the table that the wizard is opened for.
struct ShownTable {
    std::vector<std::uint32_t> rows;         // row numbers of the table, in the order of the grid
    std::vector<std::uint32_t> selectedRows; // some of them, in the same order
    std::vector<std::size_t> columns;        // their numbers, in the order of the grid
};

struct ExportProgress {
    std::string label; // localised
    // In tables; once the only table is being written, in its rows.
    std::size_t value = 0;
    std::size_t maximum = 0;
};

// A cell of the table list: nothing, the check mark, or a text.
using TableListValue = std::variant<std::monostate, bool, std::string>;

struct TableListColumn {
    std::string_view identifier;
    std::string header; // localised
    bool isVisible = true;
};

// The export dialog without its widgets, and the export that follows it. First the user sets the options: a front end
// puts what was entered into `controls()` and calls the action of that control. Then `startExport` runs the export on a
// thread of its own, which reports through the main-thread port, and in the end the report appears as an alert.
// Main thread only, but for `stop`.
class ExportWizard {
public:
    // `file` outlives the wizard and is opened if it is not; one that cannot be opened has no tables to export.
    // `selectedTable` null: all tables are selected.
    ExportWizard(
        TAdmMDBFile& file, const TAdmMDBTable* selectedTable, ExportFileType exportFileType, const ExportPorts& ports);
    // Not while an export runs: its end needs the main thread.
    ~ExportWizard();
    ExportWizard(const ExportWizard&) = delete;
    ExportWizard& operator=(const ExportWizard&) = delete;

    // Not owned; null for none.
    void setView(ExportWizardView* view);

    [[nodiscard]] const TAdmMDBFile& exportFile() const { return m_exportFile; }
    [[nodiscard]] ExportFileType exportFileType() const { return m_exportFileType; }
    [[nodiscard]] const ExportControls& controls() const { return m_controls; }
    [[nodiscard]] ExportControls& controls() { return m_controls; }
    // What the controls say, and what the user is to know of it.
    [[nodiscard]] ExportOptions options() const { return optionsFromControls(m_exportFileType, m_controls); }
    [[nodiscard]] std::vector<ExportHint> hints() const;
    // What the classic style will lose of the selected tables, and which relations rows break in either, as lines
    // (localised), as far as the tables have been looked at: begins to look where nobody has yet, and tells the view
    // when there is more.
    [[nodiscard]] std::vector<std::string> findings();
    // How the output of the first selected table begins; nothing without one.
    [[nodiscard]] ExportPreview preview() const;

    // Offers the rows and columns of the one table as the grid shows them; only where the wizard was opened for one.
    void offerShownTable(ShownTable shown);

    // The table list. Columns: "selected", "tablename", "filename".
    [[nodiscard]] std::vector<TableListColumn> tableListColumns() const;
    [[nodiscard]] std::size_t numberOfRowsInTableView() const;
    [[nodiscard]] TableListValue objectValueForTableColumn(std::string_view column, std::size_t row) const;
    [[nodiscard]] bool shouldEditTableColumn(std::string_view column, std::size_t row) const;
    void setObjectValueForTableColumn(const TableListValue& value, std::string_view column, std::size_t row);
    [[nodiscard]] const std::vector<ExportEntry>& tableEntries() const { return m_tableEntries; }

    // Actions of the controls.
    void selectAll() { markAllTableEntriesAsSelected(true); }
    void deselectAll() { markAllTableEntriesAsSelected(false); }
    void selectExportPath();
    void selectObjectsFolder();
    void exportSingleFile();
    void changeRows();
    void changeExact();
    void changeFieldDelimiter();
    void changeSQLFormat();
    void exportTableStructure();
    void exportTableData() { enableOkButtonCheck(); }
    void enableOkButtonCheck();
    void ok();
    void cancel();

    // Drops the entries that are not selected and starts the writer. False when the type has none. Once only.
    bool startExport();
    // Asks the writer to stop. Any thread, and signal handlers.
    void stop() { m_terminate = true; }

    [[nodiscard]] const ExportProgress& progress() const { return m_progress; }
    // Set when the export has finished.
    [[nodiscard]] const std::optional<ExportReport>& report() const { return m_report; }

private:
    void layOutControls();
    void lookAtTables();
    void addClassicFindings(const ExportOptions& chosen, ExportFindings& found) const;
    void addBrokenRelations(const ExportOptions& chosen, ExportFindings& found) const;
    void applyChoice();
    [[nodiscard]] TableChoice chosenOfShownTable() const;
    void markAllTableEntriesAsSelected(bool selected);
    void updateExportSingleFileLabels();
    [[nodiscard]] bool chooseExportFolder();
    void takeExportPath(std::string path);
    [[nodiscard]] std::string outputFolder() const;
    [[nodiscard]] std::string extension() const;
    [[nodiscard]] const FormatInfo& formatInfo() const { return exportFormat(m_exportFileType); }
    [[nodiscard]] ExportReport exportTables(const ExportOptions& options);
    void updateProgressPanel(std::size_t index);
    void updateRowProgress(std::size_t done, std::size_t total);
    void exportThreadFinished(ExportReport report);

    TAdmMDBFile& m_exportFile;
    ExportFileType m_exportFileType;
    ExportPorts m_ports;
    ExportWizardView m_noView;
    ExportWizardView* m_view = &m_noView;
    ExportControls m_controls;
    std::vector<ExportEntry> m_tableEntries;
    std::string m_shownTableName; // of m_shown
    std::optional<ShownTable> m_shown;
    std::unique_ptr<TableScans> m_scans; // null: nobody has asked for findings yet
    std::size_t m_selectedTableCount = 0;
    bool m_selectedTable; // opened for the whole file, without a particular table
    bool m_isTableListDetached = false;
    std::string m_bookmarkedFolder; // the stored folder; "" once the user has chosen another path
    std::atomic<bool> m_terminate = false;
    ExportProgress m_progress;
    std::optional<ExportReport> m_report;
    std::thread m_worker;
};

} // namespace vellumo
