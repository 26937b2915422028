// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace vellumo {

// A decoded picture: rows from top to bottom, 4 bytes a pixel in the order red, green, blue, alpha (not premultiplied).
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba; // width * height * 4 bytes
};

class ImageDecoder {
public:
    virtual ~ImageDecoder() = default;
    // The picture that `bytes` hold in any of the usual still-image formats; null when they hold none.
    [[nodiscard]] virtual std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) = 0;
};

} // namespace vellumo
