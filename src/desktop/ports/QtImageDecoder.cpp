#include "desktop/ports/QtImageDecoder.h"

#include "desktop/ports/ImageFormat.h"
#include "desktop/ports/QtImage.h"

#include <QBuffer>
#include <QImageReader>

namespace vellumo {

namespace {

constexpr int allocationLimitMiB = 256;

// 4 bytes a pixel, whatever the file keeps.
bool fits(QSize size)
{
    return size.isValid() && qint64(size.width()) * size.height() <= qint64(allocationLimitMiB) * 1024 * 1024 / 4;
}

} // namespace

QtImageDecoder::QtImageDecoder() { QImageReader::setAllocationLimit(allocationLimitMiB); }

std::shared_ptr<const Image> QtImageDecoder::decode(std::span<const std::byte> bytes)
{
    const char* format = imageFormat(bytes);
    if (format == nullptr) return nullptr;
    auto raw =
        QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    if (!buffer.open(QIODevice::ReadOnly)) return nullptr;
    QImageReader reader(&buffer, format);
    reader.setAutoTransform(true);
    // Some formats do not tell their size beforehand; for those the reader's own limit stands.
    if (const auto size = reader.size(); size.isValid() && !fits(size)) return nullptr;
    return imageFrom(reader.read());
}

} // namespace vellumo
