// SPDX-License-Identifier: MIT
#pragma once

#include "browser/InformationPane.h"

#include <QWidget>

#include <array>

class QButtonGroup;
class QLabel;
class QStackedWidget;

namespace vellumo {

class InformationPage;
class VellumoAppDelegate;

// The information pane: a bar with one button a kind of information, and the page of the selected one.
class InformationPanel : public QWidget {
public:
    // `app` outlives the panel's use.
    InformationPanel(VellumoAppDelegate& app, QWidget* parent);

    // What changed in the controller.
    void barDidChange();
    void reload(InformationType type);
    void detailsDidChange(InformationType type);

private:
    [[nodiscard]] QWidget* makeBar();
    [[nodiscard]] InformationPage& page(InformationType type) { return *m_typePages[static_cast<std::size_t>(type)]; }

    VellumoAppDelegate& m_app;
    QButtonGroup* m_buttons;
    QLabel* m_title;
    QStackedWidget* m_pages;
    std::array<InformationPage*, InformationPane::allTypes.size()> m_typePages;
};

} // namespace vellumo
