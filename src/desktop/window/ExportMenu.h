#pragma once

class QMenu;

namespace vellumo {

class VellumoAppDelegate;

// Adds one item an export type.
void addExportCommands(QMenu& menu, VellumoAppDelegate& app);

} // namespace vellumo
