// SPDX-License-Identifier: MIT
#include "desktop/window/TableWindow.h"

#include "browser/ChildWindow.h"
#include "browser/DamageDetails.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/window/DamageBar.h"
#include "desktop/window/EditActions.h"
#include "desktop/window/FindLine.h"
#include "desktop/window/WindowLayout.h"
#include "ui_ChildWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QScreen>
#include <QTimer>

namespace vellumo {

namespace {

constexpr const char* layoutKey = "tableWindowLayout";
constexpr const char* sizeKey = "tableWindowSize"; // "760x520"

} // namespace

TableWindow::TableWindow(ChildWindow& window, Defaults& defaults, std::function<void()> layoutDidChange)
    : m_window(window)
    , m_defaults(defaults)
    , m_layoutDidChange(std::move(layoutDidChange))
    , m_ui(std::make_unique<Ui::ChildWindow>())
    , m_damageBar(new DamageBar(this))
    , m_findLine(new FindLine(this))
{
    m_ui->setupUi(this);
    setObjectName("tableWindow");
    setWindowIcon(applicationIcon());
    m_ui->layout->insertWidget(0, m_damageBar);
    m_ui->layout->addWidget(m_findLine);
    m_ui->dataView->setJumpBarShown(true);
    restoreLayout();
    m_ui->dataView->setLayoutListener([this] { storeLayout(); });
    // Closing the main window ends the program, whatever other windows there are.
    setAttribute(Qt::WA_QuitOnClose, false);
    setTabOrderOf({m_damageBar, m_ui->dataView, m_findLine});
    addCommands();
}

void TableWindow::addCommands()
{
    const auto add = [this](const char* key, const QList<QKeySequence>& shortcuts, auto run) {
        auto* action = new QAction(localizedText(key), this);
        action->setShortcuts(shortcuts);
        connect(action, &QAction::triggered, this, run);
        addAction(action);
    };
    add(messageKey("Close"), {QKeySequence::Close}, [this] { close(); });
    add(messageKey("Find"), {QKeySequence::Find}, [this] { m_findLine->focusField(); });
    add(messageKey("Find &Next"), {Qt::Key_F3}, [this] { m_findLine->findNext(1); });
    add(messageKey("Find &Previous"), {Qt::SHIFT | Qt::Key_F3}, [this] { m_findLine->findNext(-1); });
    add(messageKey("Fit Columns"), {Qt::CTRL | Qt::SHIFT | Qt::Key_W}, [this] { m_ui->dataView->fitColumns(); });
    add(messageKey("Enter Full Screen"), {Qt::Key_F11},
        [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    for (const int step : {1, -1})
        add(messageKey("Next &Pane"), {step > 0 ? QKeySequence(Qt::Key_F6) : QKeySequence(Qt::SHIFT | Qt::Key_F6)},
            [this, step] {
                focusNextPane({m_ui->dataView->findChild<QWidget*>("dataTableView"),
                                  m_ui->dataView->findChild<QWidget*>("bottomTextView"), m_findLine},
                    step);
            });
}

TableWindow::~TableWindow() = default;

void TableWindow::restoreLayout()
{
    m_ui->dataView->restoreLayout(m_defaults.string(layoutKey).value_or(""));
    const auto parts = toQString(m_defaults.string(sizeKey).value_or("")).split('x');
    const QSize size(parts.first().toInt(), parts.last().toInt());
    if (!size.isEmpty()) resize(size.boundedTo(screen()->availableSize()));
}

void TableWindow::storeLayout()
{
    const auto size = normalGeometry().size();
    m_defaults.setString(sizeKey, fromQString(QString("%1x%2").arg(size.width()).arg(size.height())));
    m_defaults.setString(layoutKey, m_ui->dataView->layoutState());
    m_layoutDidChange();
}

void TableWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (isVisible()) storeLayout(); // however the window goes later
}

// The ChildWindow may not be asked before it is made, which it is when it tells its first title.
void TableWindow::attach()
{
    if (m_editActions) return;
    m_ui->dataView->setDataView(m_window.dataView());
    m_ui->dataView->jumpBar().setMenu(
        m_window.jumpBar(), [this](const TreeItem& item) { m_window.jumpBarDidSelectItem(item); });
    m_editActions = std::make_unique<EditActions>(makeEditActions(*this, m_window.dataView()));
    m_findLine->setDataView(m_window.dataView());
    const auto follow = [this] {
        m_editActions->update(m_window.dataView());
        m_findLine->recordsDidChange();
    };
    m_window.dataView().setSelectionListener(follow);
    m_window.dataView().setRowsListener(follow);
}

DataViewPort& TableWindow::dataView() { return *m_ui->dataView; }

void TableWindow::setTitle(const std::string& title)
{
    attach();
    setWindowTitle(plainWindowTitle(title));
    const auto* table = m_window.tableToShow();
    m_damageBar->setText(toQString(table == nullptr ? "" : damageOf(*table)));
    // The table of that title is shown right after.
    QTimer::singleShot(0, this, [this] {
        m_editActions->update(m_window.dataView());
        m_findLine->recordsDidChange();
    });
}

void TableWindow::setLevel(WindowLevel level)
{
    const auto isOnTop = level == WindowLevel::ModalPanel;
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == isOnTop) return;
    const auto wasVisible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, isOnTop); // hides the window
    if (wasVisible) show();
}

void TableWindow::makeKey()
{
    show();
    raise();
    activateWindow();
}

void TableWindow::jumpBarMenuDidChange() { m_ui->dataView->jumpBar().selectionDidChange(); }

void TableWindow::jumpBarSelectionDidChange() { m_ui->dataView->jumpBar().selectionDidChange(); }

void TableWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    // Closing destroys this object, which has to wait until the event is done with.
    QMetaObject::invokeMethod(
        this, [this] { m_window.windowWillClose(); }, Qt::QueuedConnection);
}

} // namespace vellumo
