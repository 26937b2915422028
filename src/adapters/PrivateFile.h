// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

// Small files that belong to the user alone.
namespace vellumo {

// The whole content; nullopt when there is no such file or it cannot be read.
[[nodiscard]] std::optional<std::string> readSmallFile(const std::string& path);

// False only when there is certainly no file of this name (a file that cannot be looked at counts as there).
[[nodiscard]] bool mayExist(const std::string& path);

// Replaces the file's content at once or not at all, mode 0600; makes the folders above it (mode 0700). A symbolic link
// stays, the file that it names is replaced.
[[nodiscard]] bool writePrivateFile(const std::string& path, std::string_view content);

// Makes the folder of `path` (mode 0700) where it is missing.
[[nodiscard]] bool makeFolderFor(const std::string& path);

} // namespace vellumo
