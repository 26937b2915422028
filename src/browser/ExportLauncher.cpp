// SPDX-License-Identifier: MIT
#include "browser/ExportLauncher.h"

#include "browser/DataView.h"
#include "browser/MainWindowView.h"

namespace vellumo {

namespace {

// A wizard and the file that it must not outlive.
struct Session {
    std::shared_ptr<TAdmMDBFile> file;
    ExportWizard wizard;
};

} // namespace

ShownTable tableShownBy(DataView& view)
{
    ShownTable shown;
    view.awaitRows(); // those of the search and order that the user sees asked for
    shown.columns = view.columnLayout().order;
    const auto count = view.numberOfRows();
    shown.rows.reserve(count);
    for (std::size_t position = 0; position < count; ++position)
        shown.rows.push_back(static_cast<std::uint32_t>(view.recordAt(position)));
    for (const auto& [first, last] : view.selectedRows().ranges())
        for (auto position = first; position <= last && position < count; ++position)
            shown.selectedRows.push_back(shown.rows[position]);
    return shown;
}

void ExportLauncher::begin(std::shared_ptr<TAdmMDBFile> file, const TAdmMDBTable* selectedTable, int exportType,
    std::optional<ShownTable> shown)
{
    auto& exportFile = *file;
    m_file = file.get();
    const ExportPorts ports{m_desktop.mainThread, m_desktop.defaults, m_desktop.filePanels, m_desktop.alerts,
        m_desktop.systemLog, m_desktop.loadErrorWindow};
    const std::shared_ptr<Session> session(
        new Session{std::move(file), {exportFile, selectedTable, static_cast<ExportFileType>(exportType), ports}});
    m_wizard = std::shared_ptr<ExportWizard>(session, &session->wizard);
    if (shown) m_wizard->offerShownTable(std::move(*shown));
    m_view.beginExportSheet(m_wizard);
}

void ExportLauncher::sheetDidEnd(int returnCode)
{
    if (!m_wizard) return;
    if (returnCode > 0) m_view.beginExportProgressSheet(m_wizard);
    // Nothing runs for a type without a writer, so nothing would ever report its end.
    if (returnCode <= 0 || !m_wizard->startExport()) m_wizard.reset();
}

void ExportLauncher::exportDidFinish() { m_wizard.reset(); }

} // namespace vellumo
