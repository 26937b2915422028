// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Alerts.h"
#include "platform/Defaults.h"
#include "platform/FileFacts.h"
#include "platform/FilePanels.h"
#include "platform/ImageDecoder.h"
#include "platform/MainThread.h"
#include "platform/RecentDocuments.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

#include <string>

namespace vellumo {

class LoadErrorWindow;

// The desktop that the browser works on. Every interface outlives whoever was given it.
struct DesktopPorts {
    Alerts& alerts;
    Defaults& defaults;
    FileFactsSource& fileFacts;
    FilePanels& filePanels;
    ImageDecoder& imageDecoder;
    MainThread& mainThread;
    Pasteboard& pasteboard;
    RecentDocuments& recentDocuments;
    SystemLog& systemLog;
    Workspace& workspace;
    // The user's home folder, without a slash at the end.
    std::string homeFolder;
    // Called on an export's worker; null: standard error.
    LoadErrorWindow* loadErrorWindow = nullptr;
};

} // namespace vellumo
