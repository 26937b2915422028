#pragma once

#include "platform/ImageDecoder.h"

namespace vellumo {

// The formats of Qt and of its add-on package, told apart by their first bytes alone. A picture above 256 MiB of pixels
// is not decoded.
class QtImageDecoder : public ImageDecoder {
public:
    QtImageDecoder();
    [[nodiscard]] std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) override;
};

} // namespace vellumo
