// SPDX-License-Identifier: MIT
#pragma once

#include "browser/OpenChoices.h"

#include <QObject>

#include <vector>

class QAction;
class QMenu;

namespace vellumo {

class MainMenus;
class VellumoAppDelegate;

// The commands of the file menu that say how files are opened: newer ones, and the encoding of old ones' texts.
class OpenMenu : public QObject {
public:
    // `menus` owns it; `app` outlives it.
    OpenMenu(MainMenus& menus, QMenu& fileMenu, VellumoAppDelegate& app);

    void settingsDidChange();

private:
    void addEncodings(QMenu& menu);

    VellumoAppDelegate& m_app;
    QAction* m_newerFiles;
    QMenu* m_encodings;
    QAction* m_asStated;
    std::vector<std::pair<int, QAction*>> m_codePages;
};

} // namespace vellumo
