// SPDX-License-Identifier: MIT
#include "desktop/icons/Icons.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QMimeDatabase>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QStyle>
#include <QSvgRenderer>
#include <array>

static void registerIcons() { Q_INIT_RESOURCE(icons); }

namespace vellumo {

namespace {

QColor lineColor(QIcon::Mode mode)
{
    const auto palette = QApplication::palette();
    return mode == QIcon::Selected ? palette.color(QPalette::HighlightedText) : palette.color(QPalette::WindowText);
}

// The largest rectangle in the middle that keeps the drawing's shape.
QRectF fitted(const QRectF& bounds, const QSizeF& size)
{
    QRectF result(QPointF(), size.scaled(bounds.size(), Qt::KeepAspectRatio));
    result.moveCenter(bounds.center());
    return result;
}

} // namespace

SvgIconEngine::SvgIconEngine(QString path)
    : m_path(std::move(path))
{
    if (QFile file(m_path); file.open(QIODevice::ReadOnly)) m_svg = file.readAll();
}

void SvgIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/)
{
    QSvgRenderer renderer(QByteArray(m_svg).replace("currentColor", lineColor(mode).name().toLatin1()));
    if (!renderer.isValid()) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * 0.4);
    renderer.render(painter, fitted(rect, renderer.defaultSize()));
    painter->restore();
}

QPixmap SvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1.0);
}

// `size` is in device pixels already; whoever asks sets the pixmap's scale.
QPixmap SvgIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal /*scale*/)
{
    const auto cacheKey = QString("%1 %2x%3 %4 %5")
                              .arg(m_path)
                              .arg(size.width())
                              .arg(size.height())
                              .arg(mode)
                              .arg(lineColor(mode).name());
    QPixmap pixmap;
    if (QPixmapCache::find(cacheKey, &pixmap)) return pixmap;
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    painter.end();
    QPixmapCache::insert(cacheKey, pixmap);
    return pixmap;
}

QIconEngine* SvgIconEngine::clone() const { return new SvgIconEngine(m_path); }

// A static library's resources are registered only on demand; the macro has to stand outside every namespace.

namespace {

struct TypeIcon {
    const char* mimePrefix; // of the type or one of its ancestors
    const char* name;
};

// The first that fits is taken.
constexpr std::array typeIcons{
    TypeIcon{"image/", "type_image"},
    TypeIcon{"audio/", "type_audio"},
    TypeIcon{"video/", "type_video"},
    TypeIcon{"application/vnd.ms-access", "database"},
    TypeIcon{"application/vnd.oasis.opendocument.spreadsheet", "type_sheet"},
    TypeIcon{"application/vnd.ms-excel", "type_sheet"},
    TypeIcon{"application/vnd.openxmlformats-officedocument.spreadsheetml", "type_sheet"},
    TypeIcon{"application/vnd.ms-powerpoint", "type_slides"},
    TypeIcon{"application/vnd.oasis.opendocument.presentation", "type_slides"},
    TypeIcon{"application/vnd.openxmlformats-officedocument.presentationml", "type_slides"},
    TypeIcon{"application/zip", "type_archive"},
    TypeIcon{"application/gzip", "type_archive"},
    TypeIcon{"application/x-7z-compressed", "type_archive"},
    TypeIcon{"text/", "type_text"},
    TypeIcon{"application/msword", "type_text"},
    TypeIcon{"application/rtf", "type_text"},
    TypeIcon{"application/pdf", "type_text"},
    TypeIcon{"application/vnd.oasis.opendocument.text", "type_text"},
    TypeIcon{"application/vnd.openxmlformats-officedocument.wordprocessingml", "type_text"},
};

QString ownTypeIconName(const QMimeType& type)
{
    for (const auto& candidate : typeIcons)
        if (type.name().startsWith(QLatin1String(candidate.mimePrefix))) return candidate.name;
    return "type_unknown";
}

} // namespace

QIcon icon(const QString& name)
{
    registerIcons();
    auto file = name;
    if (file.endsWith("_32x32")) file.chop(6);
    const auto path = ":/vellumo/icons/" + file + ".svg";
    return QFile::exists(path) ? QIcon(new SvgIconEngine(path)) : QIcon(); // the icon owns its engine
}

QIcon fileTypeIcon(const QString& extension)
{
    const auto type = QMimeDatabase().mimeTypeForFile("file." + extension.toLower(), QMimeDatabase::MatchExtension);
    for (const auto& name : {type.iconName(), type.genericIconName()})
        if (QIcon::hasThemeIcon(name)) return QIcon::fromTheme(name);
    return icon(ownTypeIconName(type));
}

QIcon applicationIcon() { return icon("application"); }

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
