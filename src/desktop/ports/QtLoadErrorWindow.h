// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/LoadErrorWindow.h"

#include <QPointer>
#include <QWidget>

namespace vellumo {

class MainThread;

// A window that blocks the program until the person closes it. `show` may be called on any thread.
class QtLoadErrorWindow : public LoadErrorWindow {
public:
    // `mainThread` outlives the window.
    explicit QtLoadErrorWindow(MainThread& mainThread)
        : m_mainThread(mainThread)
    {
    }
    // Used where no window is active.
    void setMainWindow(QWidget* window) { m_mainWindow = window; }

    void show(const LoadError& error) override;

private:
    MainThread& m_mainThread;
    QPointer<QWidget> m_mainWindow;
};

} // namespace vellumo
