// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DesktopPorts.h"
#include "platform/MainThreadQueue.h"
#include "support/DesktopFakes.h"
#include "support/ExportFakes.h"

namespace vellumo::test {

// Stand-ins for all that the program asks of the desktop. Whoever needs the real thing names its type.
template <typename Facts = FakeFileFacts, typename Decoder = FakeImageDecoder, typename Thread = MainThreadQueue>
struct FakeDesktop {
    FakeAlerts alerts;
    FakeDefaults defaults;
    Facts fileFacts;
    FakeFilePanels filePanels;
    Decoder imageDecoder;
    Thread mainThread;
    FakePasteboard pasteboard;
    FakeRecentDocuments recent;
    FakeSystemLog systemLog;
    FakeWorkspace workspace;
    DesktopPorts ports{alerts, defaults, fileFacts, filePanels, imageDecoder, mainThread, pasteboard, recent, systemLog,
        workspace, "/home/ann"};
};

} // namespace vellumo::test
