// SPDX-License-Identifier: MIT
#pragma once

class QDialog;
class QWidget;

namespace vellumo {

// Where a dialog that waits belongs: on the active window, or on `mainWindow` (may be null) where none is active.
[[nodiscard]] QWidget* windowForDialog(QWidget* mainWindow);

// Shows a dialog made with `new`, which blocks the program until the person has answered it. False when it was
// cancelled, or when it went with the window it belongs to. After true it can be asked until control is back in the
// event loop, which then destroys it.
[[nodiscard]] bool runDialog(QDialog& dialog);

} // namespace vellumo
