#include "desktop/icons/IconLabel.h"

#include "desktop/icons/Icons.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QStyle>

namespace vellumo {

IconLabel::IconLabel(QWidget* parent)
    : QWidget(parent)
    , m_picture(new QLabel(this))
    , m_text(new QLabel(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_picture, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    m_text->setWordWrap(true);
    // Names of files and tables must not be read as markup.
    m_text->setTextFormat(Qt::PlainText);
}

void IconLabel::setContent(const QString& pictureName, const QString& text)
{
    m_text->setText(text);
    m_pictureName = pictureName;
    showPicture();
}

void IconLabel::showPicture()
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_picture->setPixmap(icon(m_pictureName).pixmap(QSize(size, size), devicePixelRatioF()));
}

void IconLabel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const auto type = event->type();
    if (type == QEvent::PaletteChange || type == QEvent::StyleChange) showPicture();
}

} // namespace vellumo
