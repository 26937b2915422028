#pragma once

#include <QPalette>

namespace vellumo {

// Colours for the Fusion style: light text on dark grey.
[[nodiscard]] QPalette darkPalette();

} // namespace vellumo
