// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ImageDecoder.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <memory>

namespace vellumo {

// A picture on a grey ground: as much of the pane as it fits into, or at full size with scroll bars. It can be dragged
// out, and a double click asks for it to be opened.
class PictureView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit PictureView(QWidget* parent = nullptr);

    // Null: no picture.
    void setPicture(std::shared_ptr<const Image> image);
    [[nodiscard]] bool isFullSize() const { return m_isFullSize; }
    void setFullSize(bool isFullSize);

    // The picture is never drawn larger than this; 1 at full size.
    [[nodiscard]] double scale() const;

signals:
    void dragStarted();
    void openRequested();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void adjustScrollBars();
    [[nodiscard]] QSize drawnSize() const;
    [[nodiscard]] const QImage& scaledPicture(const QSize& pixels);

    std::shared_ptr<const Image> m_image;
    QImage m_picture; // the pixels of m_image
    QImage m_scaled;  // as it was drawn last; scaling is what takes time
    bool m_isFullSize = false;
    QPoint m_pressPosition;
};

} // namespace vellumo
