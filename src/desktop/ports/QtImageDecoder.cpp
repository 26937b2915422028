// SPDX-License-Identifier: MIT
#include "desktop/ports/QtImageDecoder.h"

#include "embedded/ContentType.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <string_view>

namespace vellumo {

namespace {

constexpr qint64 mebibyte = qint64{1} << 20;
constexpr qint64 bytesPerPixel = 4; // whatever the file keeps
constexpr int largestPictureMiB = 256;
constexpr std::size_t largestFileBytes = std::size_t{256} << 20U;

// The formats whose decoders are in wide use and well tried. Windows metafiles have no packaged decoder that could be
// trusted inside this process, and drawings and lesser formats would only widen what a file can reach.
struct Format {
    std::string_view extension;
    const char* decoder; // Qt's name
};
constexpr Format formats[] = {
    {"png", "png"}, {"jpg", "jpeg"}, {"gif", "gif"}, {"bmp", "bmp"}, {"tif", "tiff"}, {"ico", "ico"}};

// By the content alone: a decoder that is merely tried takes other data for a picture. Null for any other content.
const char* decoderOf(Bytes bytes)
{
    const auto extension = contentTypeOf(bytes).extension;
    const auto* found = std::ranges::find(formats, extension, &Format::extension);
    return found == std::end(formats) ? nullptr : found->decoder;
}

bool fits(QSize size)
{
    if (size.isEmpty()) return false;
    return qint64(size.width()) * size.height() <= largestPictureMiB * mebibyte / bytesPerPixel;
}

} // namespace

QtImageDecoder::QtImageDecoder() { QImageReader::setAllocationLimit(largestPictureMiB); }

std::shared_ptr<const Image> QtImageDecoder::decode(std::span<const std::byte> bytes)
{
    const char* decoder = bytes.size() > largestFileBytes ? nullptr : decoderOf(bytes);
    if (decoder == nullptr) return nullptr;
    auto raw =
        QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    if (!buffer.open(QIODevice::ReadOnly)) return nullptr;
    QImageReader reader(&buffer, decoder);
    reader.setAutoTransform(true);
    // All of these formats tell their size beforehand.
    return fits(reader.size()) ? imageFrom(reader.read()) : nullptr;
}

} // namespace vellumo
