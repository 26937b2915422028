// SPDX-License-Identifier: MIT
#pragma once

#include "browser/MainWindowView.h"
#include "browser/VellumoAppDelegate.h"

#include <QMainWindow>

#include <memory>
#include <string>
#include <vector>

class QSplitter;
class QTimer;

namespace vellumo {

class Appearance;
class DamageBar;
class DataViewWidget;
class FileListPanel;
class InformationPanel;
class MainMenus;
class MainToolBar;
class OpenProgress;
class StatusLine;

// The main window. It shows what its controller has and forwards what the user does.
class MainWindow : public QMainWindow, public MainWindowView {
public:
    // The interfaces outlive the window.
    explicit MainWindow(const DesktopPorts& desktop);
    ~MainWindow() override;

    [[nodiscard]] VellumoAppDelegate& app() { return *m_app; }

    // Shows the window as it was left, with the file list.
    void start();
    // Opens files that were handed over, as soon as nothing is in the way; and comes to the front.
    void openFiles(const std::vector<std::string>& paths);
    // Ends what runs and then the event loop, without a question.
    void terminate();
    // Ends an export that runs and stores what is to be kept. Afterwards the window may go, and gives up a file that is
    // being opened.
    void shutDown();

    // Offers the choice between light and dark. `appearance` outlives the window's use.
    void addAppearanceMenu(Appearance& appearance);

    // Stores the settings once nothing has changed for a while.
    void storeSoon();
    void focusFileFilter();
    // From now on the command's keys work only while the file list has the keyboard.
    void addFileListCommand(QAction& command);
    void toggleFullScreen();
    void fitColumns();
    // The pane behind the one that has the keyboard (`step` 1), or before it (-1).
    void focusPane(int step);

    // MainWindowView
    [[nodiscard]] DataViewPort& dataView() override;
    void reloadTree() override;
    void fileWillClose(TAdmMDBFile& file) override;
    void setTreeItemExpanded(TAdmMDBFile& file, bool isExpanded) override;
    void treeSelectionDidChange() override;
    void scrollToTreeSelection() override;
    void informationDidChange(InformationChange change, InformationType type) override;
    void partDidChange(WindowPart part) override;
    void viewToggleDidChange(ViewToggle toggle) override;
    void deselectAllForToolbarItems() override;
    void focusDataSearchField() override;
    void openDidBegin(const TAdmMDBFile& file) override;
    void openDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected) override;
    void openDidEnd() override;
    void lookupDidBegin(const TAdmMDBTable& table) override;
    void lookupDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected) override;
    void lookupDidEnd() override;
    void beginDamageSheet(const std::shared_ptr<DamageDetails>& details) override;
    void beginSalvageSheet() override;
    void beginPasswordSheet(const PasswordQuestion& question) override;
    void beginExportSheet(const std::shared_ptr<ExportWizard>& wizard) override;
    void beginExportProgressSheet(const std::shared_ptr<ExportWizard>& wizard) override;
    [[nodiscard]] std::unique_ptr<ChildWindowPort> createChildWindow(ChildWindow& window) override;
    [[nodiscard]] bool isFullScreen() const override;
    void bringToFront() override;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOutPanels();
    [[nodiscard]] QWidget* makeRightColumn();
    void statusTextDidChange();
    void showDamage();
    void showChange();
    void restoreState();
    void storeState();
    void storeSettings();
    void openWaitingFiles();

    Defaults& m_defaults;
    DataViewWidget* m_dataView;
    // The panels ask the controller for what they show, so they are made after it.
    std::unique_ptr<VellumoAppDelegate> m_app;
    FileListPanel* m_fileList;
    InformationPanel* m_information;
    MainToolBar* m_toolBar;
    StatusLine* m_statusLine;
    OpenProgress* m_openProgress; // in the status line
    OpenProgress* m_lookupProgress;
    DamageBar* m_damageBar;
    DamageBar* m_changeBar; // that the file has changed on disk
    MainMenus* m_menus;
    QSplitter* m_columns; // left: file list and information, right: damage bar and data view
    QSplitter* m_leftColumn;
    QTimer* m_storeLater;                    // so that a program that is killed has what was changed before
    QTimer* m_lookAtDisk;                    // whether the selected file has changed there
    QTimer* m_openLater;                     // looks again whether files that wait can be opened
    std::vector<std::string> m_waitingFiles; // handed over while something was in the way
    bool m_isExportRunning = false;
    bool m_isShutDown = false;
};

} // namespace vellumo
