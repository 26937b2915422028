#pragma once

#include "platform/Image.h"

#include <cstddef>
#include <memory>
#include <span>

namespace vellumo {

class ImageDecoder {
public:
    virtual ~ImageDecoder() = default;
    // The picture that `bytes` hold in any of the usual still-image formats; null when they hold none.
    [[nodiscard]] virtual std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) = 0;
};

} // namespace vellumo
