#pragma once

#include <cstddef>
#include <span>

namespace vellumo {

// The name that Qt's image plugins give to the format of these bytes; null when they look like none. Looks at
// signatures and, for formats that have none, at whether the header's numbers agree with the length: a decoder that is
// merely tried takes other data for a picture.
[[nodiscard]] const char* imageFormat(std::span<const std::byte> bytes);

} // namespace vellumo
