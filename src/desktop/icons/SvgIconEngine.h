#pragma once

#include <QByteArray>
#include <QIconEngine>
#include <QString>

namespace vellumo {

// An icon drawn from an SVG resource. Where the drawing says `currentColor` it takes the palette's text colour; a
// disabled icon is drawn half transparent as well, which dims the colours that the drawing fixes.
class SvgIconEngine : public QIconEngine {
public:
    // A file that cannot be read draws nothing.
    explicit SvgIconEngine(QString path);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    [[nodiscard]] QString key() const override { return "vellumo-svg"; }
    [[nodiscard]] QIconEngine* clone() const override;

private:
    QString m_path;
    QByteArray m_svg;
};

} // namespace vellumo
