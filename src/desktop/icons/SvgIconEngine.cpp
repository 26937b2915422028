#include "desktop/icons/SvgIconEngine.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

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

} // namespace vellumo
