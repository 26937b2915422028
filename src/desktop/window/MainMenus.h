// SPDX-License-Identifier: MIT
#pragma once

#include "browser/VellumoAppDelegate.h"
#include "desktop/window/EditActions.h"

#include <QObject>
#include <array>
#include <functional>
#include <vector>

class QMenu;
class QAction;
class QMenu;
class QMenuBar;

namespace vellumo {

class VellumoAppDelegate;

// Adds one item an export type.
void addExportCommands(QMenu& menu, VellumoAppDelegate& app);

class Appearance;
class ChildWindow;
class MainWindow;
class OpenMenu;

// The menu bar of the main window.
class MainMenus : public QObject {
public:
    // Both outlive the menus' use.
    MainMenus(MainWindow& window, VellumoAppDelegate& app);

    // Brings titles and enabled states in line with the controller once the event at hand is done with.
    void scheduleUpdate();
    // Enabled only while `isUsable` says so; an action or a widget, which outlives the menus' use.
    template <typename Control> void enableWhile(Control* control, std::function<bool()> isUsable)
    {
        m_conditions.push_back([control, isUsable = std::move(isUsable)] { control->setEnabled(isUsable()); });
    }
    void toggleDidChange(ViewToggle toggle);
    void settingsDidChange();
    // Lets the user choose between light and dark. `appearance` outlives the menus' use.
    void addAppearanceMenu(Appearance& appearance);

private:
    using FileCommand = VellumoAppDelegate::FileCommand;
    using Sender = VellumoAppDelegate::Sender;

    void makeFileMenu();
    void addFileListCommands(QMenu& menu);
    QAction* addFileCommand(QMenu& menu, const char* key, const QList<QKeySequence>& shortcuts, FileCommand command,
        void (VellumoAppDelegate::*run)(Sender));
    void makeEditMenu();
    void makeViewMenu();
    void makeGoMenu();
    void addPaneCommands(QMenu& menu);
    void makeWindowMenu();
    void makeHelpMenu();
    QAction* add(QMenu& menu, const QString& title, const QList<QKeySequence>& shortcuts, std::function<void()> run);
    void update();
    [[nodiscard]] ItemId selectedItem() const;
    void listTableWindows(QMenu& menu);
    void bringToFront(const ChildWindow* window);

    MainWindow& m_window;
    VellumoAppDelegate& m_app;
    QMenuBar& m_bar;
    EditActions m_editActions;
    std::vector<std::function<void()>> m_conditions; // each sets what it is about
    std::array<QAction*, ViewToggles::all.size()> m_toggles{};
    OpenMenu* m_openMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QAction* m_fullScreen = nullptr;
    QMenu* m_fileMenu = nullptr;
    ItemId m_itemOfFileMenu; // what was selected when it opened
    bool m_isUpdateScheduled = false;
};

} // namespace vellumo
