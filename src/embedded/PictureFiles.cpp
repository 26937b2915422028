// SPDX-License-Identifier: MIT
#include "embedded/PictureFiles.h"

#include <algorithm>
#include <cstdlib>

namespace vellumo {

namespace {

constexpr std::size_t fileHeaderSize = 14;
constexpr std::uint32_t coreHeaderSize = 12;

enum : std::uint32_t { uncompressed = 0, rle8 = 1, rle4 = 2, bitFields = 3, jpeg = 4, png = 5, alphaBitFields = 6 };

// What an info header says, as far as it decides where the pixels are and how many bytes they take.
struct BitmapInfo {
    std::uint32_t headerSize = 0;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    unsigned planes = 0;
    unsigned bits = 0; // a pixel
    std::uint32_t compression = uncompressed;
    std::uint32_t imageSize = 0; // bytes; 0: not told
    std::uint32_t colours = 0;   // of the palette; 0: as many as the pixels can name
};

bool isHeaderSize(std::uint32_t size)
{
    // OS/2 1 and 2; Windows 3, with masks, with an alpha mask; versions 4 and 5.
    constexpr std::uint32_t known[] = {coreHeaderSize, 64, 40, 52, 56, 108, 124};
    return std::ranges::find(known, size) != std::end(known);
}

//   0 u32 header size, then width, height, u16 planes, u16 bits. The two sizes have 2 bytes in the oldest header, and 4
//   in all others, which go on with u32 compression, u32 image size, 8 bytes of resolution, u32 colours.
std::optional<BitmapInfo> readInfo(Bytes dib)
{
    if (dib.size() < coreHeaderSize || !isHeaderSize(u32At(dib, 0)) || u32At(dib, 0) > dib.size()) return std::nullopt;
    BitmapInfo info{u32At(dib, 0)};
    if (info.headerSize == coreHeaderSize) {
        info.width = u16At(dib, 4);
        info.height = u16At(dib, 6);
        info.planes = u16At(dib, 8);
        info.bits = u16At(dib, 10);
        return info;
    }
    // A negative height means that the first row is the top one.
    const auto width = i32At(dib, 4);
    info.width = width < 0 ? 0 : static_cast<std::uint64_t>(width);
    info.height = static_cast<std::uint64_t>(std::llabs(i32At(dib, 8)));
    info.planes = u16At(dib, 12);
    info.bits = u16At(dib, 14);
    info.compression = u32At(dib, 16);
    info.imageSize = u32At(dib, 20);
    info.colours = u32At(dib, 32);
    return info;
}

bool makesSense(const BitmapInfo& info)
{
    constexpr std::uint64_t longestSide = 1U << 20U;
    constexpr std::uint32_t mostColours = 256;
    constexpr unsigned depths[] = {1, 2, 4, 8, 16, 24, 32};
    if (info.planes != 1 || info.compression > alphaBitFields || info.colours > mostColours) return false;
    if (info.width == 0 || info.width > longestSide || info.height == 0 || info.height > longestSide) return false;
    const auto isWholeFile = info.compression == jpeg || info.compression == png;
    return (isWholeFile && info.bits == 0) || std::ranges::find(depths, info.bits) != std::end(depths);
}

// Masks that tell the bits of each colour stand behind a header that has no room for them.
std::uint32_t maskBytes(const BitmapInfo& info)
{
    if (info.headerSize != 40) return 0;
    if (info.compression == bitFields) return 12;
    return info.compression == alphaBitFields ? 16 : 0;
}

std::uint32_t pixelOffset(const BitmapInfo& info)
{
    const auto isIndexed = info.bits >= 1 && info.bits <= 8;
    const auto colours = info.colours == 0 && isIndexed ? 1U << info.bits : info.colours;
    const auto colourBytes = info.headerSize == coreHeaderSize ? 3U : 4U;
    return info.headerSize + maskBytes(info) + colours * colourBytes;
}

// As many as there must be: a run-length picture that does not tell its size may be as short as it likes.
std::uint64_t pixelBytes(const BitmapInfo& info)
{
    const auto isPacked =
        info.compression != uncompressed && info.compression != bitFields && info.compression != alphaBitFields;
    if (isPacked) return info.imageSize;
    return (info.width * info.bits + 31) / 32 * 4 * info.height;
}

std::optional<BitmapInfo> infoOf(Bytes dib)
{
    auto info = readInfo(dib);
    if (!info || !makesSense(*info) || pixelOffset(*info) > dib.size()) return std::nullopt;
    return info;
}

void append(std::vector<std::byte>& out, std::uint64_t value, unsigned byteCount)
{
    for (unsigned i = 0; i < byteCount; ++i)
        out.push_back(static_cast<std::byte>(value >> 8 * i));
}

void append(std::vector<std::byte>& out, Bytes bytes) { out.insert(out.end(), bytes.begin(), bytes.end()); }

// The header that the programs of its time agreed on to tell how large a metafile wants to be shown.
//   0 u32 mark, 4 u16 handle, 6 left, top, right, bottom, 14 u16 units an inch, 16 u32, 20 u16 sum of the words before
std::vector<std::byte> placeableHeader(unsigned width, unsigned height)
{
    constexpr unsigned hundredthsOfMillimetre = 2540; // an inch
    std::vector<std::byte> out;
    append(out, 0x9AC6CDD7, 4);
    append(out, 0, 6);
    append(out, width, 2);
    append(out, height, 2);
    append(out, hundredthsOfMillimetre, 2);
    append(out, 0, 4);
    unsigned sum = 0;
    for (std::size_t i = 0; i < out.size(); i += 2)
        sum ^= u16At(out, i);
    append(out, sum, 2);
    return out;
}

} // namespace

//   0 "BM", 2 u32 file size, 6 u32, 10 u32 offset of the pixels
std::optional<PictureFile> bitmapFileFrom(Bytes dib)
{
    const auto info = infoOf(dib);
    if (!info || dib.size() > UINT32_MAX - fileHeaderSize) return std::nullopt;
    PictureFile file;
    file.isCut = dib.size() - pixelOffset(*info) < pixelBytes(*info);
    file.bytes.reserve(fileHeaderSize + dib.size());
    append(file.bytes, 0x4D42, 2);
    append(file.bytes, fileHeaderSize + dib.size(), 4);
    append(file.bytes, 0, 4);
    append(file.bytes, fileHeaderSize + pixelOffset(*info), 4);
    append(file.bytes, dib);
    return file;
}

//   0 u16 mapping mode, 2 u16 width, 4 u16 height, both in hundredths of a millimetre, 6 u16, 8 metafile
std::optional<PictureFile> metafileFrom(Bytes picture)
{
    constexpr std::size_t prefix = 8;
    if (picture.size() < prefix || !isBareMetafile(picture.subspan(prefix))) return std::nullopt;
    const auto metafile = picture.subspan(prefix);
    PictureFile file;
    file.isCut = u32At(metafile, 6) > metafile.size() / 2;
    file.bytes = placeableHeader(u16At(picture, 2), u16At(picture, 4));
    append(file.bytes, metafile);
    return file;
}

bool isBitmapFile(Bytes bytes)
{
    if (bytes.size() < fileHeaderSize || u16At(bytes, 0) != 0x4D42) return false;
    return infoOf(bytes.subspan(fileHeaderSize)).has_value();
}

//   0 u16 kind (1 in memory, 2 on disk), 2 u16 words of this header, 4 u16 version, 6 u32 words of the metafile
bool isBareMetafile(Bytes bytes)
{
    constexpr std::size_t headerSize = 18;
    if (bytes.size() < headerSize) return false;
    const auto kind = u16At(bytes, 0);
    const auto version = u16At(bytes, 4);
    return (kind == 1 || kind == 2) && u16At(bytes, 2) == headerSize / 2 && (version == 0x100 || version == 0x300);
}

} // namespace vellumo
