// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace vellumo {

class VellumoAppDelegate;

// What holds for all files. A choice takes effect at once. Destroys itself.
class SettingsDialog : public QDialog {
public:
    // `app` outlives the dialog.
    SettingsDialog(VellumoAppDelegate& app, QWidget* window);
};

} // namespace vellumo
