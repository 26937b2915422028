// SPDX-License-Identifier: MIT
#pragma once

#include "browser/ViewToggles.h"

#include <QStatusBar>

#include <array>

class QLabel;
class QToolButton;

namespace vellumo {

class VellumoAppDelegate;

// The line at the bottom: the status text, what a search has found, and three buttons that show or hide file list,
// information and text view.
class StatusLine : public QStatusBar {
public:
    // `app` outlives the line's use.
    StatusLine(VellumoAppDelegate& app, QWidget* parent);

    void textDidChange();
    void toggleDidChange(ViewToggle toggle);

private:
    static constexpr int buttonCount = 3;

    VellumoAppDelegate& m_app;
    QLabel* m_text;
    QLabel* m_searchText;
    std::array<QToolButton*, buttonCount> m_buttons{};
};

} // namespace vellumo
