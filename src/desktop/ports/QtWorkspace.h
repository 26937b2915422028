// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Workspace.h"

namespace vellumo {

// The clipboard.
class QtPasteboard : public Pasteboard {
public:
    void setText(const std::string& text) override;
};

// Asks the desktop; whether it could do what it was asked is not known, and nothing waits for it.
class QtWorkspace : public Workspace {
public:
    void openFile(const std::string& path) override;
    // By the file-manager interface of D-Bus; without such a service the file's folder is opened.
    void revealFile(const std::string& path) override;
    [[nodiscard]] std::shared_ptr<const Image> fileTypeIcon(const std::string& extension) override;
};

} // namespace vellumo
