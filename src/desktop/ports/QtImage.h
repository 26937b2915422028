#pragma once

#include "platform/Image.h"

#include <QImage>
#include <cstring>
#include <memory>

// The border between the pictures of the logic and those of Qt.
namespace vellumo {

// Null for a null image.
inline std::shared_ptr<const Image> imageFrom(const QImage& picture)
{
    if (picture.isNull()) return nullptr;
    const auto rgba = picture.convertToFormat(QImage::Format_RGBA8888);
    if (rgba.isNull()) return nullptr; // not enough memory
    auto image = std::make_shared<Image>();
    image->width = rgba.width();
    image->height = rgba.height();
    const auto rowBytes = static_cast<std::size_t>(rgba.width()) * 4;
    image->rgba.resize(rowBytes * static_cast<std::size_t>(rgba.height()));
    for (int y = 0; y < rgba.height(); ++y)
        std::memcpy(image->rgba.data() + rowBytes * static_cast<std::size_t>(y), rgba.constScanLine(y), rowBytes);
    return image;
}

// Borrows the pixels: the image must outlive the result and its copies.
inline QImage borrowedQImage(const Image& image)
{
    return {image.rgba.data(), image.width, image.height, image.width * 4, QImage::Format_RGBA8888};
}

} // namespace vellumo
