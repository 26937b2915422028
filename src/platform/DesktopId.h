// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

// What the desktop calls this program: the name of its .desktop file, without the extension.
inline constexpr const char* desktopId = "org.vellumo.Vellumo";

// What people call it. Qt is not told: it would append the name to the title of every window.
inline constexpr const char* programName = "Vellumo";

} // namespace vellumo
