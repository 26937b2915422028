// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <functional>
#include <vector>

namespace vellumo::samples {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

// Mixes two colours: `share` 0 gives `from`, 1 gives `to`.
[[nodiscard]] Color mixed(Color from, Color to, double share);

// What a shape is filled with: a gradient from its top to its bottom.
struct Paint {
    Paint(Color color)
        : top(color)
        , bottom(color)
    {
    }
    Paint(Color topColor, Color bottomColor, double paintOpacity = 1)
        : top(topColor)
        , bottom(bottomColor)
        , opacity(paintOpacity)
    {
    }
    Color top;
    Color bottom;
    double opacity = 1;
};

struct Point {
    double x = 0;
    double y = 0;
};

struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

// A small picture that shapes are drawn on, edges smoothed. Units are pixels from the top left corner.
class Canvas {
public:
    Canvas(int width, int height, Paint background);

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    [[nodiscard]] Color at(int x, int y) const { return m_pixels[index(x, y)]; }

    void ellipse(Box box, const Paint& paint);
    void rectangle(Box box, const Paint& paint, double cornerRadius = 0);
    void polygon(const std::vector<Point>& corners, const Paint& paint);
    // The part of an ellipse's outline that lies inside `clip`.
    void ring(Box box, double thickness, Box clip, const Paint& paint);

private:
    [[nodiscard]] std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }
    void fill(Box box, const Paint& paint, const std::function<bool(Point)>& covers);

    int m_width;
    int m_height;
    std::vector<Color> m_pixels;
};

[[nodiscard]] Bytes encodeBmp(const Canvas& canvas); // 24 bits a pixel
[[nodiscard]] Bytes encodePng(const Canvas& canvas);

} // namespace vellumo::samples
