// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ImageDecoder.h"

#include <memory>
#include <string>

namespace vellumo {

// The general pasteboard. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    virtual void setText(const std::string& text) = 0;
};

// What the desktop does with files. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;
    // Opens the file in its default application.
    virtual void openFile(const std::string& path) = 0;
    // Shows the file, selected, in the file manager.
    virtual void revealFile(const std::string& path) = 0;
    // The icon of files with this extension (without the dot), 16 x 16 pixels; null when the desktop has none.
    [[nodiscard]] virtual std::shared_ptr<const Image> fileTypeIcon(const std::string& extension) = 0;
};

} // namespace vellumo
