// SPDX-License-Identifier: MIT
#pragma once

class QMenuBar;
class QWidget;

namespace vellumo {

// Lists every key that does something: those of the menus, and those that only one part of a window knows.
void showShortcutsDialog(QWidget& window, const QMenuBar& menus);

} // namespace vellumo
