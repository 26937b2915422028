// SPDX-License-Identifier: MIT
#include "desktop/window/MainMenus.h"

#include "browser/ToolbarDescription.h"
#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/appearance/Appearance.h"
#include "desktop/dialogs/SettingsDialog.h"
#include "desktop/icons/Icons.h"
#include "desktop/window/AboutDialog.h"
#include "desktop/window/MainWindow.h"
#include "desktop/window/OpenMenu.h"
#include "desktop/window/ShortcutsDialog.h"
#include "platform/DesktopId.h"

#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <algorithm>
#include <functional>

namespace vellumo {

void addExportCommands(QMenu& menu, VellumoAppDelegate& app)
{
    for (const auto& item : exportItems()) {
        auto* action = menu.addAction(icon(toQString(item.iconName)), toQString(item.label()) + QStringLiteral("…"),
            [&app, tag = item.exportTag] { app.Export(tag); });
        action->setObjectName(toQString(item.identifier));
    }
}

namespace {

ApplicationMenuTitles titles() { return applicationMenuTitles(programName); }

} // namespace

MainMenus::MainMenus(MainWindow& window, VellumoAppDelegate& app)
    : QObject(&window)
    , m_window(window)
    , m_app(app)
    , m_bar(*window.menuBar())
    , m_editActions(makeEditActions(window, app.dataView()))
{
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeGoMenu();
    makeWindowMenu();
    makeHelpMenu();
    update();
}

QAction* MainMenus::add(
    QMenu& menu, const QString& title, const QList<QKeySequence>& shortcuts, std::function<void()> run)
{
    auto* action = menu.addAction(title, this, std::move(run));
    action->setShortcuts(shortcuts);
    return action;
}

QAction* MainMenus::addFileCommand(QMenu& menu, const char* key, const QList<QKeySequence>& shortcuts,
    FileCommand command, void (VellumoAppDelegate::*run)(Sender))
{
    auto* action = add(menu, localizedText(key), shortcuts, [this, run] { std::invoke(run, m_app, Sender::Other); });
    enableWhile(action, [this, command] { return m_app.canUse(command, Sender::Other); });
    return action;
}

void MainMenus::makeFileMenu()
{
    auto& menu = *m_bar.addMenu(localizedText("&File"));
    m_fileMenu = &menu;
    connect(&menu, &QMenu::aboutToShow, this, [this] { m_itemOfFileMenu = selectedItem(); });
    add(menu, localizedText("&Open…"), {QKeySequence::Open}, [this] {
        m_app.OpenFile();
    })->setIcon(icon("open_folder"));
    enableWhile(
        add(menu, localizedText("Read A&gain"), {QKeySequence::Refresh}, [this] { m_app.ReadAgain(); }), [this] {
            return m_app.canUse(FileCommand::Open, Sender::Other) || m_app.canUse(FileCommand::Close, Sender::Other);
        });
    addFileCommand(menu, messageKey("Open Selected &File"), {Qt::CTRL | Qt::SHIFT | Qt::Key_O}, FileCommand::Open,
        &VellumoAppDelegate::OpenSelectedFile);
    enableWhile(add(menu, localizedText("Open Table in &New Window"), {QKeySequence::New},
                    [this] { m_app.OpenTableInNewWindow(*m_app.selectedTable()); }),
        [this] { return m_app.selectedTable() != nullptr; });
    menu.addSeparator();
    auto* exports = menu.addMenu(localizedText("&Export"));
    addExportCommands(*exports, m_app);
    enableWhile(exports, [this] { return m_app.canExport(); });
    menu.addSeparator();
    addFileListCommands(menu);
    menu.addSeparator();
    m_openMenu = new OpenMenu(*this, menu, m_app);
    add(menu, localizedText("&Settings…"), {Qt::CTRL | Qt::Key_Comma},
        [this] { (new SettingsDialog(m_app, &m_window))->open(); });
    menu.addSeparator();
    add(menu, toQString(titles().quit), {Qt::CTRL | Qt::Key_Q}, [this] { m_window.close(); });
}

void MainMenus::addFileListCommands(QMenu& menu)
{
    addFileCommand(
        menu, messageKey("Show in File &Manager"), {}, FileCommand::ShowInFinder, &VellumoAppDelegate::ShowInFinder);
    enableWhile(add(menu, localizedText("Loo&k for Lost Rows…"), {}, [this] { m_app.LookForLostRows(); }),
        [this] { return m_app.canUse(FileCommand::LookForLostRows, Sender::Other); });
    addFileCommand(menu, messageKey("&Close File"), {QKeySequence::Close}, FileCommand::Close,
        &VellumoAppDelegate::CloseSelectedFile);
    auto* remove = addFileCommand(menu, messageKey("&Remove from List"), {Qt::CTRL | Qt::Key_Backspace},
        FileCommand::Remove, &VellumoAppDelegate::RemoveSelectedFile);
    m_window.addFileListCommand(*remove); // in a text field the key deletes a word
    addFileCommand(
        menu, messageKey("Remove O&ther Files"), {}, FileCommand::RemoveOthers, &VellumoAppDelegate::RemoveOtherFiles);
    enableWhile(add(menu, localizedText("C&lear File List"), {}, [this] { m_app.clearRecentDocuments(); }),
        [this] { return m_app.canClearRecentDocuments(); });
}

void MainMenus::makeEditMenu()
{
    auto& menu = *m_bar.addMenu(localizedText("&Edit"));
    menu.addActions({m_editActions.copy, m_editActions.selectAll, m_editActions.deselectAll});
    menu.addSeparator();
    add(menu, localizedText("&Find"), {QKeySequence::Find}, [this] { m_app.Find(); });
    add(menu, localizedText("Filter File &List"), {Qt::CTRL | Qt::SHIFT | Qt::Key_F},
        [this] { m_window.focusFileFilter(); });
    menu.addSeparator();
    menu.addAction(m_editActions.jumpToRow);
}

void MainMenus::makeViewMenu()
{
    auto& menu = *m_bar.addMenu(localizedText("&View"));
    m_viewMenu = &menu;
    constexpr std::array commands = {&VellumoAppDelegate::ToggleTreeView, &VellumoAppDelegate::ToggleInformationView,
        &VellumoAppDelegate::ToggleTextView, &VellumoAppDelegate::ToggleJumpBar, &VellumoAppDelegate::ToggleNumRows,
        &VellumoAppDelegate::ToggleLookupTexts, &VellumoAppDelegate::ToggleCaptions};
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const auto key = static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(i));
        m_toggles[i] = add(menu, {}, {Qt::CTRL | key}, [this, command = commands[i]] { std::invoke(command, m_app); });
        toggleDidChange(ViewToggles::all[i]);
    }
    menu.addSeparator();
    enableWhile(
        add(menu, localizedText("&Fit Columns"), {Qt::CTRL | Qt::SHIFT | Qt::Key_W}, [this] { m_window.fitColumns(); }),
        [this] { return m_app.selectedTable() != nullptr; });
    m_fullScreen = add(menu, {}, {Qt::Key_F11}, [this] { m_window.toggleFullScreen(); });
}

void MainMenus::addAppearanceMenu(Appearance& appearance)
{
    using enum Appearance::Choice;
    const struct {
        const char* titleKey;
        Appearance::Choice choice;
    } choices[] = {
        {messageKey("Like the &Desktop"), System}, {messageKey("&Light"), Light}, {messageKey("&Dark"), Dark}};
    auto& menu = *m_viewMenu->addMenu(localizedText("&Appearance"));
    auto* group = new QActionGroup(&menu);
    for (const auto& [titleKey, choice] : choices) {
        auto* action = add(menu, localizedText(titleKey), {}, [this, &appearance, choice = choice] {
            appearance.setChoice(choice);
            m_window.storeSoon();
        });
        action->setCheckable(true);
        action->setChecked(choice == appearance.choice());
        group->addAction(action);
    }
}

void MainMenus::makeGoMenu()
{
    auto& menu = *m_bar.addMenu(localizedText("&Go"));
    const auto go = [&](std::string_view identifier, int key, void (VellumoAppDelegate::*command)()) {
        const auto* item = toolbarItem(identifier);
        auto* action = add(menu, toQString(item->label()), {Qt::ALT | static_cast<Qt::Key>(key)},
            [this, command] { std::invoke(command, m_app); });
        action->setIcon(icon(toQString(item->iconName)));
        return action;
    };
    enableWhile(go("navigationBack", Qt::Key_Left, &VellumoAppDelegate::PreviousSelectedTable),
        [this] { return m_app.history().isBackEnabled(); });
    enableWhile(go("navigationNext", Qt::Key_Right, &VellumoAppDelegate::NextSelectedTable),
        [this] { return m_app.history().isNextEnabled(); });
    menu.addSeparator();
    addPaneCommands(menu);
}

void MainMenus::addPaneCommands(QMenu& menu)
{
    add(menu, localizedText("Next &Pane"), {Qt::Key_F6}, [this] { m_window.focusPane(1); });
    add(menu, localizedText("P&revious Pane"), {Qt::SHIFT | Qt::Key_F6}, [this] { m_window.focusPane(-1); });
}

void MainMenus::makeWindowMenu()
{
    auto& menu = *m_bar.addMenu(localizedText("&Window"));
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { listTableWindows(menu); });
    listTableWindows(menu);
}

void MainMenus::listTableWindows(QMenu& menu)
{
    menu.clear();
    add(menu, toQString(titles().hide), {}, [this] { m_window.showMinimized(); });
    if (m_app.childWinManager() == nullptr || m_app.childWinManager()->childWins().empty()) return;
    menu.addSeparator();
    for (const auto& child : m_app.childWinManager()->childWins())
        add(menu, toQString(child->title()).replace('&', "&&"), {},
            [this, window = child.get()] { bringToFront(window); });
}

// The window may have closed since the menu opened.
void MainMenus::bringToFront(const ChildWindow* window)
{
    const auto& windows = m_app.childWinManager()->childWins();
    const auto place = std::ranges::find(windows, window, &std::unique_ptr<ChildWindow>::get);
    if (place != windows.end()) (*place)->port().makeKey();
}

void MainMenus::makeHelpMenu()
{
    auto& menu = *m_bar.addMenu(localizedText("&Help"));
    add(menu, localizedText("&Keyboard Shortcuts"), {Qt::CTRL | Qt::Key_Question},
        [this] { showShortcutsDialog(m_window, m_bar); });
    menu.addSeparator();
    add(menu, toQString(titles().about), {}, [this] { showAboutDialog(m_window); });
}

void MainMenus::toggleDidChange(ViewToggle toggle)
{
    m_toggles[static_cast<std::size_t>(toggle)]->setText(toQString(m_app.toggles().menuTitle(toggle)));
}

void MainMenus::settingsDidChange() { m_openMenu->settingsDidChange(); }

void MainMenus::scheduleUpdate()
{
    if (std::exchange(m_isUpdateScheduled, true)) return;
    QTimer::singleShot(0, this, [this] {
        m_isUpdateScheduled = false;
        update();
    });
}

ItemId MainMenus::selectedItem() const { return m_app.fileList().idOf({m_app.selectedFile(), m_app.selectedTable()}); }

void MainMenus::update()
{
    // An opening that ends selects its file: what was about to be chosen was meant for another one.
    if (m_fileMenu->isVisible() && selectedItem() != m_itemOfFileMenu) m_fileMenu->close();
    for (const auto& apply : m_conditions)
        apply();
    m_editActions.update(m_app.dataView());
    m_fullScreen->setText(
        m_window.isFullScreen() ? localizedText("Exit Full Screen") : toQString(fullScreenMenuTitle()));
}

} // namespace vellumo
