// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DesktopPorts.h"
#include "export/wizard/ExportWizard.h"

#include <memory>

namespace vellumo {

class DataView;
class MainWindowView;

// What a grid shows of its table, for an export of that.
[[nodiscard]] ShownTable tableShownBy(DataView& view);

// Takes an export from its dialog to its end. One at a time.
class ExportLauncher {
public:
    // Both outlive the launcher.
    ExportLauncher(MainWindowView& view, const DesktopPorts& desktop)
        : m_view(view)
        , m_desktop(desktop)
    {
    }

    // Shows the dialog. `selectedTable` null: all tables of the file. `exportType`: the code of one, or -1. `shown`:
    // how a grid shows the selected table; nullopt where none does.
    void begin(std::shared_ptr<TAdmMDBFile> file, const TAdmMDBTable* selectedTable, int exportType,
        std::optional<ShownTable> shown = {});
    // The dialog has ended: starts the export for a positive code, releases the wizard for another.
    void sheetDidEnd(int returnCode);
    // Releases the wizard.
    void exportDidFinish();

    // From the beginning of the dialog to the report: the model has to stay as it is.
    [[nodiscard]] bool isExporting() const { return m_wizard != nullptr && !m_wizard->report(); }
    // The same, of this file.
    [[nodiscard]] bool isExporting(const TAdmMDBFile& file) const { return isExporting() && m_file == &file; }
    // Null when there is none.
    [[nodiscard]] const std::shared_ptr<ExportWizard>& wizard() const { return m_wizard; }

private:
    MainWindowView& m_view;
    DesktopPorts m_desktop;
    std::shared_ptr<ExportWizard> m_wizard;
    const TAdmMDBFile* m_file = nullptr; // of the wizard, which keeps it; never dereferenced
};

} // namespace vellumo
