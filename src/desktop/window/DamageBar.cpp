// SPDX-License-Identifier: MIT
#include "desktop/window/DamageBar.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QAccessibleWidget>
#include <QBoxLayout>
#include <QPushButton>

namespace vellumo {

namespace {

// Told as an alert, not as a mere frame.
QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    if (className != DamageBar::staticMetaObject.className()) return nullptr;
    return new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::AlertMessage); // the cache owns it
}

} // namespace

DamageBar::DamageBar(QWidget* parent)
    : QFrame(parent)
    , m_text(new IconLabel(this))
    , m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
    , m_buttons(new QBoxLayout(QBoxLayout::LeftToRight))
{
    static const auto isInstalled = (QAccessible::installFactory(makeAccessible), true);
    static_cast<void>(isInstalled);
    setObjectName("damageBar");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_layout->setContentsMargins(8, 4, 8, 4);
    m_layout->addWidget(m_text, 1, Qt::AlignVCenter);
    m_layout->addLayout(m_buttons);
    m_buttons->addStretch();
    hide();
}

QPushButton* DamageBar::addButton(const char* key, const char* name, std::function<void()> run)
{
    auto* button = new QPushButton(localizedText(key), this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, std::move(run));
    m_buttons->addWidget(button);
    return button;
}

void DamageBar::setText(const QString& text)
{
    if (text == m_text->text()) return;
    m_text->setContent("warning", text);
    setAccessibleName(text);
    arrange();
    setVisible(!text.isEmpty());
    if (text.isEmpty()) return;
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void DamageBar::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    arrange();
}

// Where the text has little room beside the buttons, they go below it.
void DamageBar::arrange()
{
    const auto roomForText = width() - m_buttons->sizeHint().width();
    const auto isNarrow = roomForText < fontMetrics().averageCharWidth() * 60;
    m_layout->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

} // namespace vellumo
