#include "desktop/ports/ImageFormat.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace vellumo {

namespace {

using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    std::size_t offset;
    const char* format;
};

constexpr Signature signatures[] = {
    {"\x89PNG\r\n\x1a\n"sv, 0, "png"},
    {"\xFF\xD8\xFF"sv, 0, "jpeg"},
    {"GIF87a"sv, 0, "gif"},
    {"GIF89a"sv, 0, "gif"},
    {"II*\0"sv, 0, "tiff"},
    {"MM\0*"sv, 0, "tiff"},
    {"II+\0"sv, 0, "tiff"},
    {"MM\0+"sv, 0, "tiff"},
    {"WEBP"sv, 8, "webp"},
    {"icns"sv, 0, "icns"},
    {"\x8AMNG\r\n\x1a\n"sv, 0, "mng"},
    {"/* XPM */"sv, 0, "xpm"},
    {"P1"sv, 0, "pbm"},
    {"P2"sv, 0, "pgm"},
    {"P3"sv, 0, "ppm"},
    {"P4"sv, 0, "pbm"},
    {"P5"sv, 0, "pgm"},
    {"P6"sv, 0, "ppm"},
    {"#define "sv, 0, "xbm"},
};

std::uint32_t little(std::string_view bytes, std::size_t offset, std::size_t size)
{
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return value;
}

// "BM", then the file's length, which some programs leave 0, and an info header of a known size.
bool isBmp(std::string_view bytes)
{
    if (bytes.size() < 26 || !bytes.starts_with("BM")) return false;
    const auto header = little(bytes, 14, 4);
    return header == 12 || (header >= 40 && header <= 124);
}

// Zero, type (1 icon, 2 cursor) and number of pictures, 2 bytes each; then 16 bytes a picture, the last 8 of them its
// length and where it begins. Targa files begin much the same.
const char* iconFormat(std::string_view bytes)
{
    if (bytes.size() < 22 || little(bytes, 0, 2) != 0 || little(bytes, 4, 2) == 0) return nullptr;
    const auto type = little(bytes, 2, 2);
    const auto length = little(bytes, 14, 4);
    const auto start = little(bytes, 18, 4);
    if (start < 22 || start >= bytes.size() || length > bytes.size() - start) return nullptr;
    return type == 1 ? "ico" : type == 2 ? "cur" : nullptr;
}

// A bitmap without its file header: BITMAPINFOHEADER, 40 bytes or more, with 1 plane.
bool isDib(std::string_view bytes)
{
    if (bytes.size() <= 40) return false;
    const auto header = little(bytes, 0, 4);
    const auto bits = little(bytes, 14, 2);
    constexpr std::uint32_t depths[] = {1, 4, 8, 16, 24, 32};
    return (header == 40 || header == 108 || header == 124) && little(bytes, 12, 2) == 1
        && std::ranges::find(depths, bits) != std::end(depths);
}

// Wireless bitmap: two zero bytes, width and height (7 bits a byte, the high bit set where another follows), 1 bit a
// pixel in rows of whole bytes.
bool isWirelessBitmap(std::string_view bytes)
{
    if (!bytes.starts_with("\0\0"sv)) return false;
    std::size_t position = 2;
    std::uint64_t sides[2] = {0, 0};
    for (auto& side : sides) {
        bool isLast = false;
        while (!isLast) {
            if (position >= bytes.size() || side > 0xFFFF) return false;
            const auto byte = static_cast<unsigned char>(bytes[position++]);
            side = side << 7 | (byte & 0x7F);
            isLast = (byte & 0x80) == 0;
        }
    }
    return sides[0] > 0 && sides[1] > 0 && position + (sides[0] + 7) / 8 * sides[1] == bytes.size();
}

// The root element stands near the beginning; in front of it may be a declaration, comments and a document type.
bool isSvg(std::string_view bytes)
{
    const auto start = bytes.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    if (start == std::string_view::npos || bytes[start] != '<') return false;
    return bytes.substr(start, 4096).find("<svg") != std::string_view::npos;
}

constexpr bool isGzip(std::string_view bytes) { return bytes.starts_with("\x1F\x8B\x08"sv); }

} // namespace

const char* imageFormat(std::span<const std::byte> span)
{
    const std::string_view bytes(reinterpret_cast<const char*>(span.data()), span.size());
    for (const auto& signature : signatures)
        if (bytes.size() > signature.offset && bytes.substr(signature.offset).starts_with(signature.bytes))
            return signature.format;
    if (const char* format = iconFormat(bytes)) return format;
    if (isBmp(bytes)) return "bmp";
    if (isDib(bytes)) return "dib";
    if (isSvg(bytes)) return "svg";
    if (isGzip(bytes)) return "svgz"; // compressed files of another kind fail to read
    // Files of the older version have no signature, and the decoder refuses them.
    if (bytes.ends_with("TRUEVISION-XFILE.\0"sv)) return "tga";
    if (isWirelessBitmap(bytes)) return "wbmp";
    return nullptr;
}

} // namespace vellumo
