// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Alerts.h"

#include <QPointer>
#include <QWidget>

namespace vellumo {

// Message boxes. A sheet blocks the main window and `show` returns at once; a modal box blocks the program, and `show`
// waits for the user.
class QtAlerts : public Alerts {
public:
    // Where sheets are attached; null (or destroyed since): they stand alone.
    void setMainWindow(QWidget* window) { m_mainWindow = window; }

    void show(const Alert& alert) override;
    void ask(const Alert& alert, const std::vector<std::string>& choices,
        const std::function<void(std::size_t)>& chosen) override;
    void beep() override;

private:
    QPointer<QWidget> m_mainWindow;
};

} // namespace vellumo
