// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIcon>
#include <QIconEngine>
#include <QLabel>
#include <QString>
#include <QWidget>

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

// The program's own pictures. No icon theme of the desktop is needed; they are drawn anew for every size and scale, in
// the colours of the palette at that moment. Main thread only.

// By the name that the toolbar and the grid give, such as "open_folder_32x32" or "OV_Key"; the null icon for an unknown
// name. The names are those of the SVG files in this folder, with or without "_32x32".
[[nodiscard]] QIcon icon(const QString& name);

// Of files with this extension (without the dot): the desktop's own, or ours where it has none.
[[nodiscard]] QIcon fileTypeIcon(const QString& extension);

// For windows, in colours of its own.
[[nodiscard]] QIcon applicationIcon();

// A small picture beside a plain text that wraps.
class IconLabel : public QWidget {
public:
    explicit IconLabel(QWidget* parent = nullptr);

    // The picture by the name that `icon` knows.
    void setContent(const QString& pictureName, const QString& text);
    [[nodiscard]] QString text() const { return m_text->text(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    void showPicture();

    QLabel* m_picture; // both are children
    QLabel* m_text;
    QString m_pictureName;
};

} // namespace vellumo
