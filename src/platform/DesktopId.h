#pragma once

namespace vellumo {

// What the desktop calls this program: the name of its .desktop file, without the extension.
inline constexpr const char* desktopId = "org.vellumo.Vellumo";

} // namespace vellumo
