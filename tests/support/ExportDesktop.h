// SPDX-License-Identifier: MIT
#pragma once

#include "export/wizard/ExportWizard.h"
#include "platform/MainThreadQueue.h"
#include "support/ExportFakes.h"

namespace vellumo::test {

// All that an export asks of the desktop.
struct ExportDesktop {
    MainThreadQueue mainThread;
    FakeDefaults defaults;
    FakeFilePanels panels;
    FakeAlerts alerts;
    FakeSystemLog log;
    ExportPorts ports{mainThread, defaults, panels, alerts, log};
};

} // namespace vellumo::test
