#pragma once

#include "browser/ViewToggles.h"
#include "desktop/window/EditActions.h"

#include <QObject>

#include <array>
#include <functional>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace vellumo {

class Appearance;
class ChildWindow;
class MainWindow;
class VellumoAppDelegate;

// The menu bar of the main window.
class MainMenus : public QObject {
public:
    // Both outlive the menus' use.
    MainMenus(MainWindow& window, VellumoAppDelegate& app);

    // Brings titles and enabled states in line with the controller once the event at hand is done with.
    void scheduleUpdate();
    void toggleDidChange(ViewToggle toggle);
    // Lets the user choose between light and dark. `appearance` outlives the menus' use.
    void addAppearanceMenu(Appearance& appearance);

private:
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeGoMenu();
    void makeWindowMenu();
    void makeHelpMenu();
    QAction* add(QMenu& menu, const QString& title, const QList<QKeySequence>& shortcuts, std::function<void()> run);
    // Enabled only while `isUsable` says so.
    void enableWhile(QAction* action, std::function<bool()> isUsable);
    void update();
    void listTableWindows(QMenu& menu);
    void bringToFront(const ChildWindow* window);

    MainWindow& m_window;
    VellumoAppDelegate& m_app;
    QMenuBar& m_bar;
    EditActions m_editActions;
    struct Condition {
        QAction* action;
        std::function<bool()> isUsable;
    };
    std::vector<Condition> m_conditions;
    std::array<QAction*, ViewToggles::all.size()> m_toggles{};
    QMenu* m_viewMenu = nullptr;
    QAction* m_fullScreen = nullptr;
    bool m_isUpdateScheduled = false;
};

} // namespace vellumo
