// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/dialogs/ExportDialog.h"
#include "desktop/ports/QtAlerts.h"
#include "desktop/ports/QtMainThread.h"
#include "support/ExportFakes.h"
#include "support/ModelBuilder.h"
#include "support/QtApplication.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

// A database of three tables, and all that an export dialog on it needs.
namespace vellumo::test {

// Runs on the main thread what it is asked to, and then `afterwards`.
class WatchedMainThread : public MainThread {
public:
    void performAndWait(const std::function<void()>& work) override
    {
        m_mainThread.performAndWait([&] {
            work();
            if (afterwards) afterwards();
        });
    }
    void post(std::function<void()> work) override { m_mainThread.post(std::move(work)); }
    std::function<void()> afterwards;

private:
    QtMainThread m_mainThread;
};

struct ExportDesk {
    WatchedMainThread mainThread;
    FakeDefaults defaults;
    FakeFilePanels panels;
    QtAlerts alerts;
    FakeSystemLog log;
    TempFolder folder;
    std::unique_ptr<TAdmMDBFile> file = makeFile("/data/Shop.mdb",
        makeTable("Customers", {{"Id", "Long Integer"}, {"Name", "Text"}}, {{"1", "Ann"}, {"2", "Bob"}}),
        makeTable("Orders", {{"Id", "Long Integer"}, {"Price", "Currency"}}, {{"7", "1.5"}}),
        makeTable("Products", {{"Name", "Text"}}));

    std::shared_ptr<ExportWizard> wizard(ExportFileType type, const char* table = nullptr)
    {
        return std::make_shared<ExportWizard>(*file, table == nullptr ? nullptr : file->findTable(table), type,
            ExportPorts{mainThread, defaults, panels, alerts, log});
    }
};

} // namespace vellumo::test
