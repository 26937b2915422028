// SPDX-License-Identifier: MIT
#include "desktop/grid/PictureView.h"

#include "desktop/QtText.h"
#include "desktop/ports/QtImageDecoder.h"
#include "text/Format.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace vellumo {

namespace {

// Lighter than a dark and darker than a light palette: pictures with transparent parts show on both.
const QColor ground = QColor::fromRgbF(0.8F, 0.8F, 0.8F);

} // namespace

PictureView::PictureView(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    setObjectName("pictureView");
    setAccessibleName(localizedText("Picture"));
    setFrameShape(NoFrame);
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
}

void PictureView::setPicture(std::shared_ptr<const Image> image)
{
    m_picture = image ? borrowedQImage(*image) : QImage();
    m_image = std::move(image);
    m_scaled = {};
    setAccessibleDescription(toQString(localizedFormat("%d × %d pixels", {m_picture.width(), m_picture.height()})));
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    adjustScrollBars();
    viewport()->update();
}

void PictureView::setFullSize(bool isFullSize)
{
    m_isFullSize = isFullSize;
    adjustScrollBars();
    viewport()->update();
}

double PictureView::scale() const
{
    if (m_isFullSize || m_picture.isNull()) return 1;
    const auto room = viewport()->size();
    return std::min({1.0, static_cast<double>(room.width()) / m_picture.width(),
        static_cast<double>(room.height()) / m_picture.height()});
}

QSize PictureView::drawnSize() const
{
    return m_picture.isNull() ? QSize() : (QSizeF(m_picture.size()) * scale()).toSize().expandedTo({1, 1});
}

void PictureView::adjustScrollBars()
{
    // What fits needs none, so the viewport keeps its size while the picture is made to fit.
    const auto policy = m_isFullSize ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    setHorizontalScrollBarPolicy(policy);
    setVerticalScrollBarPolicy(policy);
    const auto size = drawnSize();
    const auto room = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, size.width() - room.width()));
    verticalScrollBar()->setRange(0, std::max(0, size.height() - room.height()));
    horizontalScrollBar()->setPageStep(room.width());
    verticalScrollBar()->setPageStep(room.height());
}

void PictureView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    adjustScrollBars();
}

const QImage& PictureView::scaledPicture(const QSize& pixels)
{
    if (m_scaled.size() != pixels) m_scaled = m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return m_scaled;
}

void PictureView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), ground);
    if (m_picture.isNull()) return;
    const auto size = drawnSize();
    const auto room = viewport()->size();
    const QPoint corner(std::max(0, (room.width() - size.width()) / 2) - horizontalScrollBar()->value(),
        std::max(0, (room.height() - size.height()) / 2) - verticalScrollBar()->value());
    const QRect place(corner, size);
    if (m_isFullSize)
        painter.drawImage(place, m_picture);
    else
        painter.drawImage(place, scaledPicture((QSizeF(size) * devicePixelRatioF()).toSize()));
}

void PictureView::mousePressEvent(QMouseEvent* event) { m_pressPosition = event->position().toPoint(); }

void PictureView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)) return;
    const auto distance = (event->position().toPoint() - m_pressPosition).manhattanLength();
    if (distance >= QApplication::startDragDistance()) emit dragStarted();
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) emit openRequested();
}

} // namespace vellumo
