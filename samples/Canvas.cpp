// SPDX-License-Identifier: MIT
#include "samples/Canvas.h"

#include "samples/Deflate.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <zlib.h>

namespace vellumo::samples {
namespace {

bool isInEllipse(Box box, Point point)
{
    const auto x = (point.x - box.left) / box.width * 2 - 1;
    const auto y = (point.y - box.top) / box.height * 2 - 1;
    return x * x + y * y <= 1;
}

bool isInBox(Box box, Point point)
{
    return point.x >= box.left && point.x < box.left + box.width && point.y >= box.top
        && point.y < box.top + box.height;
}

bool isInRoundedBox(Box box, double radius, Point point)
{
    if (!isInBox(box, point)) return false;
    const auto overX = std::max({box.left + radius - point.x, point.x - (box.left + box.width - radius), 0.0});
    const auto overY = std::max({box.top + radius - point.y, point.y - (box.top + box.height - radius), 0.0});
    return overX * overX + overY * overY <= radius * radius;
}

// Counts the edges to the right: an odd number means inside.
bool isInPolygon(const std::vector<Point>& corners, Point point)
{
    bool isInside = false;
    auto previous = corners.back();
    for (const auto corner : corners) {
        if ((corner.y > point.y) != (previous.y > point.y)) {
            const auto crossing = corner.x + (point.y - corner.y) / (previous.y - corner.y) * (previous.x - corner.x);
            if (point.x < crossing) isInside = !isInside;
        }
        previous = corner;
    }
    return isInside;
}

Box boundsOf(const std::vector<Point>& corners)
{
    const auto [left, right] =
        std::minmax_element(corners.begin(), corners.end(), [](Point a, Point b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(corners.begin(), corners.end(), [](Point a, Point b) { return a.y < b.y; });
    return {left->x, top->y, right->x - left->x, bottom->y - top->y};
}

// How much of a pixel is covered, from 3 x 3 points in it.
double coverage(int x, int y, const std::function<bool(Point)>& covers)
{
    constexpr int samples = 3;
    int hits = 0;
    for (int i = 0; i < samples * samples; ++i) {
        const int column = i % samples;
        const int line = i / samples;
        if (covers({x + (column + 0.5) / samples, y + (line + 0.5) / samples})) ++hits;
    }
    return hits / double{samples * samples};
}

void appendBigEndian(Bytes& out, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(number >> shift & 0xFF));
}

// Length, type, data, check sum of type and data.
void appendPngChunk(Bytes& out, std::string_view type, ByteSpan data)
{
    appendBigEndian(out, static_cast<std::uint32_t>(data.size()));
    const auto start = out.size();
    appendText(out, type);
    appendBytes(out, data);
    const auto sum = crc32(0, &out[start], static_cast<uInt>(out.size() - start));
    appendBigEndian(out, static_cast<std::uint32_t>(sum));
}

} // namespace

Color mixed(Color from, Color to, double share)
{
    const auto mix = [share](std::uint8_t a, std::uint8_t b) {
        return static_cast<std::uint8_t>(std::lround(a + (b - a) * share));
    };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

Canvas::Canvas(int width, int height, Paint background)
    : m_width(width)
    , m_height(height)
    , m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
{
    for (int y = 0; y < height; ++y) {
        const auto row = m_pixels.begin() + static_cast<std::ptrdiff_t>(y) * width;
        std::fill_n(row, width, mixed(background.top, background.bottom, (y + 0.5) / height));
    }
}

void Canvas::ellipse(Box box, const Paint& paint)
{
    fill(box, paint, [box](Point point) { return isInEllipse(box, point); });
}

void Canvas::rectangle(Box box, const Paint& paint, double cornerRadius)
{
    fill(box, paint, [=](Point point) { return isInRoundedBox(box, cornerRadius, point); });
}

void Canvas::polygon(const std::vector<Point>& corners, const Paint& paint)
{
    fill(boundsOf(corners), paint, [&](Point point) { return isInPolygon(corners, point); });
}

void Canvas::ring(Box box, double thickness, Box clip, const Paint& paint)
{
    const Box hole{box.left + thickness, box.top + thickness, box.width - 2 * thickness, box.height - 2 * thickness};
    fill(box, paint,
        [=](Point point) { return isInBox(clip, point) && isInEllipse(box, point) && !isInEllipse(hole, point); });
}

void Canvas::fill(Box box, const Paint& paint, const std::function<bool(Point)>& covers)
{
    const int left = std::max(0, static_cast<int>(std::floor(box.left)));
    const int right = std::min(m_width, static_cast<int>(std::ceil(box.left + box.width)));
    const int top = std::max(0, static_cast<int>(std::floor(box.top)));
    const int bottom = std::min(m_height, static_cast<int>(std::ceil(box.top + box.height)));
    for (int y = top; y < bottom; ++y) {
        const auto color = mixed(paint.top, paint.bottom, std::clamp((y + 0.5 - box.top) / box.height, 0.0, 1.0));
        for (int x = left; x < right; ++x) {
            auto& pixel = m_pixels[index(x, y)];
            pixel = mixed(pixel, color, paint.opacity * coverage(x, y, covers));
        }
    }
}

Bytes encodeBmp(const Canvas& canvas)
{
    constexpr std::uint32_t headerSize = 54;
    const auto stride = static_cast<std::uint32_t>((3 * canvas.width() + 3) / 4 * 4);
    const auto pixelSize = stride * static_cast<std::uint32_t>(canvas.height());
    Bytes out;
    appendText(out, "BM");
    appendNumber<std::uint32_t>(out, headerSize + pixelSize);
    appendNumber<std::uint32_t>(out, 0);
    appendNumber<std::uint32_t>(out, headerSize);
    appendNumber<std::uint32_t>(out, 40);
    appendNumber<std::int32_t>(out, canvas.width());
    appendNumber<std::int32_t>(out, canvas.height());
    appendNumber<std::uint16_t>(out, 1);  // planes
    appendNumber<std::uint16_t>(out, 24); // bits a pixel
    appendNumber<std::uint32_t>(out, 0);  // not compressed
    appendNumber<std::uint32_t>(out, pixelSize);
    appendNumber<std::int32_t>(out, 2835); // 72 dots an inch, in dots a metre
    appendNumber<std::int32_t>(out, 2835);
    appendNumber<std::uint32_t>(out, 0);
    appendNumber<std::uint32_t>(out, 0);
    for (int y = canvas.height(); y-- > 0;) {
        for (int x = 0; x < canvas.width(); ++x) {
            const auto color = canvas.at(x, y);
            for (const auto channel : {color.blue, color.green, color.red})
                out.push_back(channel);
        }
        while ((out.size() - headerSize) % 4 != 0)
            out.push_back(0);
    }
    return out;
}

Bytes encodePng(const Canvas& canvas)
{
    Bytes raw;
    for (int y = 0; y < canvas.height(); ++y) {
        raw.push_back(0); // no filter
        for (int x = 0; x < canvas.width(); ++x) {
            const auto color = canvas.at(x, y);
            for (const auto channel : {color.red, color.green, color.blue})
                raw.push_back(channel);
        }
    }
    Bytes header;
    appendBigEndian(header, static_cast<std::uint32_t>(canvas.width()));
    appendBigEndian(header, static_cast<std::uint32_t>(canvas.height()));
    for (const std::uint8_t byte : {8, 2, 0, 0, 0}) // 8 bits a channel, RGB
        header.push_back(byte);
    Bytes out;
    appendText(out, "\x89PNG\r\n\x1A\n");
    appendPngChunk(out, "IHDR", header);
    appendPngChunk(out, "IDAT", zlibStream(raw));
    appendPngChunk(out, "IEND", {});
    return out;
}

} // namespace vellumo::samples
