#include "desktop/dialogs/HintLabel.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QStringList>
#include <QStyle>

namespace vellumo {

HintLabel::HintLabel(QWidget* parent)
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
    setVisible(false);
}

void HintLabel::show(const std::vector<ExportHint>& hints, ExportHint::Place place)
{
    QStringList lines;
    bool isWarning = false;
    for (const auto& hint : hints) {
        if (hint.place != place) continue;
        lines << toQString(hint.text);
        isWarning = isWarning || hint.kind == ExportHint::Kind::Warning;
    }
    m_text->setText(lines.join('\n'));
    m_pictureName = QLatin1String(isWarning ? "warning" : "information");
    showPicture();
    setVisible(!lines.isEmpty());
}

void HintLabel::showPicture()
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_picture->setPixmap(icon(m_pictureName).pixmap(QSize(size, size), devicePixelRatioF()));
}

void HintLabel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const auto type = event->type();
    if (type == QEvent::PaletteChange || type == QEvent::StyleChange) showPicture();
}

} // namespace vellumo
