// SPDX-License-Identifier: MIT
#include "desktop/grid/JumpList.h"

#include "desktop/QtText.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>

namespace vellumo {

namespace {

constexpr int widthInLetters = 44;
constexpr int rowsShown = 18;

} // namespace

JumpList::JumpList(std::vector<Entry> entries, Choose choose, QWidget* parent)
    : QFrame(parent, Qt::Popup)
    , m_entries(std::move(entries))
    , m_choose(std::move(choose))
    , m_filter(new QLineEdit(this))
    , m_list(new QListView(this))
    , m_narrowed(new QSortFilterProxyModel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName("jumpList");
    setFrameShape(StyledPanel);
    QStringList titles;
    for (const auto& entry : m_entries)
        titles << entry.title;
    m_narrowed->setSourceModel(new QStringListModel(titles, this));
    m_narrowed->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setObjectName("jumpFilter");
    m_filter->setPlaceholderText(localizedText("Type to find"));
    m_filter->setAccessibleName(localizedText("Type to find"));
    m_filter->installEventFilter(this);
    m_list->setObjectName("jumpEntries");
    m_list->setAccessibleName(localizedText("Files and tables"));
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QListView::NoEditTriggers);
    m_list->setFocusPolicy(Qt::NoFocus); // the field keeps the keyboard
    m_list->setModel(m_narrowed);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_filter);
    layout->addWidget(m_list);
    connect(m_filter, &QLineEdit::textChanged, this, &JumpList::narrow);
    connect(m_list, &QListView::clicked, this, &JumpList::chooseEntry);
}

void JumpList::popUpBelow(const QWidget& widget)
{
    const auto screen = widget.screen()->availableGeometry();
    const auto height = m_filter->sizeHint().height() + rowsShown * (fontMetrics().height() + 4) + 16;
    resize(QSize(fontMetrics().averageCharWidth() * widthInLetters, height).boundedTo(screen.size()));
    const auto below = widget.mapToGlobal(QPoint(0, widget.height()));
    move(std::clamp(below.x(), screen.left(), screen.right() - width()),
        std::clamp(below.y(), screen.top(), screen.bottom() - this->height()));
    show();
    m_filter->setFocus(Qt::PopupFocusReason);
    narrow({});
}

// While everything is listed, where one is; then the first that is left.
void JumpList::narrow(const QString& text)
{
    m_narrowed->setFilterFixedString(text);
    const auto current = std::ranges::find(m_entries, true, &Entry::isCurrent);
    const auto row = text.isEmpty() && current != m_entries.end() ? static_cast<int>(current - m_entries.begin()) : 0;
    m_list->setCurrentIndex(m_narrowed->index(row, 0));
    m_list->scrollTo(m_list->currentIndex(), QListView::PositionAtCenter);
}

void JumpList::chooseEntry(const QModelIndex& index)
{
    if (!index.isValid()) return QApplication::beep();
    const auto item = m_entries[static_cast<std::size_t>(m_narrowed->mapToSource(index).row())].item;
    const auto choose = m_choose;
    close();
    choose(item);
}

bool JumpList::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: return QApplication::sendEvent(m_list, event);
    case Qt::Key_Return:
    case Qt::Key_Enter: chooseEntry(m_list->currentIndex()); return true;
    default: return QFrame::eventFilter(watched, event);
    }
}

} // namespace vellumo
