// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace vellumo {

// Shows what the program is, its version and its licence notes.
void showAboutDialog(QWidget& window);

} // namespace vellumo
