// SPDX-License-Identifier: MIT
#include "desktop/tree/FileListPanel.h"

#include "browser/TreeItem.h"
#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/tree/FileTreeModel.h"
#include "desktop/window/MainMenus.h"

#include <QAction>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <array>

class QPoint;
class QWidget;

namespace vellumo {

class VellumoAppDelegate;

// Opens the context menu of a row of the file list (no item: nothing happens). While it is open the row counts as
// clicked.
void popUpFileTreeMenu(QWidget& tree, VellumoAppDelegate& app, const TreeItem& item, const QPoint& globalPosition);

namespace {

using FileCommand = VellumoAppDelegate::FileCommand;
using Sender = VellumoAppDelegate::Sender;

void addFileCommands(QMenu& menu, VellumoAppDelegate& app)
{
    const auto add = [&](const char* key, FileCommand command, void (VellumoAppDelegate::*run)(Sender)) {
        menu.addAction(localizedText(key), [&app, run] { (app.*run)(Sender::TreeMenu); })
            ->setEnabled(app.canUse(command, Sender::TreeMenu));
    };
    add(messageKey("Open"), FileCommand::Open, &VellumoAppDelegate::OpenSelectedFile);
    add(messageKey("Close"), FileCommand::Close, &VellumoAppDelegate::CloseSelectedFile);
    menu.addSeparator();
    add(messageKey("Remove from List"), FileCommand::Remove, &VellumoAppDelegate::RemoveSelectedFile);
    add(messageKey("Remove Other Files"), FileCommand::RemoveOthers, &VellumoAppDelegate::RemoveOtherFiles);
    menu.addSeparator();
    add(messageKey("Show in File Manager"), FileCommand::ShowInFinder, &VellumoAppDelegate::ShowInFinder);
}

} // namespace

void popUpFileTreeMenu(QWidget& tree, VellumoAppDelegate& app, const TreeItem& item, const QPoint& globalPosition)
{
    if (item.isNone()) return;
    app.setClickedTreeItem(item);
    auto* menu = new QMenu(&tree);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (item.isTable()) {
        menu->addAction(localizedText("Open in New Window"), [&app] { app.OpenSelectedTableInNewWindow(); });
        menu->addSeparator();
    }
    addFileCommands(*menu, app);
    menu->addSeparator();
    auto* exports = menu->addMenu(localizedText("Export"));
    addExportCommands(*exports, app);
    exports->setEnabled(app.canExport());
    // The menu closes before the chosen command runs, which asks for the clicked row.
    QObject::connect(
        menu, &QMenu::aboutToHide, &tree, [&app] { app.setClickedTreeItem({}); }, Qt::QueuedConnection);
    menu->popup(globalPosition);
}

FileListPanel::FileListPanel(VellumoAppDelegate& app, QWidget* parent)
    : QWidget(parent)
    , m_app(app)
    , m_model(new FileTreeModel(app, this))
    , m_filter(new QLineEdit(this))
    , m_tree(new QTreeView(this))
    , m_pages(new QStackedWidget(this))
    , m_visitLater(new QTimer(this))
{
    m_filter->setObjectName("fileSearchField");
    m_filter->setPlaceholderText(localizedText("Filter files and tables"));
    m_filter->setAccessibleName(localizedText("Filter files and tables"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setAcceptDrops(false); // files are for the window
    m_filter->installEventFilter(this);
    auto* magnifier = m_filter->addAction(icon("search"), QLineEdit::LeadingPosition);
    magnifier->setText(localizedText("Filter files and tables"));
    connect(magnifier, &QAction::triggered, this, &FileListPanel::focusFilter);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_app.controlTextDidChange(VellumoAppDelegate::SearchField::File, fromQString(text));
    });
    setUpTree();
    m_pages->addWidget(m_tree);
    m_pages->addWidget(makePlaceholder());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_filter);
    layout->addWidget(m_pages, 1);
    setFocusProxy(m_tree);
}

void FileListPanel::setUpTree()
{
    m_tree->setObjectName("fileTree");
    m_tree->setAccessibleName(localizedText("File list"));
    m_tree->setModel(m_model);
    m_tree->setItemDelegate(new FileTreeDelegate(m_tree));
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QTreeView::NoEditTriggers);
    m_tree->setExpandsOnDoubleClick(false);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->installEventFilter(this);
    const auto remember = [this](bool isExpanded) {
        return [this, isExpanded](const QModelIndex& index) {
            const auto* file = m_model->item(index).file;
            if (isExpanded)
                m_expanded.insert(file);
            else
                m_expanded.erase(file);
        };
    };
    connect(m_tree, &QTreeView::expanded, this, remember(true));
    connect(m_tree, &QTreeView::collapsed, this, remember(false));
    connect(m_tree, &QTreeView::customContextMenuRequested, this, &FileListPanel::popUpMenu);
    connect(m_tree, &QTreeView::clicked, this,
        [this](const QModelIndex& index) { m_app.OnSingleClickfileTree(m_model->item(index)); });
    m_visitLater->setSingleShot(true);
    m_visitLater->setInterval(visitDelayMs);
    connect(m_visitLater, &QTimer::timeout, this, [this] { m_app.OnSingleClickfileTree(m_app.treeSelection()); });
    // Opening a file replaces the model's rows, which a view must not see happen inside its own event handler.
    connect(m_tree, &QTreeView::doubleClicked, this, &FileListPanel::openCurrent, Qt::QueuedConnection);
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FileListPanel::userSelected);
}

QWidget* FileListPanel::makePlaceholder()
{
    auto* page = new QWidget(this);
    page->setObjectName("dropPlaceholder");
    m_dropPicture = new QLabel(page);
    m_dropPicture->setAlignment(Qt::AlignCenter);
    showDropPicture();
    auto* text = new QLabel(localizedText("Drop MDB or ACCDB files here"), page);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    auto* open = new QPushButton(localizedText("Open…"), page);
    connect(open, &QPushButton::clicked, this, [this] { m_app.OpenFile(); });
    auto* layout = new QVBoxLayout(page);
    layout->addStretch();
    layout->addWidget(m_dropPicture);
    layout->addWidget(text);
    layout->addWidget(open, 0, Qt::AlignHCenter);
    layout->addStretch();
    return page;
}

void FileListPanel::showDropPicture() { m_dropPicture->setPixmap(icon("drop").pixmap(64, 64)); }

void FileListPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) showDropPicture();
}

void FileListPanel::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void FileListPanel::addCommand(QAction& command)
{
    command.setShortcutContext(Qt::WidgetShortcut);
    m_tree->addAction(&command);
}

// What the controller tells

void FileListPanel::reload()
{
    const QScopedValueRollback following(m_isFollowing, true);
    // A file that a filter hides stays expanded.
    std::erase_if(m_expanded, [this](const TAdmMDBFile* file) {
        return std::ranges::none_of(
            m_app.recentFiles(), [&](const auto& listedFile) { return listedFile.get() == file; });
    });
    m_model->reload();
    restoreExpansion();
    selectionDidChange();
}

void FileListPanel::restoreExpansion()
{
    const auto expanded = m_expanded; // expanding tells us, too
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const auto index = m_model->index(row, 0);
        if (expanded.contains(m_model->item(index).file)) m_tree->expand(index);
    }
}

void FileListPanel::fileWillClose(TAdmMDBFile& file)
{
    const QScopedValueRollback following(m_isFollowing, true);
    m_model->removeTablesOf(file);
    m_expanded.erase(&file);
}

void FileListPanel::expand(TAdmMDBFile& file)
{
    m_expanded.insert(&file);
    m_tree->expand(m_model->indexOf(TreeItem::of(file)));
}

void FileListPanel::collapse(TAdmMDBFile& file)
{
    m_expanded.erase(&file);
    m_tree->collapse(m_model->indexOf(TreeItem::of(file)));
}

void FileListPanel::selectionDidChange()
{
    m_visitLater->stop(); // somebody else has chosen meanwhile
    const QScopedValueRollback following(m_isFollowing, true);
    const auto& item = m_app.treeSelection();
    const auto index = item.isNone() ? QModelIndex() : m_model->indexOf(item);
    if (index.isValid()) m_tree->expand(index.parent());
    m_tree->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    if (!index.isValid()) m_tree->clearSelection();
}

void FileListPanel::scrollToSelection()
{
    const auto index = m_model->indexOf(m_app.treeSelection());
    if (!index.isValid()) return;
    // As many of a file's tables as there is room for below it.
    if (const auto count = m_model->rowCount(index); count > 0) m_tree->scrollTo(m_model->index(count - 1, 0, index));
    m_tree->scrollTo(index);
}

void FileListPanel::placeholderDidChange()
{
    const auto page = m_app.isPlaceholderShown() ? 1 : 0;
    if (page == m_pages->currentIndex()) return;
    m_pages->setCurrentIndex(page);
    m_filter->setEnabled(!m_app.isPlaceholderShown());
    if (page == 0) m_tree->setFocus(); // the first file has come
}

// What the user does

void FileListPanel::userSelected()
{
    if (m_isFollowing) return;
    m_visitLater->start();
    const auto rows = m_tree->selectionModel()->selectedIndexes();
    m_app.outlineViewSelectionDidChange(rows.isEmpty() ? TreeItem() : m_model->item(rows.first()));
}

void FileListPanel::openCurrent() { m_app.OnDoubleClickFileTree(); }

void FileListPanel::popUpMenu(const QPoint& position)
{
    popUpFileTreeMenu(
        *m_tree, m_app, m_model->item(m_tree->indexAt(position)), m_tree->viewport()->mapToGlobal(position));
}

// While nothing is selected a key that leads to a row selects one: Qt holds the first row for the current one and goes
// on from it, which leads nowhere in a list of one file.
bool FileListPanel::beginAtFirstRow(int key)
{
    using enum Qt::Key;
    constexpr std::array keys{Key_Up, Key_Down, Key_Home, Key_End, Key_PageUp, Key_PageDown, Key_Return, Key_Enter};
    const auto rowCount = m_model->rowCount();
    if (std::ranges::find(keys, key) == keys.end() || rowCount == 0) return false;
    if (!m_tree->selectionModel()->selection().isEmpty()) return false;
    m_tree->setCurrentIndex(m_model->index(key == Key_End || key == Key_PageDown ? rowCount - 1 : 0, 0));
    return key != Key_Return && key != Key_Enter; // these go on with the row
}

bool FileListPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto& keyEvent = static_cast<QKeyEvent&>(*event);
    const auto key = keyEvent.key();
    if (watched == m_filter) {
        const auto leadsToTree = key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter;
        if (key == Qt::Key_Escape) m_filter->clear();
        if (leadsToTree) m_tree->setFocus();
        if (key == Qt::Key_Escape || leadsToTree) return true;
    }
    if (watched == m_tree) {
        if (beginAtFirstRow(key)) return true;
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            openCurrent();
            return true;
        }
        // Back and Next that lead nowhere.
        if ((key == Qt::Key_Left || key == Qt::Key_Right) && keyEvent.modifiers().testFlag(Qt::AltModifier))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vellumo
