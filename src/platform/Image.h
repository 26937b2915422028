#pragma once

#include <cstdint>
#include <vector>

namespace vellumo {

// A decoded picture: rows from top to bottom, 4 bytes a pixel in the order red, green, blue, alpha (not premultiplied).
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba; // width * height * 4 bytes
};

} // namespace vellumo
