#pragma once

#include "platform/ImageDecoder.h"

namespace vellumo {

// PNG, JPEG, GIF, BMP, TIFF and ICO, told apart by their content alone. Neither a picture above 256 MiB of pixels nor a
// file above 256 MiB is decoded.
class QtImageDecoder : public ImageDecoder {
public:
    QtImageDecoder();
    [[nodiscard]] std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) override;
};

} // namespace vellumo
