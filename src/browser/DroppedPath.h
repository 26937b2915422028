// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vellumo {

// Whether the path's extension is one of a database file, in any letter case.
[[nodiscard]] bool isDatabasePath(std::string_view path);

// The path as the user knows it. A home folder below "/Library/Containers/" belongs to a confined program: what leads
// to it in `path` is replaced by the home folder that holds the containers. Any other path comes back as it is.
[[nodiscard]] std::string pathOutsideContainer(std::string_view path, std::string_view homeFolder);

} // namespace vellumo
