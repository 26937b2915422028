#include "desktop/window/TableWindow.h"

#include "browser/ChildWindow.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/window/EditActions.h"
#include "desktop/window/WindowLayout.h"
#include "ui_ChildWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QTimer>

namespace vellumo {

namespace {

constexpr const char* layoutKey = "tableWindowLayout";

} // namespace

TableWindow::TableWindow(ChildWindow& window, Defaults& defaults)
    : m_window(window)
    , m_defaults(defaults)
    , m_ui(std::make_unique<Ui::ChildWindow>())
{
    m_ui->setupUi(this);
    setObjectName("tableWindow");
    setWindowIcon(applicationIcon());
    m_ui->dataView->setJumpBarShown(true);
    m_ui->dataView->restoreLayout(m_defaults.string(layoutKey).value_or(""));
    // Closing the main window ends the program, whatever other windows there are.
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* close = new QAction(localizedText("Close"), this);
    close->setShortcuts(QKeySequence::Close);
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
}

TableWindow::~TableWindow() = default;

// The ChildWindow may not be asked before it is made, which it is when it tells its first title.
void TableWindow::attach()
{
    if (m_editActions) return;
    m_ui->dataView->setDataView(m_window.dataView());
    m_ui->dataView->jumpBar().setMenu(
        m_window.jumpBar(), [this](const TreeItem& item) { m_window.jumpBarDidSelectItem(item); });
    m_editActions = std::make_unique<EditActions>(makeEditActions(*this, m_window.dataView()));
    m_window.dataView().setSelectionListener([this] { m_editActions->update(m_window.dataView()); });
}

DataViewPort& TableWindow::dataView() { return *m_ui->dataView; }

void TableWindow::setTitle(const std::string& title)
{
    attach();
    setWindowTitle(toQString(title));
    // The table of that title is shown right after.
    QTimer::singleShot(0, this, [this] { m_editActions->update(m_window.dataView()); });
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
    m_defaults.setString(layoutKey, m_ui->dataView->layoutState());
    event->accept();
    // Closing destroys this object, which has to wait until the event is done with.
    QMetaObject::invokeMethod(
        this, [this] { m_window.windowWillClose(); }, Qt::QueuedConnection);
}

} // namespace vellumo
