// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ImageDecoder.h"

#include <QImage>
#include <cstring>
#include <memory>

namespace vellumo {

// The border between the pictures of the logic and those of Qt.

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
    return {image.rgba.data(), image.width, image.height, qsizetype{4} * image.width, QImage::Format_RGBA8888};
}

// PNG, JPEG, GIF, BMP, TIFF and ICO, told apart by their content alone. Neither a picture above 256 MiB of pixels nor a
// file above 256 MiB is decoded.
class QtImageDecoder : public ImageDecoder {
public:
    QtImageDecoder();
    [[nodiscard]] std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) override;
};

} // namespace vellumo
