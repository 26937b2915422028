// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vellumo {

// The desktop's file dialogs; each waits for the user. nullopt: cancelled. Main thread only.
class FilePanels {
public:
    virtual ~FilePanels() = default;
    // One or more existing files with one of `extensions` (without the dot). Absolute paths. The panel begins in
    // `folder`; empty or gone: where the last panel was left.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> openFiles(
        const std::vector<std::string>& extensions, const std::string& folder) = 0;
    // One folder; new ones may be made in the dialog. `initial` may be empty.
    [[nodiscard]] virtual std::optional<std::string> chooseFolder(const std::string& initial) = 0;
    // A file to write, with `extension`, `suggestedName` being preset.
    [[nodiscard]] virtual std::optional<std::string> saveFile(
        const std::string& extension, const std::string& suggestedName) = 0;
};

} // namespace vellumo
