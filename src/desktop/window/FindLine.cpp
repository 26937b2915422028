// SPDX-License-Identifier: MIT
#include "desktop/window/FindLine.h"

#include "browser/DataView.h"
#include "browser/StatusTexts.h"
#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace vellumo {

FindLine::FindLine(QWidget* parent)
    : QStatusBar(parent)
    , m_status(new QLabel(this))
    , m_field(new QLineEdit(this))
    , m_found(new QLabel(this))
{
    m_status->setObjectName("statusText");
    m_status->setTextFormat(Qt::PlainText);
    m_status->setContentsMargins(6, 0, 0, 0);
    m_found->setObjectName("searchText");
    m_found->setTextFormat(Qt::PlainText);
    m_field->setObjectName("findField");
    m_field->setPlaceholderText(localizedText("Find"));
    m_field->setAccessibleName(localizedText("Find"));
    m_field->setClearButtonEnabled(true);
    m_field->setMaximumWidth(fontMetrics().averageCharWidth() * 30);
    m_field->addAction(icon("search"), QLineEdit::LeadingPosition)->setText(localizedText("Find"));
    m_field->installEventFilter(this);
    addWidget(m_status, 1);
    addPermanentWidget(m_found);
    addPermanentWidget(m_field);
}

void FindLine::setDataView(DataView& dataView)
{
    m_dataView = &dataView;
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_dataView->setFind({.text = fromQString(text)});
        recordsDidChange();
    });
    recordsDidChange();
}

void FindLine::recordsDidChange()
{
    const auto& rows = m_dataView->selectedRows();
    const auto status = m_dataView->table() == nullptr
        ? std::string()
        : statusForRecords(m_dataView->numberOfRows(), rows.count(), rows.first().value_or(0));
    m_status->setText(toQString(status));
    const auto room = fontMetrics().averageCharWidth() * 40;
    m_found->setText(fontMetrics().elidedText(toQString(m_dataView->searchText()), Qt::ElideMiddle, room));
}

void FindLine::focusField()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void FindLine::findNext(int step)
{
    if (!m_dataView->findNext(step)) QApplication::beep();
}

bool FindLine::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return QStatusBar::eventFilter(watched, event);
    const auto& keyEvent = static_cast<QKeyEvent&>(*event);
    switch (keyEvent.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: findNext(keyEvent.modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1); return true;
    case Qt::Key_Escape:
        m_field->clear();
        window()->findChild<QWidget*>("dataTableView")->setFocus();
        return true;
    default: return QStatusBar::eventFilter(watched, event);
    }
}

} // namespace vellumo
