// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vellumo {

// A text of an OLE 1.0 wrapper in UTF-8. Such texts are in the code page of the system that wrote them, which no cell
// tells: what is UTF-8 stays, anything else is read as windows-1252.
[[nodiscard]] std::string textFromAnsi(std::string_view text);

// The name of a file without what may stand around it in `path` (UTF-8): folders of Windows and Unix, control
// characters, those that turn the direction of writing, space at both ends. Cut to a length that file systems take, its
// extension kept. "" when no name is left.
[[nodiscard]] std::string cleanFileName(std::string_view path);

} // namespace vellumo
