// SPDX-License-Identifier: MIT
#include "desktop/window/MainWindow.h"

#include "desktop/QtText.h"
#include "desktop/dialogs/DamageSheet.h"
#include "desktop/dialogs/ExportDialog.h"
#include "desktop/dialogs/ExportProgressDialog.h"
#include "desktop/dialogs/PasswordSheet.h"
#include "desktop/grid/DataViewWidget.h"
#include "desktop/icons/Icons.h"
#include "desktop/information/InformationPanel.h"
#include "desktop/tree/FileListPanel.h"
#include "desktop/window/DamageBar.h"
#include "desktop/window/MainMenus.h"
#include "desktop/window/MainToolBar.h"
#include "desktop/window/OpenProgress.h"
#include "desktop/window/SearchField.h"
#include "desktop/window/StatusLine.h"
#include "desktop/window/TableWindow.h"
#include "desktop/window/WindowLayout.h"
#include "platform/DesktopId.h"
#include "text/Format.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTimer>
#include <QUrl>

namespace vellumo {

namespace {

constexpr const char* geometryKey = "mainWindowGeometry";
constexpr const char* columnsKey = "mainWindowColumns";
constexpr const char* leftColumnKey = "mainWindowLeftColumn";
constexpr const char* dataViewKey = "mainWindowDataView";
constexpr int storeDelayMs = 2000;
constexpr int waitingDelayMs = 100;
constexpr int lookAtDiskMs = 3000;

std::vector<std::string> localFiles(const QMimeData& data)
{
    std::vector<std::string> paths;
    for (const auto& url : data.urls())
        if (url.isLocalFile()) paths.push_back(fromQString(url.toLocalFile()));
    return paths;
}

} // namespace

MainWindow::MainWindow(const DesktopPorts& desktop)
    : m_defaults(desktop.defaults)
    , m_dataView(new DataViewWidget(this))
    , m_app(std::make_unique<VellumoAppDelegate>(*this, desktop))
    , m_fileList(new FileListPanel(*m_app, this))
    , m_information(new InformationPanel(*m_app, this))
    , m_toolBar(new MainToolBar(*m_app, this))
    , m_statusLine(new StatusLine(*m_app, this))
    , m_openProgress(new OpenProgress([this] { m_app->StopOpening(); }, this))
    , m_lookupProgress(new OpenProgress([this] { m_app->StopLookingUp(); }, this))
    , m_damageBar(new DamageBar(this))
    , m_changeBar(new DamageBar(this))
    , m_menus(new MainMenus(*this, *m_app))
    , m_columns(new QSplitter(Qt::Horizontal, this))
    , m_leftColumn(new QSplitter(Qt::Vertical, this))
    , m_storeLater(new QTimer(this))
    , m_lookAtDisk(new QTimer(this))
    , m_openLater(new QTimer(this))
{
    setObjectName("mainWindow");
    setWindowTitle(programName);
    setWindowIcon(applicationIcon());
    setAcceptDrops(true);
    for (auto* action : m_toolBar->exportActions())
        m_menus->enableWhile(action, [this] { return m_app->canExport(); });
    setContextMenuPolicy(Qt::NoContextMenu);
    m_dataView->setDataView(m_app->dataView());
    m_dataView->jumpBar().setMenu(
        m_app->jumpBar(), [this](const TreeItem& item) { m_app->jumpBarDidSelectItem(item); });
    layOutPanels();
    setTabOrderOf({m_toolBar, m_fileList, m_information, m_changeBar, m_damageBar, m_dataView, m_statusLine});
    m_storeLater->setSingleShot(true);
    m_storeLater->setInterval(storeDelayMs);
    connect(m_storeLater, &QTimer::timeout, this, [this] { storeSettings(); });
    m_openLater->setSingleShot(true);
    m_openLater->setInterval(waitingDelayMs);
    connect(m_openLater, &QTimer::timeout, this, [this] { openWaitingFiles(); });
    m_lookAtDisk->setInterval(lookAtDiskMs);
    connect(m_lookAtDisk, &QTimer::timeout, this, [this] { m_app->lookAtDisk(); });
    m_lookAtDisk->start();
    for (auto* splitter : {m_columns, m_leftColumn})
        connect(splitter, &QSplitter::splitterMoved, m_storeLater, qOverload<>(&QTimer::start));
    m_dataView->setLayoutListener([this] { storeSoon(); });
    m_dataView->setClearSearch([this] { m_app->ClearSearch(); });
    qApp->installEventFilter(this); // for the mouse's Back and Next buttons, wherever the pointer is
}

MainWindow::~MainWindow()
{
    qApp->removeEventFilter(this);
    hide(); // visible widgets would ask the controller, which goes before them
}

void MainWindow::layOutPanels()
{
    addToolBar(m_toolBar);
    setStatusBar(m_statusLine);
    m_statusLine->insertPermanentWidget(1, m_openProgress); // right behind the text
    m_statusLine->insertPermanentWidget(2, m_lookupProgress);
    m_openProgress->hide(); // the line shows what it is given
    m_lookupProgress->hide();
    m_leftColumn->addWidget(m_fileList);
    m_leftColumn->addWidget(m_information);
    m_leftColumn->setChildrenCollapsible(false);
    m_leftColumn->setSizes({300, 320});
    m_leftColumn->setHandleWidth(8);
    m_columns->addWidget(m_leftColumn);
    m_columns->addWidget(makeRightColumn());
    m_columns->setChildrenCollapsible(false);
    m_columns->setStretchFactor(0, 0);
    m_columns->setStretchFactor(1, 1);
    m_columns->setSizes({300, 820});
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->addWidget(m_columns);
    setCentralWidget(central);
    setMinimumWidth(m_toolBar->leastWidth());
    // Less on a small screen, or on one whose pixels are counted double.
    resize(QSize(1120, 700).boundedTo(screen()->availableSize() * 0.95));
}

QWidget* MainWindow::makeRightColumn()
{
    m_damageBar->addButton(messageKey("Details…"), "damageDetails", [this] { m_app->ShowDamage(); });
    auto* look = m_damageBar->addButton(
        messageKey("Look for lost rows"), "lookForLostRows", [this] { m_app->LookForLostRows(); });
    m_menus->enableWhile(look, [this] {
        return m_app->canUse(VellumoAppDelegate::FileCommand::LookForLostRows, VellumoAppDelegate::Sender::Other);
    });
    m_changeBar->setObjectName("changeBar");
    m_changeBar->addButton(messageKey("Read Again"), "readAgain", [this] { m_app->ReadAgain(); });
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_changeBar);
    layout->addWidget(m_damageBar);
    layout->addWidget(m_dataView, 1);
    return column;
}

// Life

void MainWindow::start()
{
    restoreState();
    m_app->applicationDidFinishLaunching();
    m_fileList->setFocus();
    show();
}

void MainWindow::openFiles(const std::vector<std::string>& paths)
{
    m_waitingFiles.insert(m_waitingFiles.end(), paths.begin(), paths.end());
    bringToFront();
    openWaitingFiles();
}

void MainWindow::openWaitingFiles()
{
    if (m_app->isExporting() || m_waitingFiles.empty()) return;
    // What a menu or a dialog offers has to be there when it is chosen. Nobody tells when the last of them has closed.
    if (QApplication::activePopupWidget() != nullptr || QApplication::activeModalWidget() != nullptr)
        return m_openLater->start();
    const auto paths = std::exchange(m_waitingFiles, {});
    m_app->applicationOpenFiles(paths);
}

void MainWindow::terminate()
{
    m_app->applicationShouldTerminate();
    QCoreApplication::exit();
}

void MainWindow::shutDown()
{
    if (std::exchange(m_isShutDown, true)) return;
    m_app->applicationShouldTerminate();
    if (m_isExportRunning && m_app->exportWizard()) m_app->exportWizard()->stop();
    // The worker reports its end on this thread.
    while (m_isExportRunning)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    m_storeLater->stop();
    storeState();
    m_app->applicationWillTerminate();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    storeState();
    event->accept();
}

void MainWindow::restoreState()
{
    // What was never stored leaves everything as it is.
    if (restoreGeometry(storedLayout(m_defaults, geometryKey))) boundToScreen(*this);
    m_columns->restoreState(storedLayout(m_defaults, columnsKey));
    m_leftColumn->restoreState(storedLayout(m_defaults, leftColumnKey));
    m_dataView->restoreLayout(m_defaults.string(dataViewKey).value_or(""));
}

void MainWindow::storeState()
{
    storeLayout(m_defaults, geometryKey, saveGeometry());
    storeLayout(m_defaults, columnsKey, m_columns->saveState());
    storeLayout(m_defaults, leftColumnKey, m_leftColumn->saveState());
    m_defaults.setString(dataViewKey, m_dataView->layoutState());
}

void MainWindow::storeSettings()
{
    storeState();
    m_app->storeSettings();
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    m_storeLater->start();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    m_storeLater->start();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && m_app) m_app->lookAtDisk();
    if (event->type() != QEvent::WindowStateChange) return;
    m_menus->scheduleUpdate();
    if (auto* tableWindows = m_app->childWinManager()) tableWindows->AllAlwaysOnTop(isFullScreen());
}

void MainWindow::addAppearanceMenu(Appearance& appearance) { m_menus->addAppearanceMenu(appearance); }

void MainWindow::storeSoon() { m_storeLater->start(); }

void MainWindow::toggleFullScreen() { setWindowState(windowState() ^ Qt::WindowFullScreen); }

void MainWindow::focusPane(int step)
{
    focusNextPane(
        {m_fileList, m_information, findChild<QWidget*>("dataTableView"), findChild<QWidget*>("bottomTextView")}, step);
}

void MainWindow::fitColumns() { m_dataView->fitColumns(); }

void MainWindow::focusFileFilter()
{
    if (!m_app->toggles().isShown(ViewToggle::FileTree)) m_app->ToggleTreeView();
    m_fileList->focusFilter();
}

void MainWindow::addFileListCommand(QAction& command) { m_fileList->addCommand(command); }

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The second of two quick presses comes as a double click.
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != this) return false;
    const auto button = static_cast<QMouseEvent*>(event)->button();
    if (button == Qt::BackButton) m_app->PreviousSelectedTable();
    if (button == Qt::ForwardButton) m_app->NextSelectedTable();
    return button == Qt::BackButton || button == Qt::ForwardButton;
}

// Dropped files

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!m_app->validateDrop(localFiles(*event->mimeData()))) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const auto paths = localFiles(*event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The program that they come from waits for the end of the drop.
    QTimer::singleShot(0, this, [this, paths] { m_app->acceptDrop(paths); });
}

// MainWindowView

DataViewPort& MainWindow::dataView() { return *m_dataView; }

void MainWindow::reloadTree()
{
    m_fileList->reload();
    m_menus->scheduleUpdate();
    showDamage();
}

void MainWindow::fileWillClose(TAdmMDBFile& file) { m_fileList->fileWillClose(file); }

void MainWindow::setTreeItemExpanded(TAdmMDBFile& file, bool isExpanded)
{
    if (isExpanded)
        m_fileList->expand(file);
    else
        m_fileList->collapse(file);
}

void MainWindow::treeSelectionDidChange() { m_fileList->selectionDidChange(); }

void MainWindow::scrollToTreeSelection() { m_fileList->scrollToSelection(); }

void MainWindow::informationDidChange(InformationChange change, InformationType type)
{
    switch (change) {
    case InformationChange::Bar: m_information->barDidChange(); break;
    case InformationChange::Lists: m_information->reload(type); break;
    case InformationChange::Details: m_information->detailsDidChange(type); break;
    }
}

void MainWindow::partDidChange(WindowPart part)
{
    switch (part) {
    case WindowPart::StatusText: statusTextDidChange(); break;
    case WindowPart::Placeholder: m_fileList->placeholderDidChange(); break;
    case WindowPart::Navigation:
        m_toolBar->navigationDidChange();
        m_menus->scheduleUpdate();
        break;
    case WindowPart::JumpBar: m_dataView->jumpBar().selectionDidChange(); break;
    case WindowPart::SearchMenu: m_toolBar->searchDidChange(); break;
    case WindowPart::ChangeBar: showChange(); break;
    case WindowPart::Settings:
        m_menus->settingsDidChange();
        m_storeLater->start();
        break;
    }
}

// Every change of what is selected or listed comes by here.
void MainWindow::statusTextDidChange()
{
    m_statusLine->textDidChange();
    m_menus->scheduleUpdate();
    const auto selected = m_app->selectionTitle();
    const auto title = selected.empty() ? programName : plainWindowTitle(selected) + " – " + programName;
    if (title != windowTitle()) m_app->lookAtDisk();
    setWindowTitle(title);
    showDamage();
    showChange();
}

void MainWindow::showChange() { m_changeBar->setText(toQString(m_app->changeBarText())); }

void MainWindow::showDamage() { m_damageBar->setText(toQString(m_app->damageBarText())); }

void MainWindow::viewToggleDidChange(ViewToggle toggle)
{
    const auto isShown = m_app->toggles().isShown(toggle);
    if (toggle == ViewToggle::FileTree) m_fileList->setVisible(isShown);
    if (toggle == ViewToggle::InformationView) m_information->setVisible(isShown);
    m_leftColumn->setVisible(
        m_app->toggles().isShown(ViewToggle::FileTree) || m_app->toggles().isShown(ViewToggle::InformationView));
    m_menus->toggleDidChange(toggle);
    m_statusLine->toggleDidChange(toggle);
    m_storeLater->start();
}

// The buttons of Qt's toolbars do not stay selected, but what they may do has changed.
void MainWindow::deselectAllForToolbarItems() { m_menus->scheduleUpdate(); }

void MainWindow::focusDataSearchField()
{
    m_toolBar->searchField().setFocus(Qt::ShortcutFocusReason);
    m_toolBar->searchField().selectAll();
}

void MainWindow::openDidBegin(const TAdmMDBFile& file)
{
    m_openProgress->begin(toQString(localizedFormat("Opening %@…", {file.label()})));
    m_menus->scheduleUpdate();
}

void MainWindow::openDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected)
{
    m_openProgress->advance(rowsDone, rowsExpected);
}

void MainWindow::openDidEnd()
{
    m_openProgress->end();
    m_menus->scheduleUpdate();
    showChange();
}

void MainWindow::lookupDidBegin(const TAdmMDBTable& table)
{
    m_lookupProgress->begin(toQString(localizedFormat("Looking up texts of %@…", {table.name()})));
}

void MainWindow::lookupDidProgress(std::uint64_t rowsDone, std::uint64_t rowsExpected)
{
    m_lookupProgress->advance(rowsDone, rowsExpected);
}

void MainWindow::lookupDidEnd() { m_lookupProgress->end(); }

void MainWindow::beginDamageSheet(const std::shared_ptr<DamageDetails>& details)
{
    (new DamageSheet(details, this))->open(); // destroys itself
}

void MainWindow::beginSalvageSheet()
{
    auto* sheet = new SalvageSheet(this); // destroys itself
    // Only when the sheet has gone: opening the file takes a while, and shows sheets of its own.
    connect(sheet, &QDialog::accepted, this, [this, sheet] {
        QTimer::singleShot(0, this, [this, salvage = sheet->salvage()] { m_app->salvageSheetDidEnd(salvage); });
    });
    sheet->open();
}

void MainWindow::beginPasswordSheet(const PasswordQuestion& question)
{
    auto* sheet = new PasswordSheet(question, this); // destroys itself
    connect(sheet, &QDialog::finished, this, [this, sheet](int result) {
        const auto answer = result == QDialog::Accepted ? std::optional(sheet->password()) : std::nullopt;
        // Only when the sheet has gone: what comes of the answer may be another one.
        QTimer::singleShot(0, this, [this, answer] { m_app->passwordSheetDidEnd(answer); });
    });
    sheet->open();
}

void MainWindow::beginExportSheet(const std::shared_ptr<ExportWizard>& wizard)
{
    auto* dialog = new ExportDialog(wizard, this); // destroys itself
    connect(dialog, &ExportDialog::sheetEnded, this, [this](int returnCode) {
        m_app->exportSheetDidEnd(returnCode);
        openWaitingFiles();
    });
    dialog->open();
}

void MainWindow::beginExportProgressSheet(const std::shared_ptr<ExportWizard>& wizard)
{
    m_isExportRunning = true;
    auto* dialog = new ExportProgressDialog(wizard, this); // destroys itself
    connect(dialog, &ExportProgressDialog::exportDidFinish, this, [this] {
        m_isExportRunning = false;
        m_app->exportDidFinish();
        m_menus->scheduleUpdate();
        openWaitingFiles();
    });
    dialog->open();
}

std::unique_ptr<ChildWindowPort> MainWindow::createChildWindow(ChildWindow& window)
{
    return std::make_unique<TableWindow>(window, m_defaults, [this] { storeSoon(); });
}

bool MainWindow::isFullScreen() const { return QMainWindow::isFullScreen(); }

void MainWindow::bringToFront()
{
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

} // namespace vellumo
