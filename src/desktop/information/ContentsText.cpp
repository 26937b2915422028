// SPDX-License-Identifier: MIT
#include "desktop/information/ContentsText.h"

#include "browser/VellumoAppDelegate.h"
#include "desktop/QtText.h"

#include <QBoxLayout>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>

namespace vellumo {

ContentsText::ContentsText(VellumoAppDelegate& app, QWidget* parent)
    : QWidget(parent)
    , m_app(app)
    , m_text(new QPlainTextEdit(this))
{
    m_text->setObjectName("contentsText");
    m_text->setAccessibleName(localizedText("SQL"));
    m_text->setMinimumHeight(40); // as the lists beside it
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* copy = new QPushButton(localizedText("Copy SQL"), this);
    copy->setObjectName("copyContentsText");
    connect(copy, &QPushButton::clicked, this, [this] { m_app.CopyContentsText(); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_text, 1);
    layout->addWidget(copy, 0, Qt::AlignTrailing);
}

void ContentsText::detailsDidChange()
{
    const auto* entry = m_app.information().selectedEntryOf(InformationType::Contents);
    const auto text = entry == nullptr ? QString() : toQString(entry->text);
    m_text->setPlainText(text);
    setVisible(!text.isEmpty());
}

} // namespace vellumo
